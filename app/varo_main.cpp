#include <QApplication>
#include <QLabel>
#include <QObject>

#include "app/navigator.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/screen_helpers.h"
#include "platform/save_file.h"
#include "platform/write_signals.h"
#include "screens/bands/qt/frm_bands.h"
#include "screens/loadrange/qt/frm_load_range.h"
#include "screens/plot/qt/frm_plot.h"
#include "session/qt/session_location.h"
#include "tools/inductor/coil_as_built.h"
#include "tools/inductor/qt/frm_inductor.h"
#include "tools/loadhelp/qt/frm_load_help.h"

// The desktop program: the navigator runs the screens; the session file's place is settled once.
int main(int argc, char** argv) {
    varo::PrepareFileWrites();
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("varo"));
    varo::QtDialogs dialogs;
    // The winding and its unit outlive each opening of the inductor screen.
    varo::CoilState winding;
    varo::Navigator navigator(
        dialogs, [&dialogs](QWidget* window) { dialogs.SetParent(window); },
        varo::StartupSessionFilePath());
    QObject::connect(&navigator, &varo::Navigator::finished, &application, &QCoreApplication::quit);
    // Every file written is named on the screen that wrote it.
    varo::ObserveWrittenFiles([&navigator](const std::vector<std::string>& paths) {
        if (QWidget* screen = navigator.currentScreen())
            if (auto* status = screen->findChild<QLabel*>("lblStatus"))
                status->setText(varo::WrittenFilesText(paths));
    });
    navigator.Register(varo::Destination::Plot, [](const varo::ScreenContext& context) {
        return new varo::FrmPlot(context.design, context.dialogs, context.returnToDesign);
    });
    navigator.Register(varo::Destination::LoadHelp, [](const varo::ScreenContext& context) {
        return new varo::FrmLoadHelp(context.design.state(), context.dialogs,
                                     context.returnToDesign);
    });
    navigator.Register(varo::Destination::Inductor, [&winding](const varo::ScreenContext& context) {
        // Each coil wound is the design's to use: its own Q may stand for the coil Q.
        auto onWound = [&design = context.design](std::int16_t inductor,
                                                  const varo::CoilState& coil) {
            design.SetWoundCoil(inductor == 2 ? varo::TankPart::L2 : varo::TankPart::L1,
                                varo::WoundCoil{varo::WindingOf(coil), coil.targetInductance});
        };
        return new varo::FrmInductor(context.design.state(), winding, context.dialogs,
                                     context.returnToDesign, onWound);
    });
    navigator.Register(varo::Destination::Bands, [](const varo::ScreenContext& context) {
        return new varo::FrmBands(context.design, context.dialogs, context.returnToDesign);
    });
    navigator.Register(varo::Destination::LoadRange, [](const varo::ScreenContext& context) {
        return new varo::FrmLoadRange(context.design, context.dialogs, context.returnToDesign);
    });
    navigator.Start();
    return application.exec();
}
