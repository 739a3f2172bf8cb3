#pragma once

#include <QFont>
#include <QPointer>
#include <QRect>
#include <QRectF>
#include <QWidget>
#include <vector>

#include "platform/qt/replay.h"
#include "platform/surface.h"

namespace varo {

// A screen's background: its drawing surface laid over the widget (stretched over all of it, or
// with its shape kept), with the screen's controls placed on top at logical (twip) rectangles
// that scale the same way. Fonts of placed controls scale with the picture's height (its width
// where a stretched picture is narrower than its shape), so a resized window keeps its look. The
// surface measures its text with the replay's fonts.
class SurfaceWidget : public QWidget {
    Q_OBJECT

  public:
    // Draws its own surface of the given logical size.
    SurfaceWidget(float logicalWidth, float logicalHeight, QWidget* parent = nullptr);
    // Draws a surface owned elsewhere, which must outlive the widget.
    explicit SurfaceWidget(Surface& surface, QWidget* parent = nullptr);

    // Stretch (the default) or keep the surface's aspect ratio, centred in the widget.
    void SetFit(SurfaceFit fit);
    SurfaceFit fit() const { return fit_; }

    Surface& surface() { return *surface_; }
    const Surface& surface() const { return *surface_; }

    // A logical rectangle in this widget's pixels at its current size.
    QRect LogicalToWidget(const QRectF& logical) const;
    // A point of the widget in the surface's logical units (outside the picture where the
    // point is beside it).
    QPointF WidgetToLogical(const QPointF& point) const;

    // Keeps `control` (a child of this widget) at `logical`; a font size in points, as laid
    // out on the logical space (one point is kUnitsPerPoint units), scales with the height.
    // A size of 0 leaves the control's font alone.
    void Place(QWidget* control, const QRectF& logical, qreal pointSize = 0);

    // The pixel size a font of `pointSize` layout points has at the widget's current size.
    int ScaledFontPixels(qreal pointSize) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    struct PlacedControl {
        QPointer<QWidget> control;
        QRectF logical;
        qreal pointSize;
    };

    void ApplyPlacement(const PlacedControl& placed) const;
    void ApplyPlacements();
    QRectF PictureRect() const;

    Surface ownSurface_;
    Surface* surface_;
    SurfaceFit fit_ = SurfaceFit::Stretch;
    std::vector<PlacedControl> placed_;
};

}  // namespace varo
