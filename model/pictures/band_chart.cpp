#include "model/pictures/band_chart.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace varo {

namespace {

constexpr double kPico = 1e-12;
constexpr float kChartPoints = 8;
constexpr float kNameShare = 0.09f;   // of the width, for the band names
constexpr float kPanelShare = 0.34f;  // each capacitor panel
constexpr float kGapShare = 0.02f;
constexpr float kHeaderHeight = 300;
constexpr float kAxisHeight = 300;

// A logarithmic pF scale across a panel.
struct Scale {
    double low = 1, high = 1000;  // pF
    float left = 0, right = 0;

    float X(double picofarads) const {
        const double clamped = std::clamp(picofarads, low, high);
        return left +
               static_cast<float>(std::log(clamped / low) / std::log(high / low)) * (right - left);
    }
};

// The needed range of one capacitor in one band, pF, low to high; none where unknown.
struct Needed {
    bool known = false;
    double low = 0, high = 0;
};

Needed TuneNeeded(const BandResult& band) {
    if (!band.designed || !band.edges[0].solvable || !band.edges[1].solvable) return {};
    const auto [a, b] = std::minmax(band.edges[0].tune, band.edges[1].tune);
    return {true, a / kPico, b / kPico};
}

Needed LoadNeeded(const BandResult& band) {
    if (!band.designed || !band.edges[0].solvable || !band.edges[1].solvable) return {};
    const auto [a, b] = std::minmax(band.edges[0].load, band.edges[1].load);
    return {true, a / kPico, b / kPico};
}

// Wide enough for the capacitor's range and every band's need, a little beyond.
Scale ScaleFor(const CapacitorRange& range, const BandPlan& plan,
               Needed (*needed)(const BandResult&), float left, float right) {
    double low = range.min / kPico, high = range.max / kPico;
    for (const BandResult& band : plan.bands) {
        const Needed n = needed(band);
        if (!n.known) continue;
        low = std::min(low, n.low);
        high = std::max(high, n.high);
    }
    low = std::max(low / 1.25, 1.0);
    high = std::max(high * 1.25, low * 10);
    return {low, high, left, right};
}

// Ticks at 1, 2 and 5 of each decade, labelled below the panel where the label has room.
void DrawAxis(Surface& surface, const Scale& scale, float y) {
    surface.Line(scale.left, y, scale.right, y, kBlack);
    float labelledTo = -1e9f;
    for (double decade = std::pow(10, std::floor(std::log10(scale.low))); decade <= scale.high;
         decade *= 10) {
        for (const double step : {1.0, 2.0, 5.0}) {
            const double value = decade * step;
            if (value < scale.low || value > scale.high) continue;
            const float x = scale.X(value);
            surface.Line(x, y, x, y + 60, kBlack);
            const std::string label = FixedText(value, value < 1 ? 1 : 0);
            const float half = surface.MeasureText(label).width / 2;
            if (x - half < labelledTo + 60) continue;
            surface.Text(x, y + 80, label, TextAlign{HorizontalAlign::Centre, VerticalAlign::Top});
            labelledTo = x + half;
        }
    }
}

void DrawNeed(Surface& surface, const Scale& scale, const CapacitorRange& range,
              const Needed& needed, float top, float bottom) {
    const double min = range.min / kPico, max = range.max / kPico;
    // Inside the capacitor's range, then each part beyond an end.
    const double insideLow = std::max(needed.low, min), insideHigh = std::min(needed.high, max);
    if (insideLow <= insideHigh)
        surface.FillBox(scale.X(insideLow), top, scale.X(insideHigh), bottom, kReachedColour);
    if (needed.low < min)
        surface.FillBox(scale.X(needed.low), top, scale.X(std::min(needed.high, min)), bottom,
                        kShortColour);
    if (needed.high > max)
        surface.FillBox(scale.X(std::max(needed.low, max)), top, scale.X(needed.high), bottom,
                        kShortColour);
}

void DrawPanelRow(Surface& surface, const Scale& scale, const CapacitorRange& range,
                  const Needed& needed, float top, float height) {
    const float middle = top + height / 2;
    surface.FillBox(scale.X(range.min / kPico), middle - height * 0.3f, scale.X(range.max / kPico),
                    middle + height * 0.3f, kAvailableRangeColour);
    if (needed.known) {
        DrawNeed(surface, scale, range, needed, middle - height * 0.15f, middle + height * 0.15f);
    } else {
        surface.Text((scale.left + scale.right) / 2, middle, "no match",
                     TextAlign{HorizontalAlign::Centre, VerticalAlign::Middle}, kShortColour);
    }
}

std::string CoilsText(const BandResult& band) {
    if (!band.designed) return "no design";
    std::string text = FixedText(band.l1 * 1e6, 2) + " / " + FixedText(band.l2 * 1e6, 2);
    if (band.qRaised) text += "  Q " + FixedText(band.q, 1);
    return text;
}

}  // namespace

void DrawBandChart(Surface& surface, const ChartBox& box, const BandPlan& plan) {
    const BandPlanInputs& inputs = plan.inputs;
    surface.SetFont("Arial", kChartPoints);
    const float width = box.right - box.left;
    const float tuneLeft = box.left + width * kNameShare;
    const float tuneRight = tuneLeft + width * kPanelShare;
    const float loadLeft = tuneRight + width * kGapShare;
    const float loadRight = loadLeft + width * kPanelShare;
    const float coilsLeft = loadRight + width * kGapShare;
    const Scale tune = ScaleFor(inputs.tune, plan, TuneNeeded, tuneLeft, tuneRight);
    const Scale load = ScaleFor(inputs.load, plan, LoadNeeded, loadLeft, loadRight);

    const TextAlign headerAlign{HorizontalAlign::Left, VerticalAlign::Top};
    surface.Text(tuneLeft, box.top, "Tuning capacitor, pF", headerAlign);
    surface.Text(loadLeft, box.top, "Loading capacitance, pF", headerAlign);
    surface.Text(coilsLeft, box.top, "L1 / L2, uH", headerAlign);

    const float rowsTop = box.top + kHeaderHeight;
    const float rowsBottom = box.bottom - kAxisHeight;
    const float rowHeight =
        (rowsBottom - rowsTop) / static_cast<float>(std::max<std::size_t>(plan.bands.size(), 1));
    for (std::size_t i = 0; i < plan.bands.size(); ++i) {
        const BandResult& band = plan.bands[i];
        const float top = rowsTop + rowHeight * static_cast<float>(i);
        const float middle = top + rowHeight / 2;
        surface.Text(box.left, middle, band.band.name,
                     TextAlign{HorizontalAlign::Left, VerticalAlign::Middle},
                     band.feasible() ? kBlack : kShortColour);
        DrawPanelRow(surface, tune, inputs.tune, TuneNeeded(band), top, rowHeight);
        DrawPanelRow(surface, load, inputs.load, LoadNeeded(band), top, rowHeight);
        surface.Text(coilsLeft, middle, CoilsText(band),
                     TextAlign{HorizontalAlign::Left, VerticalAlign::Middle});
    }
    DrawAxis(surface, tune, rowsBottom + 40);
    DrawAxis(surface, load, rowsBottom + 40);
}

}  // namespace varo
