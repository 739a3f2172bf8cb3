#include "platform/qt/surface_widget.h"

#include <gtest/gtest.h>

#include <QLabel>

namespace varo {
namespace {

TEST(SurfaceWidget, PlacedControlsFollowThePicture) {
    struct Case {
        SurfaceFit fit;
        QSize size;
        QRect geometry;
        int fontPixels;  // 12 points of 20 twips, at the picture's twips per pixel
    };
    const Case cases[] = {
        {SurfaceFit::Stretch, {800, 600}, {160, 100, 200, 24}, 16},
        {SurfaceFit::Stretch, {1200, 450}, {240, 75, 300, 18}, 12},
        // 4:3 in a wide window: 600 x 450 from x 300.
        {SurfaceFit::KeepAspect, {1200, 450}, {420, 75, 150, 18}, 12},
    };
    for (const Case& c : cases) {
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

TEST(SurfaceWidget, DrawsAndMeasuresASurfaceOwnedElsewhere) {
    Surface shared(100, 100);
    SurfaceWidget widget(shared);
    shared.FillBox(0, 0, 100, 100, kRed);
    widget.resize(20, 20);
    const QImage image = widget.grab().toImage();
    EXPECT_EQ(image.pixelColor(10, 10), QColor(255, 0, 0));
    // Its layout code sees the widths the replay will draw, not an average-glyph guess.
    EXPECT_EQ(shared.MeasureText("Wil").width, QtTextMeasure().Measure(SurfaceFont{}, "Wil").width);
    EXPECT_NE(shared.MeasureText("Wil").width,
              AverageGlyphMeasure().Measure(SurfaceFont{}, "Wil").width);
}

}  // namespace
}  // namespace varo
