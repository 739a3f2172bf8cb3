// The PDF writer of varo-cli, a module loaded only when a PDF is asked for: the command line
// otherwise runs without Qt.
#include <QCoreApplication>
#include <QGuiApplication>
#include <memory>

#include "app/cli/pdf/pdf_module.h"
#include "platform/qt/qt_print.h"

namespace {

// Paints without a screen: the offscreen platform unless the caller chose one.
void EnsureApplication() {
    if (QCoreApplication::instance()) return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "varo-cli";
    static char* argv[] = {name, nullptr};
    static std::unique_ptr<QGuiApplication> application =
        std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void VaroWritePdf(
    const varo::PrintDocument& document, const std::string& path, varo::PrintOutcome& outcome) {
    EnsureApplication();
    outcome = varo::WritePdf(document, path);
}
