#pragma once

#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QSize>

#include "platform/surface.h"

namespace varo {

// The font a surface starts with, until its first Font operation.
inline constexpr const char* kDefaultSurfaceFont = "Arial";
inline constexpr float kDefaultSurfacePointSize = 8.0f;

// 0xBBGGRR as a Qt colour.
QColor ToQColor(Colour colour);

// Replays the display list with the surface's logical space stretched onto `target` (in the
// painter's current coordinates). The painter's state is left as it was found.
void ReplaySurface(const Surface& surface, QPainter& painter, const QRectF& target);

// The surface replayed onto a white image of `size` device-independent pixels.
QImage RenderSurface(const Surface& surface, QSize size, qreal devicePixelRatio = 1);

}  // namespace varo
