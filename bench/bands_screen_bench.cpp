#include <benchmark/benchmark.h>

#include <QLineEdit>

#include "bench/bench_application.h"
#include "bench/default_design.h"
#include "model/design.h"
#include "platform/dialogs.h"
#include "screens/bands/qt/frm_bands.h"

namespace varo {
namespace {

// The screen's answer to an edit: a character typed into the tuning capacitor's maximum plans
// all nine bands again and shows the table, the notes and the chart, painted.
void BM_BandScreenUpdateAfterAnEdit(benchmark::State& run) {
    EnsureApplication();
    Design design;
    design.state() = DefaultBenchDesign();
    ScriptedDialogs dialogs;
    FrmBands screen(design, dialogs, [] {});
    screen.show();
    auto* entry = screen.findChild<QLineEdit*>("txtTuneMax");
    bool longer = false;
    for (auto _ : run) {
        entry->setText(longer ? "5000" : "500");
        longer = !longer;
        emit entry->textEdited(entry->text());
        benchmark::DoNotOptimize(screen.grab().cacheKey());
    }
}
BENCHMARK(BM_BandScreenUpdateAfterAnEdit)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varo
