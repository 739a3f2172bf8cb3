#include <benchmark/benchmark.h>

#include <memory>
#include <string_view>

#include "core/design_state.h"
#include "core/network.h"
#include "model/design.h"
#include "model/design_results.h"

namespace {

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
    varo::Reporter& reporter = varo::SilentReporter();
    varo::ComponentCalculations(*state, reporter);
    varo::SetupLadder(*state);
    for (auto _ : bench) {
        benchmark::DoNotOptimize(varo::SweepRoutine(*state, reporter));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_SweepRoutine)->Unit(benchmark::kMicrosecond);

// The design layer's Accept without any screen: validation of the five entries, the whole
// recalculation with its 2001-point sweep, and the settled results (sweep table included).
void BM_DesignLayerAccept(benchmark::State& bench) {
    varo::Design design;
    design.state() = *DefaultDesign();
    varo::TextFields<varo::DesignForm> form;
    for (const auto& [field, text] : {std::pair{varo::DesignField::Frequency, "3.9M"},
                                      {varo::DesignField::Plate, "1500"},
                                      {varo::DesignField::Intermediate, "300"},
                                      {varo::DesignField::NominalLoad, "50"},
                                      {varo::DesignField::Q, "12"}})
        form.SetText(field, text);
    varo::ScriptedDialogs dialogs;
    for (auto _ : bench) {
        benchmark::DoNotOptimize(design.Accept(form, dialogs, varo::SilentReporter()));
        benchmark::ClobberMemory();
    }
    if (!dialogs.events().empty()) bench.SkipWithError("the design reported a message");
}
BENCHMARK(BM_DesignLayerAccept)->Unit(benchmark::kMicrosecond);

}  // namespace
