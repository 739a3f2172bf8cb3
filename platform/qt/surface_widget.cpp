#include "platform/qt/surface_widget.h"

#include <QPainter>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

#include "platform/qt/replay.h"

namespace varo {

SurfaceWidget::SurfaceWidget(float logicalWidth, float logicalHeight, QWidget* parent)
    : QWidget(parent), ownSurface_(logicalWidth, logicalHeight), surface_(&ownSurface_) {
    surface_->SetTextMeasure(&QtTextMeasure());
}

SurfaceWidget::SurfaceWidget(Surface& surface, QWidget* parent)
    : QWidget(parent), ownSurface_(surface.width(), surface.height()), surface_(&surface) {
    surface_->SetTextMeasure(&QtTextMeasure());
}

void SurfaceWidget::SetFit(SurfaceFit fit) {
    fit_ = fit;
    ApplyPlacements();
    update();
}

QRectF SurfaceWidget::PictureRect() const {
    return FittedRect(QSizeF(surface_->width(), surface_->height()), QRectF(rect()), fit_);
}

QRect SurfaceWidget::LogicalToWidget(const QRectF& logical) const {
    const QRectF picture = PictureRect();
    const qreal scaleX = picture.width() / surface_->width();
    const qreal scaleY = picture.height() / surface_->height();
    // Both edges are rounded, so neighbouring controls stay flush at any size.
    const int left = static_cast<int>(std::lround(picture.x() + logical.left() * scaleX));
    const int top = static_cast<int>(std::lround(picture.y() + logical.top() * scaleY));
    const int right = static_cast<int>(std::lround(picture.x() + logical.right() * scaleX));
    const int bottom = static_cast<int>(std::lround(picture.y() + logical.bottom() * scaleY));
    return QRect(left, top, right - left, bottom - top);
}

QPointF SurfaceWidget::WidgetToLogical(const QPointF& point) const {
    const QRectF picture = PictureRect();
    if (picture.isEmpty()) return {};
    return {(point.x() - picture.x()) * surface_->width() / picture.width(),
            (point.y() - picture.y()) * surface_->height() / picture.height()};
}

int SurfaceWidget::ScaledFontPixels(qreal pointSize) const {
    const qreal logicalUnits = pointSize * kUnitsPerPoint;
    // By the height, unless a stretched picture is narrower than its shape: then by the width,
    // so that a caption still fits the control laid out for it.
    const QRectF picture = PictureRect();
    const qreal scale =
        std::min(picture.height() / surface_->height(), picture.width() / surface_->width());
    return std::max(1, static_cast<int>(std::lround(logicalUnits * scale)));
}

void SurfaceWidget::Place(QWidget* control, const QRectF& logical, qreal pointSize) {
    if (control == nullptr) return;
    if (control->parentWidget() != this) control->setParent(this);
    auto found = std::find_if(placed_.begin(), placed_.end(),
                              [control](const PlacedControl& p) { return p.control == control; });
    if (found == placed_.end()) {
        placed_.push_back(PlacedControl{control, logical, pointSize});
        found = std::prev(placed_.end());
    } else {
        *found = PlacedControl{control, logical, pointSize};
    }
    ApplyPlacement(*found);
}

void SurfaceWidget::ApplyPlacement(const PlacedControl& placed) const {
    if (placed.control.isNull()) return;
    placed.control->setGeometry(LogicalToWidget(placed.logical));
    if (placed.pointSize > 0) {
        QFont font = placed.control->font();
        font.setPixelSize(ScaledFontPixels(placed.pointSize));
        placed.control->setFont(font);
    }
}

void SurfaceWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    ReplaySurface(*surface_, painter, QRectF(rect()), fit_);
}

void SurfaceWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ApplyPlacements();
}

void SurfaceWidget::ApplyPlacements() {
    std::erase_if(placed_, [](const PlacedControl& p) { return p.control.isNull(); });
    for (const PlacedControl& placed : placed_)
        ApplyPlacement(placed);
}

}  // namespace varo
