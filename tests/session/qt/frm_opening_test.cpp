#include "session/qt/frm_opening.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;

template <typename Control>
Control* Find(const FrmOpening& screen, const char* name) {
    auto* control = screen.findChild<Control*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return control;
}

TEST(FrmOpening, CaptionsAndTitle) {
    TempFolder folder;
    DesignState state;
    FrmOpening screen(state, SessionFilePath(folder.str()));
    EXPECT_EQ(screen.objectName(), "frmOpening");
    EXPECT_EQ(screen.windowTitle(), "VARO - Version 2.17 - Welcome !");
    EXPECT_EQ(Find<QLabel>(screen, "lblVersion")->font().family(), "Arial");
    EXPECT_EQ(Find<QPushButton>(screen, "cmdEnter")->text(), "Start");
    EXPECT_EQ(Find<QPushButton>(screen, "cmdExit")->text(), "Exit");
    // The picture is named for screen readers; buttons and labels speak their captions.
    EXPECT_EQ(Find<QWidget>(screen, "Image1")->accessibleName(), "VARO title picture");
}

TEST(FrmOpening, LayoutIsTwelveByNineThousandTwipsAndScales) {
    TempFolder folder;
    DesignState state;
    FrmOpening screen(state, SessionFilePath(folder.str()));
    EXPECT_EQ(screen.size(), QSize(800, 600));  // 96 dots per inch: 15 twips a pixel
    screen.show();
    QPushButton* enter = Find<QPushButton>(screen, "cmdEnter");
    EXPECT_EQ(enter->geometry(), QRect(500, 433, 100, 22));
    EXPECT_EQ(Find<QWidget>(screen, "Image1")->geometry(), QRect(160, 67, 200, 66));
    const int fontPixels = enter->font().pixelSize();
    screen.resize(1600, 1200);
    EXPECT_EQ(enter->geometry(), QRect(1000, 867, 200, 44));
    EXPECT_NEAR(enter->font().pixelSize(), 2 * fontPixels, 1);
}

TEST(FrmOpening, LabelTextsFitTheirBoxes) {
    TempFolder folder;
    DesignState state;
    FrmOpening screen(state, SessionFilePath(folder.str()));
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

TEST(FrmOpening, DrawsPanelsThenTheNetworkWithWidthTwo) {
    TempFolder folder;
    DesignState state;
    FrmOpening screen(state, SessionFilePath(folder.str()));
    const auto& ops = screen.surface().ops();
    const auto has = [&](const DrawOp& wanted) {
        return std::find(ops.begin(), ops.end(), wanted) != ops.end();
    };
    EXPECT_TRUE(has(DrawOp{.kind = DrawOp::Kind::FillBox,
                           .x1 = 3500,
                           .y1 = 2500,
                           .x2 = 5900,
                           .y2 = 4500,
                           .colour = RgbColour(0xEE, 0xFF, 0xFF)}));
    // The tube's envelope is the first arc, and the picture is drawn at width 2, then back to 1.
    const auto tube = std::find_if(ops.begin(), ops.end(),
                                   [](const DrawOp& op) { return op.kind == DrawOp::Kind::Arc; });
    ASSERT_NE(tube, ops.end());
    EXPECT_EQ(tube->radius, 190);
    EXPECT_EQ(tube->endAngle, 6.2);
    const auto widthTwo =
        std::find(ops.begin(), ops.end(), DrawOp{.kind = DrawOp::Kind::LineWidth, .width = 2});
    EXPECT_LT(widthTwo, tube);
    EXPECT_EQ(ops.back(), (DrawOp{.kind = DrawOp::Kind::LineWidth, .width = 1}));
}

TEST(FrmOpening, ReadsTheLastSessionAfterSettingPi) {
    TempFolder folder;
    const std::string path = SessionFilePath(folder.str());
    WriteBytes(path, "VARO last-session file\r\n11/15/2026\r\nFrequency: 7100000\r\n");
    DesignState state;
    FrmOpening screen(state, path);
    EXPECT_DOUBLE_EQ(state.pi, 4 * std::atan(1.0));
    EXPECT_EQ(state.frequency, 7100000);
    EXPECT_EQ(state.genMultiplier, 1);
}

TEST(FrmOpening, StartAndExitAreSignalledAndExitWritesNothing) {
    TempFolder folder;
    const std::string path = SessionFilePath(folder.str());
    const std::string before = "Frequency: 1\r\n";
    WriteBytes(path, before);
    DesignState state;
    FrmOpening screen(state, path);
    int started = 0;
    int exited = 0;
    QObject::connect(&screen, &FrmOpening::startRequested, [&] { ++started; });
    QObject::connect(&screen, &FrmOpening::exitRequested, [&] { ++exited; });
    QKeyEvent enterKey(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&screen, &enterKey);  // Enter presses Start
    EXPECT_EQ(started, 1);
    EXPECT_EQ(exited, 0);
    Find<QPushButton>(screen, "cmdExit")->click();
    EXPECT_EQ(exited, 1);
    EXPECT_EQ(ReadBytes(path), before);
}

}  // namespace
}  // namespace varo
