#include "platform/qt/replay.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

namespace varo {
namespace {

bool IsWhite(const QImage& image, int x, int y) {
    return image.pixelColor(x, y) == Qt::white;
}

// Pixels in column x, rows top..bottom, that are noticeably darker than white.
int InkInColumn(const QImage& image, int x, int top, int bottom) {
    int count = 0;
    for (int y = top; y <= bottom; ++y)
        if (image.pixelColor(x, y).lightness() < 200) ++count;
    return count;
}

TEST(RenderSurface, FilledBoxScalesWithTheImage) {
    Surface surface(1200, 900);
    surface.FillBox(300, 300, 600, 450, kRed);
    struct Case {
        QSize size;
        QPoint inside, leftOf, below;
    };
    for (const Case& c : {Case{{120, 90}, {45, 37}, {25, 37}, {45, 50}},
                          Case{{240, 180}, {90, 75}, {50, 75}, {90, 100}}}) {
        const QImage image = RenderSurface(surface, c.size);
        ASSERT_EQ(image.size(), c.size);
        EXPECT_EQ(image.pixelColor(c.inside), QColor(255, 0, 0)) << c.size.width();
        EXPECT_TRUE(IsWhite(image, c.leftOf.x(), c.leftOf.y())) << c.size.width();
        EXPECT_TRUE(IsWhite(image, c.below.x(), c.below.y())) << c.size.width();
    }
}

TEST(RenderSurface, ColoursAreBlueGreenRed) {
    Surface surface(1200, 900);
    surface.FillBox(0, 0, 1200, 900, RgbColour(0x12, 0x34, 0x56));
    EXPECT_EQ(RenderSurface(surface, {80, 60}).pixelColor(40, 30), QColor(0x12, 0x34, 0x56));
    EXPECT_EQ(ToQColor(0x0000FF), QColor(255, 0, 0));
    EXPECT_EQ(ToQColor(0xFF0000), QColor(0, 0, 255));
}

TEST(RenderSurface, FillIncludesItsEdges) {
    Surface surface(1200, 900);
    surface.FillBox(300, 300, 600, 600, kRed);
    const QImage image = RenderSurface(surface, {80, 60});  // one pixel per 15 units
    // The edge pixels at 300 and 600 are covered as far as a one-pixel outline would cover
    // them; the pixels beyond stay white.
    for (int x : {19, 40}) {
        EXPECT_FALSE(IsWhite(image, x, 30)) << x;
        EXPECT_EQ(image.pixelColor(x, 30).red(), 255) << x;
    }
    EXPECT_TRUE(IsWhite(image, 18, 30));
    EXPECT_TRUE(IsWhite(image, 41, 30));
}

TEST(RenderSurface, WiderLinesAreThicker) {
    Surface surface(1200, 900);
    surface.Line(100, 300, 1100, 300, kBlack);
    surface.SetLineWidth(3);
    surface.Line(100, 600, 1100, 600, kBlack);
    const QImage image = RenderSurface(surface, {240, 180});  // 2 pixels per layout pixel
    const int thin = InkInColumn(image, 120, 50, 70);
    const int thick = InkInColumn(image, 120, 110, 130);
    EXPECT_GE(thin, 1);
    EXPECT_GE(thick, thin + 3);
}

// A line drawn in pieces looks like the same line drawn at once: no darker joints.
TEST(RenderSurface, PiecewiseLinesMatchWholeLines) {
    Surface pieces(1200, 900);
    Surface whole(1200, 900);
    for (Surface* surface : {&pieces, &whole})
        surface->SetLineWidth(2);
    for (float x = 100; x < 1100; x += 160) {
        pieces.Line(x, 301, x + 160, 301, kBlack);
        pieces.Line(x + 160, 707, x, 707, kBlack);
    }
    pieces.Line(620, 100, 620, 400, kBlack);
    pieces.Line(620, 350, 620, 800, kBlack);
    whole.Line(100, 301, 1220, 301, kBlack);
    whole.Line(100, 707, 1220, 707, kBlack);
    whole.Line(620, 100, 620, 800, kBlack);
    EXPECT_EQ(RenderSurface(pieces, {173, 131}), RenderSurface(whole, {173, 131}));
}

TEST(RenderSurface, ArcFromZeroToPiIsTheUpperHalf) {
    Surface surface(1200, 900);
    surface.SetLineWidth(2);
    surface.Arc(600, 450, 300, 0, 3.14159265358979, kBlack);
    const QImage image = RenderSurface(surface, {120, 90});
    EXPECT_GT(InkInColumn(image, 60, 10, 44), 0);  // above the centre
    EXPECT_EQ(InkInColumn(image, 60, 46, 89), 0);  // below it
}

TEST(RenderSurface, PointIsADotOfItsWidth) {
    Surface surface(1200, 900);
    surface.Point(600, 450, 8, kBlue);
    const QImage image = RenderSurface(surface, {80, 60});
    EXPECT_EQ(image.pixelColor(40, 30), QColor(0, 0, 255));
    EXPECT_TRUE(IsWhite(image, 40, 36));
}

TEST(RenderSurface, TextDrawsBelowAndRightOfItsPosition) {
    Surface surface(1200, 900);
    surface.SetFont("Arial", 12);
    surface.Text(300, 300, "VARO");
    const QImage image = RenderSurface(surface, {240, 180});
    int inkInside = 0;
    for (int x = 60; x < 140; ++x)
        inkInside += InkInColumn(image, x, 60, 110);
    EXPECT_GT(inkInside, 20);
    EXPECT_EQ(InkInColumn(image, 58, 0, 179), 0);  // nothing left of x 300
    int inkAbove = 0;
    for (int x = 0; x < 240; ++x)
        inkAbove += InkInColumn(image, x, 0, 58);
    EXPECT_EQ(inkAbove, 0);
}

TEST(RenderSurface, ClearLeavesAWhiteArea) {
    Surface surface(1200, 900);
    surface.FillBox(0, 0, 1200, 900, kRed);
    surface.Clear();
    const QImage image = RenderSurface(surface, {80, 60});
    EXPECT_TRUE(IsWhite(image, 40, 30));
}

TEST(RenderSurface, DevicePixelRatioKeepsThePictureSharp) {
    Surface surface(1200, 900);
    surface.FillBox(300, 300, 600, 450, kRed);
    const QImage image = RenderSurface(surface, {120, 90}, 2);
    EXPECT_EQ(image.size(), QSize(240, 180));
    EXPECT_EQ(image.devicePixelRatio(), 2);
    EXPECT_EQ(image.pixelColor(90, 75), QColor(255, 0, 0));
    EXPECT_TRUE(IsWhite(image, 50, 75));
}

}  // namespace
}  // namespace varo
