// Whole-process start-up of the desktop program to its first painted welcome screen, and the
// process's peak memory by then.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

void BM_StartupToFirstPaint(benchmark::State& state) {
    const std::string command = std::string("QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} ") +
                                VARO_OPENING_PROBE_PATH + " 2>/dev/null";
    long peakKilobytes = 0;
    for (auto _ : state) {
        FILE* probe = popen(command.c_str(), "r");
        if (!probe || std::fscanf(probe, "%ld", &peakKilobytes) != 1) {
            state.SkipWithError("the start-up probe did not run");
        }
        if (probe) pclose(probe);
    }
    state.counters["peak_MB"] = static_cast<double>(peakKilobytes) / 1024.0;
}
BENCHMARK(BM_StartupToFirstPaint)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
