#include "session/qt/frm_opening.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <cmath>

#include "support/temp_folder.h"

namespace varo {
namespace {

template <typename Control>
Control* Find(const FrmOpening& screen, const char* name) {
    auto* control = screen.findChild<Control*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return control;
}

struct FrmOpeningTest : ::testing::Test {
    testing::TempFolder folder;
    const std::string path = SessionFilePath(folder.str());
    DesignState state;
};

TEST_F(FrmOpeningTest, CaptionsAndALayoutOfTwelveByNineThousandTwipsThatScales) {
    FrmOpening screen(state, path);
    EXPECT_EQ(screen.objectName(), "frmOpening");
    EXPECT_EQ(screen.windowTitle(), "VARO - Version 2.17 - Welcome !");
    QPushButton* enter = Find<QPushButton>(screen, "cmdEnter");
    EXPECT_EQ(enter->text(), "Start");
    EXPECT_EQ(Find<QPushButton>(screen, "cmdExit")->text(), "Exit");
    // The picture is named for screen readers; buttons and labels speak their captions.
    EXPECT_EQ(Find<QWidget>(screen, "Image1")->accessibleName(), "VARO title picture");
    // 96 dots per inch: 15 twips a pixel, or less at the same shape where the screen is smaller.
    EXPECT_TRUE(screen.width() <= 800 && screen.width() * 3 == screen.height() * 4);
    screen.resize(800, 600);
    screen.show();
    EXPECT_EQ(enter->geometry(), QRect(500, 433, 100, 22));
    const int fontPixels = enter->font().pixelSize();
    screen.resize(1600, 1200);
    EXPECT_EQ(enter->geometry(), QRect(1000, 867, 200, 44));
    EXPECT_NEAR(enter->font().pixelSize(), 2 * fontPixels, 1);
}

TEST_F(FrmOpeningTest, LabelTextsFitTheirBoxes) {
    FrmOpening screen(state, path);
    screen.show();
    for (const QLabel* label : screen.findChildren<QLabel*>()) {
        EXPECT_LE(label->sizeHint().width(), label->width()) << label->objectName().toStdString();
        EXPECT_LE(label->fontMetrics().height(), label->height() + 1)
            << label->objectName().toStdString();
    }
    // The lower labels' texts end before the buttons begin.
    const int buttons = Find<QPushButton>(screen, "cmdEnter")->x();
    for (const char* name : {"lblCredit", "lblCopyright"}) {
        const QLabel* label = Find<QLabel>(screen, name);
        EXPECT_LT(label->x() + label->sizeHint().width(), buttons) << name;
    }
}

TEST_F(FrmOpeningTest, ReadsTheLastSessionAfterSettingPi) {
    testing::WriteBytes(path, "VARO last-session file\r\n11/15/2026\r\nFrequency: 7100000\r\n");
    FrmOpening screen(state, path);
    EXPECT_DOUBLE_EQ(state.pi, 4 * std::atan(1.0));
    EXPECT_EQ(state.frequency, 7100000);
}

// Start and Exit by click are driven through the navigator; Enter presses Start.
TEST_F(FrmOpeningTest, EnterPressesStart) {
    FrmOpening screen(state, path);
    int started = 0;
    QObject::connect(&screen, &FrmOpening::startRequested, [&] { ++started; });
    QKeyEvent enterKey(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&screen, &enterKey);
    EXPECT_EQ(started, 1);
}

}  // namespace
}  // namespace varo
