#include <benchmark/benchmark.h>

#include "core/design_state.h"
#include "model/band_plan.h"

namespace {

constexpr double kPico = 1e-12;

varo::DesignState DefaultDesign() {
    varo::DesignState state;
    varo::InitialiseConstants(state);
    state.frequency = 3.9e6f;
    state.plateR = 1500;
    state.intermediateR = 300;
    state.loadR = 50;
    state.piQ = 12;
    state.peakSwing = 2500;
    state.rfPower = 1500;
    state.genMultiplier = 1;
    return state;
}

// The whole plan: nine bands, two edges each, harmonics 2 to 10 and the stresses. The tube's
// 20 pF make the high bands raise their Q, the costliest path.
void BM_PlanNineBands(benchmark::State& bench) {
    const varo::DesignState design = DefaultDesign();
    varo::BandPlanInputs inputs;
    inputs.tubeCapacitance = 20 * kPico;
    inputs.strayCapacitance = 10 * kPico;
    inputs.tune = {10 * kPico, 500 * kPico};
    inputs.load = {30 * kPico, 3000 * kPico};
    for (auto _ : bench)
        benchmark::DoNotOptimize(varo::PlanBands(design, inputs));
}
BENCHMARK(BM_PlanNineBands)->Unit(benchmark::kMicrosecond);

}  // namespace
