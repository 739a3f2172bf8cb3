#include "session/qt/frm_opening.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <cmath>

#include "support/temp_folder.h"

namespace varo {
namespace {

struct FrmOpeningTest : ::testing::Test {
    testing::TempFolder folder;
    const std::string path = SessionFilePath(folder.str());
    DesignState state;
};

// 12000 x 9000 twips: 15 a pixel at 96 dpi, fewer on a smaller screen; scales with the window.
TEST_F(FrmOpeningTest, CaptionsAndALayoutThatScales) {
    FrmOpening screen(state, path);
    EXPECT_EQ(screen.objectName(), "frmOpening");
    EXPECT_EQ(screen.windowTitle(), "VARO - Version 2.17 - Welcome !");
    auto* enter = screen.findChild<QPushButton*>("cmdEnter");
    ASSERT_NE(enter, nullptr);
    EXPECT_EQ(enter->text(), "Start");
    EXPECT_EQ(screen.findChild<QPushButton*>("cmdExit")->text(), "Exit");
    EXPECT_EQ(screen.findChild<QWidget*>("Image1")->accessibleName(), "VARO title picture");
    EXPECT_TRUE(screen.width() <= 800 && screen.width() * 3 == screen.height() * 4);
    screen.resize(800, 600);
    screen.show();
    EXPECT_EQ(enter->geometry(), QRect(500, 433, 100, 22));
    const int fontPixels = enter->font().pixelSize();
    screen.resize(1600, 1200);
    EXPECT_EQ(enter->geometry(), QRect(1000, 867, 200, 44));
    EXPECT_NEAR(enter->font().pixelSize(), 2 * fontPixels, 1);
}

// Pi is set before the last session is read; Enter presses Start.
TEST_F(FrmOpeningTest, ReadsTheLastSessionAfterSettingPiAndEnterPressesStart) {
    testing::WriteBytes(path, "VARO last-session file\r\n11/15/2026\r\nFrequency: 7100000\r\n");
    FrmOpening screen(state, path);
    EXPECT_DOUBLE_EQ(state.pi, 4 * std::atan(1.0));
    EXPECT_EQ(state.frequency, 7100000);
    int started = 0;
    QObject::connect(&screen, &FrmOpening::startRequested, [&] { ++started; });
    QKeyEvent enterKey(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&screen, &enterKey);
    EXPECT_EQ(started, 1);
}

}  // namespace
}  // namespace varo
