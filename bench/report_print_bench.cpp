#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <filesystem>
#include <memory>

#include "model/design.h"
#include "model/pictures/report_pages.h"
#include "platform/qt/qt_print.h"
#include "session/last_session.h"

namespace varo {
namespace {

// The design report of the default design, laid out and painted into a PDF file: what Print
// and "Save as PDF" cost after the dialog (the target is under 100 ms).
void BM_DesignReportToPdf(benchmark::State& run) {
    if (QGuiApplication::instance() == nullptr) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "report_print_bench";
        static char* argv[] = {name, nullptr};
        new QGuiApplication(argc, argv);
    }
    Design design;
    DesignState* state = &design.state();
    ReadLastSession(*state, "");
    state->peakSwing = 2500;
    state->rfPower = 1000;
    TextFields<DesignForm> form;
    if (!design.Load(form, SilentReporter()) || !design.results().phases) {
        run.SkipWithError("the default design did not compute");
        return;
    }
    const std::string path =
        (std::filesystem::temp_directory_path() / "varo_report_print_bench.pdf").string();
    for (auto _ : run) {
        const PrintOutcome outcome =
            WritePdf(DesignReportDocument(*state, design.results(), "1/2/2026"), path);
        if (outcome.status != PrintOutcome::Status::Printed)
            run.SkipWithError(outcome.detail.c_str());
    }
    std::filesystem::remove(path);
}
BENCHMARK(BM_DesignReportToPdf)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varo
