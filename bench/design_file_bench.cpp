// Saving and opening a design file with every setting a design can hold: a band plan of the
// ten HF bands and a measured antenna of 1001 points.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "model/design_file.h"

namespace {

varo::Design FullDesign() {
    varo::Design design;
    varo::DesignState& s = design.state();
    s.frequency = 7.15e6f;
    s.plateR = 2200;
    s.intermediateR = 300;
    s.loadR = 50;
    s.piQ = 12;
    s.peakSwing = 2800;
    s.rfPower = 1500;
    s.genMultiplier = 1;
    design.SetLossQ(varo::TankQ{});
    design.SetWoundCoil(varo::TankPart::L1,
                        varo::WoundCoil{{0.0508, 0.1016, 16.6, 0.00163}, 5.6e-6f});
    varo::BandPlanInputs plan;
    plan.tubeCapacitance = 5e-12;
    plan.strayCapacitance = 10e-12;
    plan.tune = {10e-12, 500e-12};
    plan.load = {30e-12, 3000e-12};
    design.SetBandPlanInputs(plan);
    varo::LoadRangeRequest antenna;
    antenna.kind = varo::LoadRangeRequest::Kind::Measured;
    for (int i = 0; i <= 1000; ++i) {
        antenna.measuredFrequencies.push_back(7e6 + 300.0 * i);
        antenna.measuredLoads.push_back({40 + 0.01 * i, -20 + 0.04 * i});
    }
    design.SetLoadRange(antenna);
    return design;
}

const std::string kPath =
    (std::filesystem::temp_directory_path() / "varo_bench_design.varo").string();

void SaveDesignFile(benchmark::State& run) {
    const varo::Design design = FullDesign();
    for (auto _ : run)
        varo::SaveDesignFile(design, kPath);
}
BENCHMARK(SaveDesignFile)->Unit(benchmark::kMillisecond);

void OpenDesignFile(benchmark::State& run) {
    varo::SaveDesignFile(FullDesign(), kPath);
    for (auto _ : run) {
        varo::Design design;
        varo::ApplyDesignFile(varo::ReadDesignFile(kPath), design);
        benchmark::DoNotOptimize(design.state().frequency);
    }
    std::filesystem::remove(kPath);
}
BENCHMARK(OpenDesignFile)->Unit(benchmark::kMillisecond);

}  // namespace
