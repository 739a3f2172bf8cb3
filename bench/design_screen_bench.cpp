#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPushButton>

#include "platform/qt/replay.h"
#include "screens/design/qt/frm_design.h"
#include "session/last_session.h"

namespace varo {
namespace {

// One offscreen application for the whole run; it lives until the process ends.
void EnsureApplication() {
    if (QApplication::instance() != nullptr) return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "design_screen_bench";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
}

// The design screen showing the program's default design at 1 kW.
struct DesignScreen {
    DesignScreen() {
        ReadLastSession(state, "");  // no file: the default design
        state.peakSwing = 2500;
        state.rfPower = 1000;
        form.show();
    }
    Design design;
    DesignState& state = design.state();
    ScriptedDialogs dialogs;
    DesignSession session;
    FrmDesign form{design, dialogs, session};
};

// Accept pressed: validation, recalculation with its 2001-point sweep, and the display list
// rebuilt (schematic, stresses, small plot and harmonic table).
void BM_DesignAcceptPress(benchmark::State& run) {
    EnsureApplication();
    DesignScreen screen;
    auto* accept = screen.form.findChild<QPushButton*>("cmdDesign");
    for (auto _ : run) {
        accept->click();
        benchmark::DoNotOptimize(screen.form.surface().ops().size());
    }
    if (!screen.dialogs.messages().empty()) run.SkipWithError("the design reported a message");
}
BENCHMARK(BM_DesignAcceptPress)->Unit(benchmark::kMillisecond);

// The design screen's display list painted onto a 1600 x 1200 image.
void BM_DesignScreenReplay(benchmark::State& run) {
    EnsureApplication();
    DesignScreen screen;
    for (auto _ : run) {
        QImage image = RenderSurface(screen.form.surface(), QSize(1600, 1200));
        benchmark::DoNotOptimize(image.constBits());
    }
    run.counters["ops"] = static_cast<double>(screen.form.surface().ops().size());
}
BENCHMARK(BM_DesignScreenReplay)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varo
