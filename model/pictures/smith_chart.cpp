#include "model/pictures/smith_chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <string>

#include "model/fixed_text.h"

namespace varo {

namespace {

constexpr float kChartPoints = 8;
constexpr float kCaptionHeight = 300;
constexpr float kMargin = 60;
constexpr float kDiscRadius = 45;
constexpr float kCrossHalf = 55;
constexpr float kLabelGap = 90;
constexpr float kLoadDotRadius = 25;
constexpr float kCrowdedMarks = 200;   // marks closer than this share a label
constexpr double kOffRimSlack = 0.05;  // a pointer just beyond the rim still finds the trace
constexpr double kFullTurn = 2 * std::numbers::pi;

constexpr std::array<double, 5> kGridResistances{0.2, 0.5, 1, 2, 5};
constexpr std::array<double, 5> kGridReactances{0.2, 0.5, 1, 2, 5};
// In the order of LoadStress.
constexpr std::array<const char*, kLoadStresses> kStressLabels{"C1 V", "Cload V", "L1 A", "L2 A",
                                                               "loss"};

// A point of the reflection plane (unit circle = the chart's rim) on the surface.
struct Placer {
    SmithPlace place;
    float X(double gammaRe) const {
        return place.centreX + static_cast<float>(gammaRe) * place.radius;
    }
    float Y(double gammaIm) const {
        return place.centreY - static_cast<float>(gammaIm) * place.radius;
    }
    float Length(double gamma) const { return static_cast<float>(gamma) * place.radius; }
};

// From its leftmost point round: every grid circle starts somewhere else, so no two of them
// join into one stroke at Γ = 1 (a stroke of many joined circles is slow to paint).
void DrawFullCircle(Surface& surface, const Placer& at, double centreRe, double radius,
                    Colour colour) {
    surface.Arc(at.X(centreRe), at.Y(0), at.Length(radius), std::numbers::pi,
                std::numbers::pi + kFullTurn, colour);
}

// The circle of reactance x (normalised) has its centre at 1 + j/x and radius 1/|x|; inside the
// rim it runs from the rim's right end, Γ = 1, to where it meets the rim again,
// Γ = ((x² - 1) + 2jx) / (x² + 1). For x > 0 that is counter-clockwise from the meeting point to
// the bottom of the circle (3π/2); for x < 0, from the top of the circle (π/2) to the meeting
// point.
void DrawReactanceArc(Surface& surface, const Placer& at, double x) {
    const double meetRe = (x * x - 1) / (x * x + 1), meetIm = 2 * x / (x * x + 1);
    const double centreIm = 1 / x;
    double meetAngle = std::atan2(meetIm - centreIm, meetRe - 1);
    if (meetAngle < 0) meetAngle += kFullTurn;
    const double start = x > 0 ? meetAngle : std::numbers::pi / 2;
    const double end = x > 0 ? 1.5 * std::numbers::pi : meetAngle;
    surface.Arc(at.X(1), at.Y(centreIm), at.Length(std::fabs(centreIm)), start, end,
                kSmithGridColour);
}

void DrawGrid(Surface& surface, const Placer& at) {
    DrawFullCircle(surface, at, 0, 1, kSmithGridColour);
    surface.Line(at.X(-1), at.Y(0), at.X(1), at.Y(0), kSmithGridColour);
    // Resistance r: centre r / (1 + r), radius 1 / (1 + r). Each sits between an arc that ends
    // at Γ = 1 and one that starts there, which would otherwise join.
    for (std::size_t i = 0; i < kGridResistances.size(); ++i) {
        const double r = kGridResistances[i], x = kGridReactances[i];
        DrawReactanceArc(surface, at, x);
        DrawFullCircle(surface, at, r / (1 + r), 1 / (1 + r), kSmithGridColour);
        DrawReactanceArc(surface, at, -x);
    }
}

void DrawLoadMark(Surface& surface, float x, float y, bool matched) {
    if (matched) {
        surface.Disc(x, y, kDiscRadius, kMatchedLoadColour);
        return;
    }
    surface.Line(x - kCrossHalf, y - kCrossHalf, x + kCrossHalf, y + kCrossHalf,
                 kUnmatchedLoadColour);
    surface.Line(x - kCrossHalf, y + kCrossHalf, x + kCrossHalf, y - kCrossHalf,
                 kUnmatchedLoadColour);
}

// "C1 V, L1 A" for each load that is the worst of one stress or more.
std::map<int, std::string> WorstLabels(const LoadRange& range) {
    std::map<int, std::string> labels;
    for (int s = 0; s < kLoadStresses; ++s) {
        const int index = range.worst[s].index;
        if (index < 0 || index >= static_cast<int>(range.loads.size())) continue;
        std::string& label = labels[index];
        if (!label.empty()) label += ", ";
        label += kStressLabels[s];
    }
    return labels;
}

// Towards the chart's middle, so that a label by the rim stays on the chart.
void DrawLabel(Surface& surface, const SmithPlace& place, float x, float y,
               const std::string& label, Colour colour = kBlack) {
    const bool onLeft = x <= place.centreX;
    surface.Text(
        onLeft ? x + kLabelGap : x - kLabelGap, y, label,
        TextAlign{onLeft ? HorizontalAlign::Left : HorizontalAlign::Right, VerticalAlign::Middle},
        colour);
}

}  // namespace

// The chart with its caption below it, in the middle of the box.
SmithPlace SmithChartPlace(const ChartBox& box) {
    const float height = box.bottom - box.top;
    const float side = std::max(std::min(box.right - box.left, height - kCaptionHeight), 0.0f);
    const float top = box.top + (height - side - kCaptionHeight) / 2;
    return {(box.left + box.right) / 2, top + side / 2, std::max(side / 2 - kMargin, 0.0f)};
}

namespace {

// The grid and the caption under it, "normalised to 50 ohms" and what `more` adds.
Placer DrawFrame(Surface& surface, const ChartBox& box, double r0, const std::string& more = {}) {
    const Placer at{SmithChartPlace(box)};
    surface.SetFont(kDefaultSurfaceFont, kChartPoints);
    surface.SetLineWidth(1);
    DrawGrid(surface, at);
    surface.Text(at.place.centreX,
                 at.place.centreY + at.place.radius + kMargin + kCaptionHeight / 2,
                 std::string("normalised to ") + TrimmedText(r0, 2) + " ohms" + more,
                 TextAlign{HorizontalAlign::Centre, VerticalAlign::Middle});
    return at;
}

}  // namespace

void DrawSmithChart(Surface& surface, const ChartBox& box, const LoadRangeResult& result,
                    double r0) {
    const Placer at = DrawFrame(surface, box, r0);
    if (!(r0 > 0)) return;
    const LoadRangeRequest& request = result.request;
    if (request.kind == LoadRangeRequest::Kind::SwrCircle && request.swr >= 1)
        DrawFullCircle(surface, at, 0, (request.swr - 1) / (request.swr + 1), kSwrCircleColour);
    const std::vector<LoadCase>& loads = result.range.loads;
    for (const LoadCase& load : loads) {
        const Complex gamma = Reflection(load.zLoad, r0);
        DrawLoadMark(surface, at.X(gamma.re), at.Y(gamma.im), load.tuning.solvable);
    }
    for (const auto& [index, label] : WorstLabels(result.range)) {
        const Complex gamma = Reflection(loads[index].zLoad, r0);
        DrawLabel(surface, at.place, at.X(gamma.re), at.Y(gamma.im), label);
    }
}

namespace {

void DrawTrace(Surface& surface, const Placer& at, const std::vector<Complex>& gammas) {
    for (std::size_t i = 1; i < gammas.size(); ++i) {
        const Complex a = gammas[i - 1], b = gammas[i];
        if (IsFinite(a) && IsFinite(b))
            surface.Line(at.X(a.re), at.Y(a.im), at.X(b.re), at.Y(b.im), kInputTraceColour);
    }
}

// Harmonics often crowd by the rim's short-circuit end: a mark close to an earlier one adds its
// number to that one's label ("2, 3, 4") instead of writing over it.
void DrawHarmonics(Surface& surface, const Placer& at, const std::vector<InputPoint>& harmonics,
                   double fundamental) {
    struct Label {
        float x, y;
        std::string text;
    };
    std::vector<Label> labels;
    for (const InputPoint& harmonic : harmonics) {
        const Complex gamma = harmonic.gamma;
        const float x = at.X(gamma.re), y = at.Y(gamma.im);
        surface.Arc(x, y, kDiscRadius, 0, kFullTurn, kHarmonicPointColour);
        const std::string number = std::to_string(std::lround(harmonic.frequency / fundamental));
        const auto near = std::ranges::find_if(labels, [&](const Label& label) {
            return std::hypot(label.x - x, label.y - y) < kCrowdedMarks;
        });
        if (near != labels.end()) {
            near->text += ", " + number;
        } else {
            labels.push_back({x, y, number});
        }
    }
    for (const Label& label : labels)
        DrawLabel(surface, at.place, label.x, label.y, label.text, kHarmonicPointColour);
}

void DrawCursorPoint(Surface& surface, const Placer& at, Complex gamma) {
    const float x = at.X(gamma.re), y = at.Y(gamma.im);
    surface.Line(x - kCrossHalf, y, x + kCrossHalf, y, kCursorPointColour);
    surface.Line(x, y - kCrossHalf, x, y + kCrossHalf, kCursorPointColour);
}

}  // namespace

void DrawInputSmithChart(Surface& surface, const ChartBox& box, const InputView& view,
                         std::optional<std::size_t> cursorIndex) {
    const Placer at =
        DrawFrame(surface, box, view.referenceOhms,
                  view.c3AcrossLoad ? ", C3 across the load included" : std::string());
    DrawTrace(surface, at, view.sweepGamma);
    const Complex operating = view.operating.gamma;
    DrawFullCircle(surface, at, 0, std::sqrt(SquaredMagnitude(operating)), kSwrCircleColour);
    for (const InputPoint& load : view.loads)
        surface.Disc(at.X(load.gamma.re), at.Y(load.gamma.im), kLoadDotRadius, kMatchedLoadColour);
    DrawHarmonics(surface, at, view.harmonics, view.operating.frequency);
    surface.Disc(at.X(operating.re), at.Y(operating.im), kDiscRadius, kOperatingPointColour);
    if (cursorIndex && *cursorIndex < view.sweepGamma.size() &&
        IsFinite(view.sweepGamma[*cursorIndex]))
        DrawCursorPoint(surface, at, view.sweepGamma[*cursorIndex]);
}

std::optional<std::size_t> NearestSweptPoint(const ChartBox& box, const InputView& view, float x,
                                             float y) {
    const SmithPlace place = SmithChartPlace(box);
    if (!(place.radius > 0)) return std::nullopt;
    const double re = (x - place.centreX) / place.radius, im = (place.centreY - y) / place.radius;
    if (std::hypot(re, im) > 1 + kOffRimSlack) return std::nullopt;
    std::optional<std::size_t> nearest;
    double best = INFINITY;
    for (std::size_t i = 0; i < view.sweepGamma.size(); ++i) {
        const Complex gamma = view.sweepGamma[i];
        const double distance = std::hypot(gamma.re - re, gamma.im - im);
        if (distance < best) {
            best = distance;
            nearest = i;
        }
    }
    return nearest;
}

}  // namespace varo
