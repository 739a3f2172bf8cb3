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

void DrawFullCircle(Surface& surface, const Placer& at, double centreRe, double radius,
                    Colour colour) {
    surface.Arc(at.X(centreRe), at.Y(0), at.Length(radius), 0, kFullTurn, colour);
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
    // Resistance r: centre r / (1 + r), radius 1 / (1 + r).
    for (const double r : kGridResistances)
        DrawFullCircle(surface, at, r / (1 + r), 1 / (1 + r), kSmithGridColour);
    for (const double x : kGridReactances) {
        DrawReactanceArc(surface, at, x);
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
               const std::string& label) {
    const bool onLeft = x <= place.centreX;
    surface.Text(
        onLeft ? x + kLabelGap : x - kLabelGap, y, label,
        TextAlign{onLeft ? HorizontalAlign::Left : HorizontalAlign::Right, VerticalAlign::Middle});
}

}  // namespace

// The chart with its caption below it, in the middle of the box.
SmithPlace SmithChartPlace(const ChartBox& box) {
    const float height = box.bottom - box.top;
    const float side = std::max(std::min(box.right - box.left, height - kCaptionHeight), 0.0f);
    const float top = box.top + (height - side - kCaptionHeight) / 2;
    return {(box.left + box.right) / 2, top + side / 2, std::max(side / 2 - kMargin, 0.0f)};
}

void DrawSmithChart(Surface& surface, const ChartBox& box, const LoadRangeResult& result,
                    double r0) {
    const Placer at{SmithChartPlace(box)};
    surface.SetFont(kDefaultSurfaceFont, kChartPoints);
    surface.SetLineWidth(1);
    DrawGrid(surface, at);
    surface.Text(at.place.centreX,
                 at.place.centreY + at.place.radius + kMargin + kCaptionHeight / 2,
                 std::string("normalised to ") + TrimmedText(r0, 2) + " ohms",
                 TextAlign{HorizontalAlign::Centre, VerticalAlign::Middle});
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

}  // namespace varo
