#include "platform/qt/surface_widget.h"

#include <gtest/gtest.h>

#include <QLabel>

namespace varo {
namespace {

TEST(SurfaceWidget, PlacedControlsFollowTheWindowSize) {
    SurfaceWidget widget(12000, 9000);
    widget.resize(800, 600);
    widget.show();  // a hidden widget gets its resize events only when shown
    auto* label = new QLabel(QStringLiteral("x"), &widget);
    widget.Place(label, QRectF(2400, 1500, 3000, 360), 12);
    EXPECT_EQ(label->geometry(), QRect(160, 100, 200, 24));
    EXPECT_EQ(label->font().pixelSize(), 16);  // 12 points of 20 twips at 15 twips a pixel

    widget.resize(1600, 1200);
    EXPECT_EQ(label->geometry(), QRect(320, 200, 400, 48));
    EXPECT_EQ(label->font().pixelSize(), 32);
}

TEST(SurfaceWidget, LogicalRectanglesStretchWithTheWidget) {
    SurfaceWidget widget(12000, 9000);
    widget.resize(1200, 450);
    EXPECT_EQ(widget.LogicalToWidget(QRectF(0, 0, 12000, 9000)), QRect(0, 0, 1200, 450));
    EXPECT_EQ(widget.LogicalToWidget(QRectF(6000, 4500, 600, 900)), QRect(600, 225, 60, 45));
}

TEST(SurfaceWidget, DrawsASurfaceOwnedElsewhere) {
    Surface shared(100, 100);
    SurfaceWidget widget(shared);
    shared.FillBox(0, 0, 100, 100, kRed);
    widget.resize(20, 20);
    const QImage image = widget.grab().toImage();
    EXPECT_EQ(image.pixelColor(10, 10), QColor(255, 0, 0));
}

}  // namespace
}  // namespace varo
