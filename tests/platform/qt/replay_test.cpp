#include "platform/qt/replay.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <vector>

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

// One box, 300..600 x 300..450 of 1200 x 900 units: it scales with the image, a device pixel
// ratio doubles its pixels and not its size, its edges are covered (blended with white) as far as
// a one-pixel outline would cover them, and a kept aspect centres the picture (1200 x 900 on
// 200 x 100: x 33..167).
TEST(RenderSurface, FilledBoxScalesCoversItsEdgesAndKeepsItsAspect) {
    const QColor colour(0x12, 0x34, 0x56);
    const auto blended = [&](QColor c) {
        return c != Qt::white && c.red() >= colour.red() && c.green() >= colour.green() &&
               c.blue() >= colour.blue();
    };
    Surface surface(1200, 900);
    surface.FillBox(300, 300, 600, 450, RgbColour(0x12, 0x34, 0x56));
    struct Case {
        QSize size;
        qreal ratio;
        SurfaceFit fit;
        QPoint centre;
        std::vector<QPoint> edges, white;  // in device pixels
    };
    const Case cases[] = {
        {{240, 180}, 1, SurfaceFit::Stretch, {90, 75}, {}, {{50, 75}, {90, 100}}},
        {{120, 90}, 2, SurfaceFit::Stretch, {90, 75}, {}, {{50, 75}, {90, 100}}},
        {{80, 60}, 1, SurfaceFit::Stretch, {30, 25}, {{19, 25}, {40, 25}}, {{18, 25}, {41, 25}}},
        {{200, 100}, 1, SurfaceFit::KeepAspect, {83, 41}, {}, {{60, 41}, {102, 41}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.size.width());
        const QImage image = RenderSurface(surface, c.size, c.ratio, c.fit);
        ASSERT_EQ(image.size(), c.size * c.ratio);
        EXPECT_EQ(image.pixelColor(c.centre), colour);
        for (const QPoint& at : c.edges)
            EXPECT_TRUE(blended(image.pixelColor(at))) << at.x();
        for (const QPoint& at : c.white)
            EXPECT_TRUE(IsWhite(image, at.x(), at.y())) << at.x();
    }
    EXPECT_EQ(FittedRect({1200, 900}, QRectF(10, 20, 200, 100), SurfaceFit::KeepAspect),
              QRectF(10 + 100 - 200.0 / 3, 20, 400.0 / 3, 100));
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

// A swept curve has far more points than pixels; thinning them must keep a one-point notch.
TEST(RenderSurface, DenseCurveKeepsItsNarrowNotch) {
    Surface surface(1200, 900);
    constexpr int kPoints = 2001;
    const auto y = [](int i) {
        return i == 1000 ? 800.0f : 100.0f + 0.01f * static_cast<float>(i);
    };
    for (int i = 1; i < kPoints; ++i)
        surface.Line(0.6f * static_cast<float>(i - 1), y(i - 1), 0.6f * static_cast<float>(i), y(i),
                     kBlue);
    const QImage image = RenderSurface(surface, {120, 90});  // 10 units a pixel
    EXPECT_GT(InkInColumn(image, 60, 70, 79), 0);            // the notch's tip at Y 800
    EXPECT_GT(InkInColumn(image, 100, 10, 13), 0);           // the slope goes on past it
    EXPECT_EQ(InkInColumn(image, 100, 20, 89), 0);
}

TEST(RenderSurface, ArcFromZeroToPiIsTheUpperHalf) {
    Surface surface(1200, 900);
    surface.SetLineWidth(2);
    surface.Arc(600, 450, 300, 0, 3.14159265358979, kBlack);
    const QImage image = RenderSurface(surface, {120, 90});
    EXPECT_GT(InkInColumn(image, 60, 10, 44), 0);  // above the centre
    EXPECT_EQ(InkInColumn(image, 60, 46, 89), 0);  // below it
}

// A point is sized in layout pixels, a disc in logical units: both 80 units across here.
TEST(RenderSurface, PointsAndDiscsAreFilledCircles) {
    Surface point(1200, 900);
    point.Point(600, 450, 80 / kUnitsPerPixel, kBlue);
    Surface disc(1200, 900);
    disc.Disc(600, 450, 40, kBlue);
    for (const Surface* surface : {&point, &disc}) {
        const QImage image = RenderSurface(*surface, {120, 90});  // 10 units a pixel
        EXPECT_EQ(image.pixelColor(60, 45), QColor(0, 0, 255));
        EXPECT_EQ(image.pixelColor(61, 46), QColor(0, 0, 255));
        EXPECT_TRUE(IsWhite(image, 60, 50));
        EXPECT_TRUE(IsWhite(image, 64, 49));  // inside the square, outside the circle
    }
}

// The pixels a picture inks, as a rectangle in logical units at `unitsPerPixel`.
QRectF InkBounds(const QImage& image, qreal unitsPerPixel) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).lightness() < 200) ink |= QRect(x, y, 1, 1);
    return QRectF(ink.x() * unitsPerPixel, ink.y() * unitsPerPixel, ink.width() * unitsPerPixel,
                  ink.height() * unitsPerPixel);
}

// The replay places aligned text by its measured extent, and TextBoxes predicts that place.
TEST(RenderSurface, AlignedTextLandsInItsMeasuredBox) {
    struct Case {
        TextAlign align;
        qreal anchoredX, anchoredY;  // the ink's edge or centre that sits on (600, 450)
    };
    const Case cases[] = {
        {TextAlign{}, 0, 0},
        {kAlignBaselineCentre, 0.5, 1},  // capitals stand on the baseline
        {kAlignMiddleRight, 1, 0.5},
    };
    constexpr qreal kUnitsPerImagePixel = 5;
    constexpr qreal kSlack = 2 * kUnitsPerImagePixel;  // side bearings and antialiasing
    for (const Case& c : cases) {
        Surface surface(1200, 900);
        surface.SetFont("Arial", 12);
        surface.Text(600, 450, "VARO", c.align);
        const QRectF ink = InkBounds(RenderSurface(surface, {240, 180}), kUnitsPerImagePixel);
        const std::vector<TextBox> boxes = TextBoxes(surface, QtTextMeasure());
        ASSERT_EQ(boxes.size(), 1u);
        const TextBox& box = boxes[0];
        EXPECT_GE(ink.left(), box.left - kSlack);
        EXPECT_LE(ink.right(), box.right + kSlack);
        EXPECT_GE(ink.top(), box.top - kSlack);
        EXPECT_LE(ink.bottom(), box.bottom + kSlack);
        EXPECT_NEAR(ink.left() + c.anchoredX * ink.width(), 600, kSlack);
        if (c.anchoredY > 0) {
            EXPECT_NEAR(ink.top() + c.anchoredY * ink.height(), 450, kSlack);
        }
    }
}

}  // namespace
}  // namespace varo
