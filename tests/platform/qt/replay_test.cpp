#include "platform/qt/replay.h"
#include "platform/qt/surface_widget.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QLabel>
#include <vector>

namespace varo {
namespace {

// Edges blend as far as a one-pixel outline would cover; a kept aspect centres (x 33..167).
TEST(RenderSurface, FilledBoxScalesCoversItsEdgesAndKeepsItsAspect) {
    const QColor colour(0x12, 0x34, 0x56);
    const auto blended = [&](QColor c) {
        return c != Qt::white && c.red() >= colour.red() && c.green() >= colour.green() &&
               c.blue() >= colour.blue();
    };
    Surface surface(1200, 900);
    surface.FillBox(300, 300, 600, 450, RgbColour(0x12, 0x34, 0x56));
    const struct {
        QSize size;
        qreal ratio;
        SurfaceFit fit;
        QPoint centre;
        std::vector<QPoint> edges, white;  // in device pixels
    } cases[] = {
        {{240, 180}, 1, SurfaceFit::Stretch, {90, 75}, {}, {{50, 75}, {90, 100}}},
        {{120, 90}, 2, SurfaceFit::Stretch, {90, 75}, {}, {{50, 75}, {90, 100}}},
        {{80, 60}, 1, SurfaceFit::Stretch, {30, 25}, {{19, 25}, {40, 25}}, {{18, 25}, {41, 25}}},
        {{200, 100}, 1, SurfaceFit::KeepAspect, {83, 41}, {}, {{60, 41}, {102, 41}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.size.width());
        const QImage image = RenderSurface(surface, c.size, c.ratio, c.fit);
        ASSERT_EQ(image.size(), c.size * c.ratio);
        EXPECT_EQ(image.pixelColor(c.centre), colour);
        for (const QPoint& at : c.edges)
            EXPECT_TRUE(blended(image.pixelColor(at))) << at.x();
        for (const QPoint& at : c.white)
            EXPECT_EQ(image.pixelColor(at), Qt::white) << at.x();
    }
}

TEST(SurfaceWidget, PlacedControlsFollowThePicture) {
    const struct {
        SurfaceFit fit;
        QSize size;
        QRect geometry;
        int fontPixels;  // 12 points of 20 twips, at the picture's twips per pixel
    } cases[] = {
        {SurfaceFit::Stretch, {800, 600}, {160, 100, 200, 24}, 16},
        {SurfaceFit::Stretch, {1200, 450}, {240, 75, 300, 18}, 12},
        // 4:3 in a wide window: 600 x 450 from x 300.
        {SurfaceFit::KeepAspect, {1200, 450}, {420, 75, 150, 18}, 12},
    };
    for (const auto& c : cases) {
        SurfaceWidget widget(12000, 9000);
        widget.resize(c.size);
        widget.show();  // a hidden widget gets its resize events only when shown
        auto* label = new QLabel(QStringLiteral("x"), &widget);
        widget.Place(label, QRectF(2400, 1500, 3000, 360), 12);
        widget.SetFit(c.fit);
        EXPECT_EQ(label->geometry(), c.geometry) << c.size.width();
        EXPECT_EQ(label->font().pixelSize(), c.fontPixels) << c.size.width();
    }
}

}  // namespace
}  // namespace varo
