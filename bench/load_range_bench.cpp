#include <benchmark/benchmark.h>

#include <unistd.h>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <string>

#include "bench/default_design.h"
#include "core/network.h"
#include "model/design_results.h"
#include "model/load_range.h"
#include "model/touchstone_load.h"

namespace {

varo::DesignState CalculatedBenchDesign() {
    varo::DesignState design = varo::DefaultBenchDesign();
    varo::ComponentCalculations(design, varo::SilentReporter());
    return design;
}

// The SWR 2 circle of 36 loads: each re-tuned, walked for its stresses, and its losses.
void BM_SwrCircle36(benchmark::State& bench) {
    const varo::DesignState design = CalculatedBenchDesign();
    for (auto _ : bench)
        benchmark::DoNotOptimize(
            varo::AnalyzeLoadRange(design, varo::SwrCircleInputs(design, 2, 36, {})));
}
BENCHMARK(BM_SwrCircle36)->Unit(benchmark::kMicrosecond);

// An antenna measured at 1001 points across 3.5-4 MHz (a resonant dipole's impedance), read
// from its file and re-tuned at every point.
std::string DipoleFile() {
    const std::string path = "/tmp/varo-bench-dipole-" + std::to_string(::getpid()) + ".s1p";
    std::ofstream file(path);
    file << "! a dipole near resonance\n# MHz Z RI R 50\n";
    for (int k = 0; k <= 1000; ++k) {
        const double mhz = 3.5 + 0.5 * k / 1000;
        const double detune = (mhz - 3.75) / 3.75;
        char line[96];
        std::snprintf(line, sizeof line, "%.6f %.9f %.9f\n", mhz, (65 + 40 * detune) / 50,
                      (600 * detune) / 50);
        file << line;
    }
    return path;
}

void BM_MeasuredLoad1001(benchmark::State& bench) {
    const varo::DesignState design = CalculatedBenchDesign();
    const std::string path = DipoleFile();
    for (auto _ : bench) {
        const varo::OnePortLoad antenna = varo::ReadOnePortTouchstone(path);
        varo::LoadRangeInputs inputs;
        for (const varo::LoadPoint& point : antenna.points) {
            inputs.loads.push_back(point.z);
            inputs.frequencies.push_back(point.frequency);
        }
        benchmark::DoNotOptimize(varo::AnalyzeLoadRange(design, inputs));
    }
    std::remove(path.c_str());
}
BENCHMARK(BM_MeasuredLoad1001)->Unit(benchmark::kMillisecond);

}  // namespace
