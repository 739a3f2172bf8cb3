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

// The chart and the first three harmonics' markers, as the plot screen will draw them.
void DrawLargePlot(Surface& surface, const DesignState& state, const std::vector<float>& grid) {
    DrawLargePlotChart(surface, state, grid);
    for (int n = 1; n <= 3; ++n) {
        const float frequency = static_cast<float>(n) * state.frequency;
        MarkLargePlotHarmonic(surface, state, frequency, -10.0f * static_cast<float>(n));
    }
}

void BM_LargePlotDisplayList(benchmark::State& run) {
    EnsureApplication();
    SweptDesign design;
    if (!design.ok) run.SkipWithError("the default design did not compute");
    // A nudge button clears the screen and redraws it, so the list keeps its storage.
    Surface surface(12000, 9000);
    surface.SetTextMeasure(&QtTextMeasure());
    for (auto _ : run) {
        surface.Clear();
        DrawLargePlot(surface, *design.state, design.grid);
        benchmark::DoNotOptimize(surface.ops().data());
    }
}
BENCHMARK(BM_LargePlotDisplayList)->Unit(benchmark::kMicrosecond);

// The large plot's display list painted onto a 1600 x 1200 image, shape kept.
void BM_LargePlotReplay(benchmark::State& run) {
    EnsureApplication();
    SweptDesign design;
    if (!design.ok) run.SkipWithError("the default design did not compute");
    Surface surface(12000, 9000);
    surface.SetTextMeasure(&QtTextMeasure());
    DrawLargePlot(surface, *design.state, design.grid);
    for (auto _ : run) {
        QImage image = RenderSurface(surface, QSize(1600, 1200), 1, SurfaceFit::KeepAspect);
        benchmark::DoNotOptimize(image.constBits());
    }
    run.counters["ops"] = static_cast<double>(surface.ops().size());
}
BENCHMARK(BM_LargePlotReplay)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varo
