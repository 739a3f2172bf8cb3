// Start-up probe: the desktop program's start as far as the first painted welcome screen, then
// exit. startup_bench runs it as a whole process; its exit status carries nothing, its standard
// output the peak resident memory in kilobytes.
#include <sys/resource.h>
#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <cstdio>

#include "core/design_state.h"
#include "session/qt/frm_opening.h"

namespace {

class FirstPaintQuits : public QObject {
  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            // Let the paint finish, then leave.
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        }
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    varo::DesignState state;
    varo::FrmOpening opening(state);
    FirstPaintQuits quitter;
    opening.installEventFilter(&quitter);
    opening.show();
    application.exec();
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%ld\n", usage.ru_maxrss);
    return 0;
}
