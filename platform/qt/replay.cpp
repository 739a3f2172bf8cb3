#include "platform/qt/replay.h"

#include <QFont>
#include <QFontMetricsF>
#include <QLineF>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QString>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>
#include <utility>
#include <vector>

namespace varo {

QColor ToQColor(Colour colour) {
    return QColor(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
                  static_cast<int>((colour >> 16) & 0xFF));
}

namespace {

// Fonts are sized in logical units, so text scales with the picture like the lines.
QFont ReplayFont(const SurfaceFont& font) {
    QFont qfont(QString::fromStdString(font.family));
    qfont.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pointSize * kUnitsPerPoint))));
    qfont.setBold(font.bold);
    qfont.setStyleHint(QFont::SansSerif);
    return qfont;
}

// The anchor box of an aligned text: wide and tall enough never to clip, with the text's (x, y)
// at the edge, centre or baseline that the alignment names.
QRectF AnchorBox(const DrawOp& op, QSizeF room, qreal ascent, int& flags) {
    qreal left = op.x1;
    qreal top = op.y1;
    switch (op.align.horizontal) {
        case HorizontalAlign::Left:
            flags |= Qt::AlignLeft;
            break;
        case HorizontalAlign::Centre:
            flags |= Qt::AlignHCenter;
            left -= room.width() / 2;
            break;
        case HorizontalAlign::Right:
            flags |= Qt::AlignRight;
            left -= room.width();
            break;
    }
    switch (op.align.vertical) {
        case VerticalAlign::Top:
            flags |= Qt::AlignTop;
            break;
        case VerticalAlign::Middle:
            flags |= Qt::AlignVCenter;
            top -= room.height() / 2;
            break;
        case VerticalAlign::Baseline:
            flags |= Qt::AlignTop;
            top -= ascent;
            break;
    }
    return QRectF(left, top, room.width(), room.height());
}

class ReplayTextMeasure final : public TextMeasure {
  public:
    TextExtent Measure(const SurfaceFont& font, std::string_view text) const override {
        const QFontMetricsF metrics(ReplayFont(font));
        const QString qtext = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
        return {static_cast<float>(metrics.horizontalAdvance(qtext)),
                static_cast<float>(metrics.height()), static_cast<float>(metrics.ascent())};
    }
};

// Joins axis-parallel segments that touch or overlap on the same line into one, so that a rail
// drawn piece by piece replays as one stroke: antialiased ends that meet would otherwise paint
// their shared edge pixels twice and leave darker dots along it.
std::vector<QLineF> MergeCollinear(const std::vector<QLineF>& lines) {
    struct Run {
        bool vertical;
        qreal level, from, to;
    };
    std::vector<Run> runs;
    std::vector<QLineF> merged;
    for (const QLineF& line : lines) {
        if (line.y1() == line.y2())
            runs.push_back(
                {false, line.y1(), std::min(line.x1(), line.x2()), std::max(line.x1(), line.x2())});
        else if (line.x1() == line.x2())
            runs.push_back(
                {true, line.x1(), std::min(line.y1(), line.y2()), std::max(line.y1(), line.y2())});
        else
            merged.push_back(line);
    }
    std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) {
        return std::tie(a.vertical, a.level, a.from) < std::tie(b.vertical, b.level, b.from);
    });
    const auto keep = [&merged](const Run& run) {
        merged.push_back(run.vertical ? QLineF(run.level, run.from, run.level, run.to)
                                      : QLineF(run.from, run.level, run.to, run.level));
    };
    for (std::size_t i = 0; i < runs.size(); ++i) {
        Run run = runs[i];
        while (i + 1 < runs.size() && runs[i + 1].vertical == run.vertical &&
               runs[i + 1].level == run.level && runs[i + 1].from <= run.to)
            run.to = std::max(run.to, runs[++i].to);
        keep(run);
    }
    return merged;
}

// Consecutive lines where each starts at the end of the one before, as polylines.
std::vector<QPolygonF> Chains(const std::vector<QLineF>& lines) {
    std::vector<QPolygonF> chains;
    for (const QLineF& line : lines) {
        if (!chains.empty() && chains.back().back() == line.p1())
            chains.back() << line.p2();
        else
            chains.push_back(QPolygonF{line.p1(), line.p2()});
    }
    return chains;
}

// How far a point lies from the segment a-b, squared, with coordinates scaled to device pixels.
qreal SquaredDeviceDistance(QPointF point, QPointF a, QPointF b, QPointF scale) {
    const QPointF p((point.x() - a.x()) * scale.x(), (point.y() - a.y()) * scale.y());
    const QPointF d((b.x() - a.x()) * scale.x(), (b.y() - a.y()) * scale.y());
    const qreal length2 = QPointF::dotProduct(d, d);
    const qreal t = length2 > 0 ? std::clamp(QPointF::dotProduct(p, d) / length2, 0.0, 1.0) : 0.0;
    const QPointF off = p - t * d;
    return QPointF::dotProduct(off, off);
}

// A swept curve has more points than the picture has pixels, and stroking them all costs more
// than painting everything else: keep only the points that move the line by more than a quarter
// of a device pixel (Douglas-Peucker, without recursion so no curve can exhaust the stack).
QPolygonF Simplified(const QPolygonF& points, QPointF devicePixelsPerUnit) {
    constexpr qreal kTolerance2 = 0.25 * 0.25;
    std::vector<bool> keep(static_cast<std::size_t>(points.size()), false);
    keep.front() = keep.back() = true;
    std::vector<std::pair<qsizetype, qsizetype>> spans{{0, points.size() - 1}};
    while (!spans.empty()) {
        const auto [first, last] = spans.back();
        spans.pop_back();
        qreal worst = kTolerance2;
        qsizetype at = -1;
        for (qsizetype i = first + 1; i < last; ++i) {
            const qreal d2 =
                SquaredDeviceDistance(points[i], points[first], points[last], devicePixelsPerUnit);
            if (d2 > worst) {
                worst = d2;
                at = i;
            }
        }
        if (at < 0) continue;
        keep[static_cast<std::size_t>(at)] = true;
        spans.push_back({first, at});
        spans.push_back({at, last});
    }
    QPolygonF kept;
    for (qsizetype i = 0; i < points.size(); ++i)
        if (keep[static_cast<std::size_t>(i)]) kept << points[i];
    return kept;
}

// Pen width and font as the display list sets them while it is replayed.
class Replayer {
  public:
    Replayer(const Surface& surface, QPainter& painter, const QRectF& target)
        : surface_(surface), painter_(painter), font_(ReplayFont(SurfaceFont{})) {
        const qreal scaleX = target.width() / surface.width();
        const qreal scaleY = target.height() / surface.height();
        // A line never gets thinner than one device-independent pixel, or it would fade away
        // on a small window.
        minimumWidth_ = 1.0 / std::max<qreal>(std::min(scaleX, scaleY), 1e-9);
        painter.setTransform(QTransform(scaleX, 0, 0, scaleY, target.x(), target.y()), true);
        const QTransform device = painter.deviceTransform();
        devicePixelsPerUnit_ =
            QPointF(std::hypot(device.m11(), device.m12()), std::hypot(device.m21(), device.m22()));
        painter.setClipRect(QRectF(0, 0, surface.width(), surface.height()), Qt::IntersectClip);
    }

    // Lines and arcs of one colour in a row are stroked as one path, so their joints are not
    // painted twice (which would leave darker dots along an antialiased rail).
    void Play(const DrawOp& op) {
        const bool stroke = op.kind == DrawOp::Kind::Line || op.kind == DrawOp::Kind::Arc;
        if (!stroke || op.colour != strokeColour_) Flush();
        switch (op.kind) {
            case DrawOp::Kind::Clear:
                painter_.fillRect(QRectF(0, 0, surface_.width(), surface_.height()), Qt::white);
                break;
            case DrawOp::Kind::FillBox:
                FillBox(op);
                break;
            case DrawOp::Kind::OutlineBox:
                painter_.setPen(MakePen(op.colour));
                painter_.setBrush(Qt::NoBrush);
                painter_.drawRect(BoxOf(op));
                break;
            case DrawOp::Kind::Line:
                lines_.emplace_back(op.x1, op.y1, op.x2, op.y2);
                strokeColour_ = op.colour;
                break;
            case DrawOp::Kind::Point:
                Dot(op);
                break;
            case DrawOp::Kind::Disc:
                Disc(op);
                break;
            case DrawOp::Kind::Arc:
                Arc(op);
                break;
            case DrawOp::Kind::Text:
                Text(op);
                break;
            case DrawOp::Kind::LineWidth:
                lineWidth_ = op.width;
                break;
            case DrawOp::Kind::Font:
                font_ = ReplayFont(SurfaceFont{op.text, op.pointSize, op.bold});
                break;
        }
    }

    void Flush() {
        if (lines_.empty() && strokes_.isEmpty()) return;
        std::vector<QLineF> singles;
        for (const QPolygonF& chain : Chains(lines_)) {
            if (chain.size() == 2)
                singles.emplace_back(chain[0], chain[1]);
            else
                strokes_.addPolygon(Simplified(chain, devicePixelsPerUnit_));
        }
        for (const QLineF& line : MergeCollinear(singles)) {
            strokes_.moveTo(line.p1());
            strokes_.lineTo(line.p2());
        }
        painter_.setPen(MakePen(strokeColour_));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawPath(strokes_);
        strokes_.clear();
        lines_.clear();
    }

  private:
    static QRectF BoxOf(const DrawOp& op) {
        return QRectF(QPointF(op.x1, op.y1), QPointF(op.x2, op.y2)).normalized();
    }

    QPen MakePen(Colour colour) const {
        QPen pen(ToQColor(colour), std::max<qreal>(lineWidth_ * kUnitsPerPixel, minimumWidth_));
        pen.setCapStyle(Qt::RoundCap);
        pen.setJoinStyle(Qt::RoundJoin);
        return pen;
    }

    // A filled box covers its edges: it reaches as far as a one-pixel outline of the same
    // corners would.
    void FillBox(const DrawOp& op) {
        const qreal half = kUnitsPerPixel / 2;
        painter_.fillRect(BoxOf(op).adjusted(-half, -half, half, half), ToQColor(op.colour));
    }

    void Dot(const DrawOp& op) {
        const qreal radius = std::max<qreal>(op.width * kUnitsPerPixel, minimumWidth_) / 2;
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(ToQColor(op.colour));
        painter_.drawEllipse(QPointF(op.x1, op.y1), radius, radius);
    }

    void Disc(const DrawOp& op) {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(ToQColor(op.colour));
        painter_.drawEllipse(QPointF(op.x1, op.y1), op.radius, op.radius);
    }

    void Arc(const DrawOp& op) {
        constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;
        const QRectF bounds(op.x1 - op.radius, op.y1 - op.radius, 2.0 * op.radius, 2.0 * op.radius);
        // Arcs that meet end to end (a coil's turns, the generator's wave) share one stroke, so
        // their joints are not painted twice; any other arc starts a stroke of its own, as one
        // path of many separate arcs (a chart's grid) paints several times slower.
        QPainterPath ends;
        ends.arcMoveTo(bounds, op.startAngle * kDegreesPerRadian);
        const QPointF start = ends.currentPosition();
        ends.arcMoveTo(bounds, op.endAngle * kDegreesPerRadian);
        const QPointF end = ends.currentPosition();
        if (!strokes_.isEmpty() && !Touches(start) && !Touches(end)) Flush();
        lastArcEnds_ = {start, end};
        strokes_.arcMoveTo(bounds, op.startAngle * kDegreesPerRadian);
        strokes_.arcTo(bounds, op.startAngle * kDegreesPerRadian,
                       (op.endAngle - op.startAngle) * kDegreesPerRadian);
        strokeColour_ = op.colour;
    }

    void Text(const DrawOp& op) {
        painter_.setPen(ToQColor(op.colour));
        painter_.setFont(font_);
        int flags = Qt::TextDontClip;
        const QRectF anchor = AnchorBox(op, QSizeF(surface_.width(), surface_.height()),
                                        QFontMetricsF(font_).ascent(), flags);
        painter_.drawText(anchor, flags, QString::fromStdString(op.text));
    }

    // Whether a point is an end of the last arc of the stroke being gathered.
    bool Touches(QPointF point) const {
        constexpr qreal kJoinedUnits = 0.5;
        return QLineF(point, lastArcEnds_.first).length() < kJoinedUnits ||
               QLineF(point, lastArcEnds_.second).length() < kJoinedUnits;
    }

    const Surface& surface_;
    QPainter& painter_;
    std::pair<QPointF, QPointF> lastArcEnds_;
    float lineWidth_ = 1;
    qreal minimumWidth_ = 0;
    QPointF devicePixelsPerUnit_;
    QFont font_;
    QPainterPath strokes_;  // arcs, then the merged lines
    std::vector<QLineF> lines_;
    Colour strokeColour_ = kBlack;
};

}  // namespace

QRectF FittedRect(QSizeF logicalSize, const QRectF& target, SurfaceFit fit) {
    if (fit == SurfaceFit::Stretch || logicalSize.isEmpty()) return target;
    const QSizeF fitted = logicalSize.scaled(target.size(), Qt::KeepAspectRatio);
    const QPointF corner(target.x() + (target.width() - fitted.width()) / 2,
                         target.y() + (target.height() - fitted.height()) / 2);
    return QRectF(corner, fitted);
}

void ReplaySurface(const Surface& surface, QPainter& painter, const QRectF& target,
                   SurfaceFit fit) {
    if (surface.width() <= 0 || surface.height() <= 0 || target.isEmpty()) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    Replayer replayer(surface, painter,
                      FittedRect(QSizeF(surface.width(), surface.height()), target, fit));
    for (const DrawOp& op : surface.ops())
        replayer.Play(op);
    replayer.Flush();
    painter.restore();
}

QImage RenderSurface(const Surface& surface, QSize size, qreal devicePixelRatio, SurfaceFit fit) {
    const qreal ratio = devicePixelRatio > 0 ? devicePixelRatio : 1;
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    ReplaySurface(surface, painter, QRectF(QPointF(0, 0), QSizeF(size)), fit);
    painter.end();
    return image;
}

const TextMeasure& QtTextMeasure() {
    static const ReplayTextMeasure measure;
    return measure;
}

}  // namespace varo
