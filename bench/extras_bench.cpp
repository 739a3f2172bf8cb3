#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string_view>

#include "core/tank_losses.h"
#include "export/spice_netlist.h"
#include "export/touchstone.h"
#include "model/design_results.h"
#include "platform/dialogs.h"
#include "tests/core/design_fixture.h"

namespace {

// The default design of a first run, computed and swept.
std::unique_ptr<varo::DesignState> SweptDefaultDesign() {
    auto state = varo::test::MakeDesign(varo::test::kReferenceDesign);
    state->rfPower = 1000;
    varo::Reporter& reporter = varo::SilentReporter();
    varo::ComponentCalculations(*state, reporter);
    varo::SetupLadder(*state);
    varo::SweepRoutine(*state, reporter);
    return state;
}

// The netlist and both Touchstone files (2001 points each), written to disk.
void BM_NetlistAndTouchstoneFiles(benchmark::State& bench) {
    const auto state = SweptDefaultDesign();
    const auto folder = std::filesystem::temp_directory_path();
    const std::string netlist = (folder / "varo-bench.cir").string();
    const std::string twoPort = (folder / "varo-bench.s2p").string();
    const std::string onePort = (folder / "varo-bench.s1p").string();
    varo::ScriptedDialogs dialogs;
    for (auto _ : bench) {
        benchmark::DoNotOptimize(varo::WriteSpiceNetlist(*state, netlist, dialogs));
        benchmark::DoNotOptimize(varo::WriteTouchstoneFile(*state, twoPort, dialogs));
        benchmark::DoNotOptimize(varo::WriteTouchstoneFile(*state, onePort, dialogs));
    }
    for (const auto& path : {netlist, twoPort, onePort})
        std::filesystem::remove(path);
}
BENCHMARK(BM_NetlistAndTouchstoneFiles)->Unit(benchmark::kMillisecond);

void BM_TankLosses(benchmark::State& bench) {
    const auto state = SweptDefaultDesign();
    for (auto _ : bench)
        benchmark::DoNotOptimize(varo::AnalyzeTankLosses(*state, {}));
}
BENCHMARK(BM_TankLosses)->Unit(benchmark::kMicrosecond);

}  // namespace
