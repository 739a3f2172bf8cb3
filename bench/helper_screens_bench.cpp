#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>

#include "bench/bench_application.h"
#include "core/design_state.h"
#include "platform/dialogs.h"
#include "tools/inductor/qt/frm_inductor.h"
#include "tools/loadhelp/qt/frm_load_help.h"

namespace varo {
namespace {

DesignState ExampleDesign() {
    DesignState state;
    state.plateR = 1500;
    state.intermediateR = 300;
    state.loadR = 50;
    state.L1 = 10e-6f;
    state.L2 = 2e-6f;
    return state;
}

// Built, shown and painted once at the default window size.
template <typename Open>
void OpenToFirstPaint(benchmark::State& run, Open open) {
    EnsureApplication();
    for (auto _ : run) {
        QWidget* screen = open();
        screen->show();
        benchmark::DoNotOptimize(screen->grab().cacheKey());
        delete screen;
    }
}

void BM_LoadHelpOpenToFirstPaint(benchmark::State& run) {
    DesignState state = ExampleDesign();
    ScriptedDialogs dialogs;
    OpenToFirstPaint(run, [&] { return new FrmLoadHelp(state, dialogs, [] {}); });
}
BENCHMARK(BM_LoadHelpOpenToFirstPaint)->Unit(benchmark::kMillisecond);

void BM_InductorOpenToFirstPaint(benchmark::State& run) {
    DesignState state = ExampleDesign();
    CoilState coil;
    ScriptedDialogs dialogs;
    OpenToFirstPaint(run, [&] { return new FrmInductor(state, coil, dialogs, [] {}); });
}
BENCHMARK(BM_InductorOpenToFirstPaint)->Unit(benchmark::kMillisecond);

// Compute pressed on the worked example: the calculation, the results shown and the picture
// rebuilt.
void BM_InductorComputePress(benchmark::State& run) {
    EnsureApplication();
    DesignState state = ExampleDesign();
    CoilState coil;
    ScriptedDialogs dialogs;
    FrmInductor screen(state, coil, dialogs, [] {});
    qobject_cast<QAbstractButton*>(screen.findChild<QWidget*>("Option4"))->click();
    screen.findChild<QLineEdit*>("txtFormDiameter")->setText("2");
    screen.findChild<QLineEdit*>("txtFormLength")->setText("4");
    auto* compute = screen.findChild<QPushButton*>("cmdCompute");
    compute->click();
    screen.findChild<QLineEdit*>("txtActualGauge")->setText("14");
    for (auto _ : run) {
        compute->click();
        benchmark::DoNotOptimize(screen.surface().ops().size());
    }
    if (!dialogs.messages().empty()) run.SkipWithError("the calculation reported a message");
}
BENCHMARK(BM_InductorComputePress)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace varo
