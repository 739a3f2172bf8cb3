#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "screens/plot/overlay_files.h"

namespace {

constexpr std::size_t kFileBytes = 220u * 1024 * 1024;

// The process's peak resident memory so far, in KiB (VmHWM).
long PeakResidentKiB() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
    return 0;
}

// A 220 MB overlay file made of `line` repeated, written in pieces so that making it does not
// raise the peak the benchmark measures.
std::string MakeFile(const std::string& name, const std::string& line) {
    const std::string path = "/tmp/varo-bench-" + std::to_string(::getpid()) + "-" + name;
    std::string piece;
    while (piece.size() < 1024 * 1024)
        piece += line;
    std::ofstream out(path, std::ios::binary);
    for (std::size_t written = 0; written < kFileBytes; written += piece.size())
        out << piece;
    return path;
}

// Reading a refused file: what a reader that loads the whole file would take 500 MB and seconds
// for must stay within milliseconds and a few MB.
void ReadRefusedFile(benchmark::State& state, const std::string& name, const std::string& line) {
    const std::string path = MakeFile(name, line);
    const long baseline = PeakResidentKiB();
    for (auto _ : state) {
        varo::DesignState design;
        varo::OverlayData overlay;
        benchmark::DoNotOptimize(varo::ReadOverlayFile(path, design, overlay));
    }
    state.counters["peak_rss_above_baseline_KiB"] =
        static_cast<double>(PeakResidentKiB() - baseline);
    std::remove(path.c_str());
}

void BM_ReadOverlay_220MBOfPairs(benchmark::State& state) {
    ReadRefusedFile(state, "pairs", " 1750000 -.0123 \r\n");
}
BENCHMARK(BM_ReadOverlay_220MBOfPairs)->Unit(benchmark::kMillisecond);

void BM_ReadOverlay_220MBOfBlanks(benchmark::State& state) {
    ReadRefusedFile(state, "blanks", "                \r\n");
}
BENCHMARK(BM_ReadOverlay_220MBOfBlanks)->Unit(benchmark::kMillisecond);

}  // namespace
