#pragma once

#include <QApplication>

namespace varo {

// One offscreen application for the whole benchmark run; it lives until the process ends.
inline void EnsureApplication() {
    if (QApplication::instance() != nullptr) return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "varo_bench";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
}

}  // namespace varo
