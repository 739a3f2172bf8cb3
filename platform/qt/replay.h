#pragma once

#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QSize>

#include "platform/surface.h"

namespace varo {

// 0xBBGGRR as a Qt colour.
QColor ToQColor(Colour colour);

// How a surface's logical space is laid onto a target rectangle: stretched over all of it (a
// screen that fills its window), or as large as fits with its shape kept, centred (paper, and
// pictures that must not distort).
enum class SurfaceFit { Stretch, KeepAspect };

// The part of `target` that the logical space of `logicalSize` covers.
QRectF FittedRect(QSizeF logicalSize, const QRectF& target, SurfaceFit fit);

// Replays the display list onto `target` (in the painter's current coordinates). The painter's
// state is left as it was found.
void ReplaySurface(const Surface& surface, QPainter& painter, const QRectF& target,
                   SurfaceFit fit = SurfaceFit::Stretch);

// The surface replayed onto a white image of `size` device-independent pixels.
QImage RenderSurface(const Surface& surface, QSize size, qreal devicePixelRatio = 1,
                     SurfaceFit fit = SurfaceFit::Stretch);

// Measures text with the metrics of the font the replay sets it in. Needs a running
// QGuiApplication; the instance lives as long as the program.
const TextMeasure& QtTextMeasure();

}  // namespace varo
