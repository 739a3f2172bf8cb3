#include "model/pictures/response_plot.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "core/numtext.h"

namespace varo {

namespace {

// Pen width of a saved curve, in layout pixels.
constexpr float kOverlayPenWidth = 2;

// NaN goes to the high end, so a broken dB value sits on the bottom edge like any value below
// the floor.
float ClampedToSingle(double value, float low, float high) {
    if (std::isnan(value)) return high;
    return static_cast<float>(
        std::clamp(value, static_cast<double>(low), static_cast<double>(high)));
}

std::string Trimmed(std::string text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    const auto last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}

SurfaceFont LabelFont(const PlotLabelStyle& labels, float pointSize) {
    return SurfaceFont{labels.font, pointSize};
}

void UseFont(Surface& surface, const SurfaceFont& font) {
    if (surface.font() != font) surface.SetFont(font.family, font.pointSize, font.bold);
}

struct GridLabel {
    std::string text;
    float lineX;
    float pointSize;
    float width;
    float centre;
};

// The distance to the nearer neighbouring line: the most a centred label may take.
float RoomAround(const std::vector<float>& xs, std::size_t i, float plotWidth) {
    float room = plotWidth;
    if (i > 0) room = std::min(room, xs[i] - xs[i - 1]);
    if (i + 1 < xs.size()) room = std::min(room, xs[i + 1] - xs[i]);
    return room;
}

// Towards the top of a decade the lines crowd together: every line keeps its label, set
// smaller where the room between its neighbours is short.
GridLabel SizedLabel(const Surface& surface, const PlotLabelStyle& style, std::string text,
                     float lineX, float room) {
    const float fullWidth = surface.MeasureText(LabelFont(style, style.pointSize), text).width;
    float pointSize = style.pointSize;
    if (fullWidth > 0 && fullWidth > room - style.gap)
        pointSize =
            std::max(style.smallestPointSize, style.pointSize * (room - style.gap) / fullWidth);
    const float width = surface.MeasureText(LabelFont(style, pointSize), text).width;
    return GridLabel{std::move(text), lineX, pointSize, width, lineX};
}

// Labels still too wide for their room are moved apart: each run of labels that would touch is
// laid side by side, a gap between each, and centred where it strays least from its lines.
void SpreadApart(std::vector<GridLabel>& labels, float gap) {
    struct Run {
        std::size_t first, last;
        double width;
        double leftSum;  // the left edge each member would give the run, summed
    };
    const auto left = [](const Run& run) { return run.leftSum / double(run.last - run.first + 1); };
    std::vector<Run> runs;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        runs.push_back({i, i, labels[i].width, labels[i].lineX - labels[i].width / 2.0});
        while (runs.size() > 1) {
            Run& before = runs[runs.size() - 2];
            const Run& after = runs.back();
            if (left(before) + before.width + gap <= left(after)) break;
            const double shift = before.width + gap;
            before.leftSum += after.leftSum - shift * double(after.last - after.first + 1);
            before.width += gap + after.width;
            before.last = after.last;
            runs.pop_back();
        }
    }
    for (const Run& run : runs) {
        double at = left(run);
        for (std::size_t i = run.first; i <= run.last; ++i) {
            labels[i].centre = static_cast<float>(at + labels[i].width / 2.0);
            at += labels[i].width + gap;
        }
    }
}

struct PlotPoint {
    float x, y;
};

// Points 0 to lastIndex (at most the sweep's last), each joined to the one before; the first is
// handed to `markFirst` before any line is drawn.
template <typename PointAt, typename MarkFirst>
void JoinPoints(Surface& surface, int lastIndex, Colour colour, PointAt at, MarkFirst markFirst) {
    PlotPoint previous{};
    for (int i = 0; i <= std::min(lastIndex, kSweepPoints - 1); ++i) {
        const PlotPoint point = at(i);
        if (i == 0)
            markFirst(point);
        else
            surface.Line(previous.x, previous.y, point.x, point.y, colour);
        previous = point;
    }
}

// Labels set smaller share the baseline of the full-sized ones.
void DrawGridLabel(Surface& surface, const PlotLabelStyle& style, const GridLabel& label,
                   float baseline) {
    UseFont(surface, LabelFont(style, label.pointSize));
    const float left = label.centre - label.width / 2;
    surface.Line(left, style.frequencyRowY, left + label.width, style.frequencyRowY, kWhite);
    surface.Text(label.centre, baseline, label.text, kAlignBaselineCentre);
}

}  // namespace

std::optional<PlotScale> PlotScale::From(const PlotArea& area, float sweepStart, float sweepStop,
                                         float floorDb, float topDb) {
    if (!(sweepStart > 0) || !(sweepStop > 0)) return std::nullopt;
    const double logStart = std::log(static_cast<double>(sweepStart));
    const double logSpan = std::log(static_cast<double>(sweepStop)) - logStart;
    const double dbSpan = static_cast<double>(topDb) - floorDb;
    if (!std::isfinite(logSpan) || logSpan == 0) return std::nullopt;
    if (!std::isfinite(dbSpan) || dbSpan == 0) return std::nullopt;
    return PlotScale(area, logStart, logSpan, topDb, dbSpan);
}

std::optional<PlotScale> PlotScale::From(const PlotArea& area, const DesignState& state) {
    return From(area, state.sweepStart, state.sweepStop, state.plotFloorDb);
}

double PlotScale::MappedX(float frequency) const {
    return (std::log(static_cast<double>(frequency)) - logStart_) * area_.width() / logSpan_ +
           area_.left;
}

float PlotScale::X(float frequency) const {
    if (!(frequency > 0)) return area_.left;
    return ClampedToSingle(MappedX(frequency), area_.left, area_.right);
}

float PlotScale::UnclampedX(float frequency) const {
    if (!(frequency > 0)) return area_.left;
    const double x = MappedX(frequency);
    return std::isfinite(x) ? static_cast<float>(x) : ClampedToSingle(x, area_.left, area_.right);
}

float PlotScale::Y(float db) const {
    const double y = area_.top - (static_cast<double>(db) - topDb_) / dbSpan_ * area_.height();
    return ClampedToSingle(y, area_.top, area_.bottom);
}

void DrawPlotFrame(Surface& surface, const PlotFrame& frame) {
    const PlotArea& a = frame.area;
    surface.FillBox(a.left, a.top - frame.fillOverhang, a.right, a.bottom + frame.fillOverhang,
                    kPlotBackground);
    surface.OutlineBox(a.left, a.top - frame.outlineOverhang, a.right,
                       a.bottom + frame.outlineOverhang, kPlotOutline);
}

void DrawDbGrid(Surface& surface, const PlotFrame& frame, int divisions, float floorDb) {
    if (divisions <= 0) return;
    const PlotArea& a = frame.area;
    const float step = static_cast<float>(static_cast<double>(a.height()) / divisions - 1);
    // Thousands of divisions would leave no visible gap between lines (and a step below a unit
    // could stall the loop on single-precision rounding).
    if (!(step >= 1)) return;
    const PlotLabelStyle& style = frame.labels;
    surface.SetFont(style.font, style.pointSize);
    int division = 0;
    for (float y = a.top; y <= a.bottom; y += step, ++division) {
        surface.Line(a.left, y, a.right, y, kPlotGrid);
        const float value = static_cast<float>(static_cast<double>(division) / divisions * floorDb);
        surface.Text(a.left - style.gap, y, Trimmed(FormatEng(value)), kAlignMiddleRight);
    }
}

void DrawFrequencyGrid(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
                       const std::vector<float>& gridFrequencies) {
    const PlotArea& a = frame.area;
    const PlotLabelStyle& style = frame.labels;
    std::vector<float> xs;
    for (float frequency : gridFrequencies)
        xs.push_back(scale.X(frequency));
    std::vector<GridLabel> labels;
    for (std::size_t i = 0; i < xs.size(); ++i)
        labels.push_back(SizedLabel(surface, style, Trimmed(FormatHz(gridFrequencies[i])), xs[i],
                                    RoomAround(xs, i, a.width())));
    SpreadApart(labels, style.gap);
    const SurfaceFont fullSize = LabelFont(style, style.pointSize);
    const float baseline = style.frequencyRowY + surface.MeasureText(fullSize, "0").ascent;
    surface.SetFont(fullSize.family, fullSize.pointSize);
    for (const GridLabel& label : labels) {
        surface.Line(label.lineX, a.top, label.lineX, a.bottom, kPlotGrid);
        DrawGridLabel(surface, style, label, baseline);
    }
    UseFont(surface, fullSize);
}

void DrawCurve(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
               const DesignState& state, const std::array<float, kSweepPoints>& values,
               const CurveStyle& style) {
    const auto at = [&](int i) {
        const float f = state.sweepFrequency[i];
        return PlotPoint{frame.clampCurveX ? scale.X(f) : scale.UnclampedX(f), scale.Y(values[i])};
    };
    const auto markFirst = [&](PlotPoint first) {
        if (style.firstDot) surface.Point(first.x, first.y, 1, *style.firstDot);
    };
    JoinPoints(surface, state.sweepIntervals, style.line, at, markFirst);
}

void DrawResponseCurves(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
                        const DesignState& state) {
    DrawCurve(surface, frame, scale, state, state.sweepTransmission, frame.transmission);
    DrawCurve(surface, frame, scale, state, state.sweepReturn, frame.returnLoss);
}

void MarkPlotPoint(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
                   float frequency, float db) {
    const float x = scale.X(frequency);
    const float y = scale.Y(db);
    surface.Point(x, y, frame.marker.outerWidth, frame.marker.outer);
    surface.Point(x, y, frame.marker.innerWidth, frame.marker.inner);
}

void DrawOverlay(Surface& surface, const PlotFrame& frame, const DesignState& state,
                 const std::array<float, kSweepPoints>& values, int lastIndex, float topDb,
                 float floorDb, int curve) {
    const auto scale =
        PlotScale::From(frame.area, state.sweepStart, state.sweepStop, floorDb, topDb);
    if (!scale) return;
    const Colour colour = curve == 0 ? kOverlayTransmission : kOverlayReturn;
    const auto at = [&](int i) {
        return PlotPoint{scale->X(state.sweepFrequency[i]), scale->Y(values[i])};
    };
    // The first point is a line of no length: a dot in the pen's width.
    const auto markFirst = [&](PlotPoint first) {
        surface.Line(first.x, first.y, first.x, first.y, colour);
    };
    surface.SetLineWidth(kOverlayPenWidth);
    JoinPoints(surface, lastIndex, colour, at, markFirst);
    surface.SetLineWidth(1);
}

}  // namespace varo
