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

struct FrmLoadHelpTest : ::testing::Test {
    DesignState state = DesignState{.plateR = 1500};
    ScriptedDialogs dialogs;
    int returns = 0;
    FrmLoadHelp screen{state, dialogs, [this] { ++returns; }};
};

// Opened on the design's load with nothing to accept; a class choice offers a new load, and an
// edit takes it back.
TEST_F(FrmLoadHelpTest, AClassChoiceOffersTheLoadAndAnEditTakesItBack) {
    EXPECT_EQ(TextOf(screen, "lblCurrentLoad"), "Current plate load: 1.5k ohms");
    EXPECT_EQ(TextOf(screen, "lblLoad"), "New plate load: 1.5k ohms");
    EXPECT_EQ(TextOf(screen, "txtVoltage"), "");  // no swing known yet
    EXPECT_FALSE(Find<QPushButton>(screen, "cmdAccept")->isEnabled());

    Type(screen, "txtVoltage", "2500");
    Type(screen, "txtPower", "1000");
    Click(screen, "Option2");
    EXPECT_EQ(TextOf(screen, "lblLoad"), "New plate load: 3.906k ohms");
    EXPECT_EQ(TextOf(screen, "txtVoltage"), "2.5k");  // the rewritten text is no edit
    EXPECT_TRUE(Find<QPushButton>(screen, "cmdAccept")->isEnabled());
    EXPECT_TRUE(Find<QRadioButton>(screen, "Option2")->isChecked());
    testing::CheckLayoutAtSizes(screen);

    Type(screen, "txtPower", "100");
    EXPECT_EQ(TextOf(screen, "lblLoad"), "");
    EXPECT_FALSE(Find<QRadioButton>(screen, "Option2")->isChecked());
    EXPECT_FALSE(Find<QPushButton>(screen, "cmdAccept")->isEnabled());
    EXPECT_EQ(returns, 0);
}

// The waveform: 360 strokes from the supply level across the panel, sine of a/24 radians.
TEST_F(FrmLoadHelpTest, SwingPanelDrawsWaveformLevelsAndArrows) {
    const std::vector<DrawOp>& ops = screen.surface().ops();
    std::vector<DrawOp> waveform, blue;
    for (const DrawOp& op : ops) {
        if (op.kind == DrawOp::Kind::Line && op.colour == 0x111111) waveform.push_back(op);
        if (op.kind == DrawOp::Kind::Line && op.colour == kBlue) blue.push_back(op);
    }
    ASSERT_EQ(waveform.size(), 360u);
    EXPECT_EQ(std::tie(waveform.front().x1, waveform.front().y1), std::make_tuple(8500.f, 3000.f));
    EXPECT_FLOAT_EQ(waveform.back().x2, 11000);
    EXPECT_NEAR(waveform.back().y2, 3000 - 800 * std::sin(15.0), 0.01);
    for (std::size_t i = 1; i < waveform.size(); ++i)
        ASSERT_EQ(std::tie(waveform[i].x1, waveform[i].y1),
                  std::tie(waveform[i - 1].x2, waveform[i - 1].y2));
    const std::vector<std::array<float, 4>> strokes = {
        {8700, 3000, 10700, 3000}, {8700, 3800, 10700, 3800}, {9800, 3000, 9800, 2500},
        {9770, 2850, 9800, 3000},  {9830, 2850, 9800, 3000},  {9800, 3800, 9800, 4300},
        {9770, 3950, 9800, 3800},  {9830, 3950, 9800, 3800}};
    ASSERT_EQ(blue.size(), strokes.size());
    for (std::size_t i = 0; i < strokes.size(); ++i)
        EXPECT_EQ((std::array{blue[i].x1, blue[i].y1, blue[i].x2, blue[i].y2}), strokes[i]) << i;
}

// Through the navigator: Enter accepts only once a class is chosen, and writes the load that the
// design screen then shows; Escape returns, keeping the plate load but the swing and power the
// helper read.
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
        Type(*helper, "txtVoltage", "2500");
        Type(*helper, "txtPower", "1000");
        testing::Key(Find<QLineEdit>(*helper, "txtPower"), Qt::Key_Return);
        ASSERT_EQ(navigator.currentScreen(), helper);
        Click(*helper, "Option2");
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
