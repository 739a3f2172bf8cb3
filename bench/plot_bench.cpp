#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <memory>
#include <vector>

#include "core/network.h"
#include "core/numtext.h"
#include "platform/qt/replay.h"
#include "screens/plot/large_plot.h"
#include "session/last_session.h"

namespace varo {
namespace {

// One offscreen application for the whole run (text is measured with its fonts).
void EnsureApplication() {
    if (QGuiApplication::instance() != nullptr) return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "plot_bench";
    static char* argv[] = {name, nullptr};
    new QGuiApplication(argc, argv);
}

class CountingReporter final : public Reporter {
  public:
    void ShowMessage(std::string_view, std::string_view, MessageIcon) override { ++messages; }
    int messages = 0;
};

// The program's default design, computed and swept as the plot screen finds it.
struct SweptDesign {
    SweptDesign() {
        InitialiseConstants(*state);
        ReadLastSession(*state, "");  // no file: the default design
        if (!ComponentCalculations(*state, reporter)) return;
        SetupLadder(*state);
        ok = SweepRoutine(*state, reporter) && reporter.messages == 0;
        BuildLogGrid(*state);
        grid.assign(state->gridFrequencies.begin(),
                    state->gridFrequencies.begin() + state->gridLastIndex + 1);
    }
    std::unique_ptr<DesignState> state = std::make_unique<DesignState>();
    CountingReporter reporter;
    std::vector<float> grid;
    bool ok = false;
};

// The default design's large plot: the chart and the first three harmonics' markers, on a
// surface that measures its text as the screen's will.
struct LargePlot {
    LargePlot() {
        EnsureApplication();
        surface.SetTextMeasure(&QtTextMeasure());
    }
    // A nudge button clears the screen and redraws it, so the list keeps its storage.
    void Redraw() {
        const DesignState& state = *design.state;
        surface.Clear();
        DrawLargePlotChart(surface, state, design.grid);
        for (int n = 1; n <= 3; ++n) {
            const float frequency = static_cast<float>(n) * state.frequency;
            MarkLargePlotHarmonic(surface, state, frequency, -10.0f * static_cast<float>(n));
        }
    }
    SweptDesign design;
    Surface surface{12000, 9000};
};

void BM_LargePlotDisplayList(benchmark::State& run) {
    LargePlot plot;
    if (!plot.design.ok) run.SkipWithError("the default design did not compute");
    for (auto _ : run) {
        plot.Redraw();
        benchmark::DoNotOptimize(plot.surface.ops().data());
    }
}
BENCHMARK(BM_LargePlotDisplayList)->Unit(benchmark::kMicrosecond);

// The large plot's display list painted onto a 1600 x 1200 image, shape kept.
void BM_LargePlotReplay(benchmark::State& run) {
    LargePlot plot;
    if (!plot.design.ok) run.SkipWithError("the default design did not compute");
    plot.Redraw();
    for (auto _ : run) {
        QImage image = RenderSurface(plot.surface, QSize(1600, 1200), 1, SurfaceFit::KeepAspect);
        benchmark::DoNotOptimize(image.constBits());
    }
    run.counters["ops"] = static_cast<double>(plot.surface.ops().size());
}
BENCHMARK(BM_LargePlotReplay)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varo
