#include <benchmark/benchmark.h>

#include <memory>
#include <string_view>

#include "core/design_state.h"
#include "core/network.h"
#include "model/design_results.h"

namespace {

class SilentReporter final : public varo::Reporter {
  public:
    void ShowMessage(std::string_view, std::string_view, varo::MessageIcon) override {}
};

// The default design of a first run: 3.9 MHz, 1500 -> 300 -> 50 ohms, Q 12.
std::unique_ptr<varo::DesignState> DefaultDesign() {
    auto state = std::make_unique<varo::DesignState>();
    varo::InitialiseConstants(*state);
    state->frequency = 3.9e6f;
    state->plateR = 1500;
    state->intermediateR = 300;
    state->loadR = 50;
    state->piQ = 12;
    state->peakSwing = 2500;
    state->rfPower = 1000;
    state->genMultiplier = 1;
    return state;
}

// One sweep of 2001 points over the five-element ladder of a step-up design.
void BM_SweepRoutine(benchmark::State& bench) {
    auto state = DefaultDesign();
    state->intermediateR = 50;
    state->loadR = 100;
    SilentReporter reporter;
    varo::ComponentCalculations(*state, reporter);
    varo::SetupLadder(*state);
    for (auto _ : bench) {
        benchmark::DoNotOptimize(varo::SweepRoutine(*state, reporter));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_SweepRoutine)->Unit(benchmark::kMicrosecond);

// What every action of the design screen computes after validating: the one results value.
void BM_WholeRecalculation(benchmark::State& bench) {
    auto state = DefaultDesign();
    SilentReporter reporter;
    for (auto _ : bench) {
        varo::DesignResults results;
        benchmark::DoNotOptimize(varo::CalculateDesign(*state, reporter, results));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_WholeRecalculation)->Unit(benchmark::kMicrosecond);

}  // namespace
