#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <memory>
#include <vector>

#include "core/network.h"
#include "core/numtext.h"
#include "model/design.h"
#include "model/pictures/large_plot.h"
#include "model/pictures/smith_chart.h"
#include "platform/qt/replay.h"
#include "screens/plot/large_plot_screen.h"
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

// The program's default design as the plot screen finds it: components and ladder worked out,
// then the plot's own sweep.
struct LargePlot {
    LargePlot() {
        EnsureApplication();
        surface.SetTextMeasure(&QtTextMeasure());
        ReadLastSession(design.state(), "");  // no file: the default design
        ok = design.RecomputeNetwork(reporter) && design.SweepAsLaidOut(reporter) &&
             reporter.messages == 0;
    }
    // A nudge button clears the screen and redraws it, so the list keeps its storage.
    void Redraw() {
        surface.Clear();
        DrawLargePlot(surface, design.state(), design.results(), 16200);
    }
    Design design;
    CountingReporter reporter;
    bool ok = false;
    Surface surface{12000, 9000};
};

void BM_LargePlotDisplayList(benchmark::State& run) {
    LargePlot plot;
    if (!plot.ok) run.SkipWithError("the default design did not compute");
    for (auto _ : run) {
        plot.Redraw();
        benchmark::DoNotOptimize(plot.surface.ops().data());
    }
}
BENCHMARK(BM_LargePlotDisplayList)->Unit(benchmark::kMicrosecond);

// The large plot's display list painted onto a 1600 x 1200 image, shape kept.
void BM_LargePlotReplay(benchmark::State& run) {
    LargePlot plot;
    if (!plot.ok) run.SkipWithError("the default design did not compute");
    plot.Redraw();
    for (auto _ : run) {
        QImage image = RenderSurface(plot.surface, QSize(1600, 1200), 1, SurfaceFit::KeepAspect);
        benchmark::DoNotOptimize(image.constBits());
    }
    run.counters["ops"] = static_cast<double>(plot.surface.ops().size());
}
BENCHMARK(BM_LargePlotReplay)->Unit(benchmark::kMillisecond);

// One press of "CL+1%" (then "CL-1%", so the design stays put): ladder, sweep, readout
// analyses and the whole display list rebuilt.
void BM_LargePlotNudgePress(benchmark::State& run) {
    LargePlot plot;
    if (!plot.ok) run.SkipWithError("the default design did not compute");
    bool up = true;
    for (auto _ : run) {
        plot.design.NudgePart(up ? Nudge::CapacitorUp : Nudge::CapacitorDown, plot.reporter);
        plot.design.SweepAsLaidOut(plot.reporter);
        plot.Redraw();
        up = !up;
        benchmark::DoNotOptimize(plot.surface.ops().data());
    }
    if (plot.reporter.messages != 0) run.SkipWithError("a nudge reported a fault");
}
BENCHMARK(BM_LargePlotNudgePress)->Unit(benchmark::kMillisecond);

// The cursor readout for one mouse position, with both saved curves drawn.
void BM_LargePlotCursorReadout(benchmark::State& run) {
    LargePlot plot;
    const SweepTable& sweep = plot.design.results().sweep;
    OverlayCurves overlays;
    for (auto& overlay : overlays)
        overlay = OverlayCurve{sweep.frequency, sweep.transmissionDb};
    float x = 2000;
    for (auto _ : run) {
        benchmark::DoNotOptimize(CursorReadoutText(sweep, overlays, x).data());
        x = x >= 11000 ? 2000 : x + 7;
    }
}
BENCHMARK(BM_LargePlotCursorReadout)->Unit(benchmark::kMicrosecond);

// The Smith chart of what the tube sees, as the screen draws it: its surface has the shape of
// the plot it stands in for; the cursor on a swept point.
constexpr ChartBox kSmithBox{0, 0, 9700, 6540};

void DrawSmith(Surface& smith, const InputView& view) {
    smith.Clear();
    DrawInputSmithChart(smith, kSmithBox, view, view.sweepGamma.size() / 2);
}

// One step of a knob, end to end: C1 set (alternately 0.2 % up and back), ladder, sweep,
// readout analyses and what the tube sees, then the shown picture's display list rebuilt and
// replayed onto 1600 x 1200. Argument 0: the dB plot is shown; 1: the Smith chart.
void BM_TuningStep(benchmark::State& run) {
    LargePlot plot;
    if (!plot.ok) run.SkipWithError("the default design did not compute");
    const bool smithShown = run.range(0) == 1;
    Surface smith(kSmithBox.right, kSmithBox.bottom);
    smith.SetTextMeasure(&QtTextMeasure());
    bool up = true;
    for (auto _ : run) {
        plot.design.TunePart(TankPart::C1, up ? 1.002 : 1, plot.reporter);
        plot.design.SweepAsLaidOut(plot.reporter);
        plot.Redraw();
        if (smithShown) DrawSmith(smith, *plot.design.results().input);
        const Surface& shown = smithShown ? smith : plot.surface;
        QImage image = RenderSurface(shown, QSize(1600, 1200), 1, SurfaceFit::KeepAspect);
        benchmark::DoNotOptimize(image.constBits());
        up = !up;
    }
    if (plot.reporter.messages != 0) run.SkipWithError("a step reported a fault");
}
BENCHMARK(BM_TuningStep)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The Smith chart's display list alone: grid, the 2001-point trace, the marks.
void BM_SmithChartDisplayList(benchmark::State& run) {
    LargePlot plot;
    if (!plot.ok || !plot.design.results().input) run.SkipWithError("no input view");
    Surface smith(kSmithBox.right, kSmithBox.bottom);
    smith.SetTextMeasure(&QtTextMeasure());
    for (auto _ : run) {
        DrawSmith(smith, *plot.design.results().input);
        benchmark::DoNotOptimize(smith.ops().data());
    }
    run.counters["ops"] = static_cast<double>(smith.ops().size());
}
BENCHMARK(BM_SmithChartDisplayList)->Unit(benchmark::kMicrosecond);

// The Smith chart painted onto 1600 x 1200, shape kept: grid, trace and marks.
void BM_SmithChartReplay(benchmark::State& run) {
    LargePlot plot;
    if (!plot.ok || !plot.design.results().input) run.SkipWithError("no input view");
    Surface smith(kSmithBox.right, kSmithBox.bottom);
    smith.SetTextMeasure(&QtTextMeasure());
    DrawSmith(smith, *plot.design.results().input);
    for (auto _ : run) {
        QImage image = RenderSurface(smith, QSize(1600, 1200), 1, SurfaceFit::KeepAspect);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_SmithChartReplay)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varo
