#include <QApplication>
#include <QObject>

#include "core/design_state.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/system.h"
#include "screens/design/design_actions.h"
#include "screens/design/qt/frm_design.h"
#include "session/last_session.h"
#include "session/qt/frm_opening.h"

// The desktop program: one design for the whole run, the welcome screen first, then the design
// screen, which is the only way onward.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    varo::DesignState state;
    varo::QtDialogs dialogs;
    varo::DesignSession session;
    session.sessionFilePath = varo::SessionFilePath(varo::ExecutableFolder());

    auto* opening = new varo::FrmOpening(state, session.sessionFilePath);
    opening->setAttribute(Qt::WA_DeleteOnClose);
    dialogs.SetParent(opening);

    QObject::connect(opening, &varo::FrmOpening::startRequested, opening, [&, opening] {
        auto* design = new varo::FrmDesign(state, dialogs, session);
        design->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(design, &varo::FrmDesign::requestExit, design, [design] {
            design->close();
            QCoreApplication::quit();
        });
        dialogs.SetParent(design);
        design->show();
        opening->close();
    });
    // Leaving from the welcome screen writes nothing.
    QObject::connect(opening, &varo::FrmOpening::exitRequested, opening, [opening] {
        opening->close();
        QCoreApplication::quit();
    });
    opening->show();
    return application.exec();
}
