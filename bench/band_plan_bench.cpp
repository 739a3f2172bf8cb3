#include <benchmark/benchmark.h>

#include "bench/default_design.h"
#include "model/band_plan.h"

namespace {

constexpr double kPico = 1e-12;

// The whole plan: nine bands, two edges each, harmonics 2 to 10 and the stresses. The tube's
// 20 pF make the high bands raise their Q, the costliest path.
void BM_PlanNineBands(benchmark::State& bench) {
    const varo::DesignState design = varo::DefaultBenchDesign();
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
