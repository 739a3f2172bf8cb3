#include "tools/loadhelp/qt/frm_load_help.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cmath>

#include "app/navigator.h"
#include "session/last_session.h"
#include "session/program_text.h"
#include "support/temp_folder.h"
#include "tools/screen_driving.h"

namespace varo {
namespace {

using testing::Click;
using testing::Find;
using testing::TextOf;
using testing::Type;

// The waveform: 360 strokes from the supply level across the panel, sine of a/24 radians.
TEST(FrmLoadHelp, SwingPanelDrawsWaveformLevelsAndArrows) {
    DesignState state;
    ScriptedDialogs dialogs;
    FrmLoadHelp screen{state, dialogs, [] {}};
    std::vector<DrawOp> waveform;
    std::vector<std::array<float, 4>> blue;
    for (const DrawOp& op : screen.surface().ops()) {
        if (op.kind == DrawOp::Kind::Line && op.colour == 0x111111) waveform.push_back(op);
        if (op.kind == DrawOp::Kind::Line && op.colour == kBlue)
            blue.push_back({op.x1, op.y1, op.x2, op.y2});
    }
    ASSERT_EQ(waveform.size(), 360u);
    EXPECT_EQ(std::tie(waveform.front().x1, waveform.front().y1), std::make_tuple(8500.f, 3000.f));
    EXPECT_FLOAT_EQ(waveform.back().x2, 11000);
    EXPECT_NEAR(waveform.back().y2, 3000 - 800 * std::sin(15.0), 0.01);
    for (std::size_t i = 1; i < waveform.size(); ++i)
        ASSERT_EQ(std::tie(waveform[i].x1, waveform[i].y1),
                  std::tie(waveform[i - 1].x2, waveform[i - 1].y2));
    EXPECT_EQ(blue, (std::vector<std::array<float, 4>>{{8700, 3000, 10700, 3000},
                                                       {8700, 3800, 10700, 3800},
                                                       {9800, 3000, 9800, 2500},
                                                       {9770, 2850, 9800, 3000},
                                                       {9830, 2850, 9800, 3000},
                                                       {9800, 3800, 9800, 4300},
                                                       {9770, 3950, 9800, 3800},
                                                       {9830, 3950, 9800, 3800}}));
}

// Through the navigator: a class choice offers a new load and an edit takes it back; Enter
// accepts only an offered load, which the design screen then shows; Escape returns, keeping the
// plate load but the swing and power the helper read.
TEST(LoadHelpNavigation, AcceptAndReturnReachTheDesign) {
    for (const bool accept : {true, false}) {
        testing::TempFolder folder;
        ScriptedDialogs dialogs;
        Navigator navigator(dialogs, {}, SessionFilePath(folder.str()));
        DesignState* design = nullptr;
        navigator.Register(Destination::LoadHelp, [&design](const ScreenContext& context) {
            design = &context.design.state();
            return new FrmLoadHelp(context.design.state(), context.dialogs, context.returnToDesign);
        });
        navigator.Start();
        Click(*navigator.currentScreen(), "cmdEnter");
        QWidget* designScreen = navigator.currentScreen();
        Click(*designScreen, "cmdLoadHelp");
        QWidget* helper = navigator.currentScreen();
        EXPECT_EQ(designScreen->windowTitle().toStdString(), ScreenCaption("Design screen"));
        EXPECT_EQ(helper->windowTitle().toStdString(), ScreenCaption("Load Help screen"));
        EXPECT_EQ(TextOf(*helper, "lblCurrentLoad"), "Current plate load: 1.5k ohms");
        EXPECT_EQ(TextOf(*helper, "txtVoltage"), "");  // no swing known yet
        Type(*helper, "txtVoltage", "2500");
        Type(*helper, "txtPower", "100");
        Click(*helper, "Option2");
        Type(*helper, "txtPower", "1000");
        EXPECT_EQ(TextOf(*helper, "lblLoad"), "");
        EXPECT_FALSE(Find<QRadioButton>(*helper, "Option2")->isChecked());
        EXPECT_FALSE(Find<QPushButton>(*helper, "cmdAccept")->isEnabled());
        testing::Key(Find<QLineEdit>(*helper, "txtPower"), Qt::Key_Return);
        ASSERT_EQ(navigator.currentScreen(), helper);
        // Assistive technology toggles the option rather than clicking it: the same choice.
        if (accept)
            Click(*helper, "Option2");
        else
            testing::ActAccessibly(*helper, "Option2");
        EXPECT_EQ(TextOf(*helper, "lblLoad"), "New plate load: 3.906k ohms");
        EXPECT_EQ(TextOf(*helper, "txtVoltage"), "2.5k");  // the rewritten text is no edit
        if (accept) testing::CheckLayoutAtSizes(*helper);
        testing::Key(accept ? Find<QLineEdit>(*helper, "txtPower") : helper,
                     accept ? Qt::Key_Return : Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

        ASSERT_EQ(navigator.currentScreen(), designScreen);
        EXPECT_EQ(TextOf(*designScreen, "txtPlate"), accept ? "3.906k" : "1.5k");
        EXPECT_EQ(design->plateR, accept ? 3906.25f : 1500.0f);
        EXPECT_EQ(design->peakSwing, 2500.0f);
        EXPECT_EQ(design->rfPower, 1000.0f);
    }
}

}  // namespace
}  // namespace varo
