#include "screens/design/small_plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"

namespace varo {

namespace {

constexpr float kPlotWidth = kSmallPlotRight - kSmallPlotLeft;
constexpr float kPlotHeight = kSmallPlotBottom - kSmallPlotTop;
// The frame reaches a little above and below the plot area so the 0 dB and floor lines show.
constexpr float kFrameOverhang = 15;

constexpr std::string_view kLabelFont = "Arial";
constexpr float kLabelPointSize = 8;
constexpr float kLabelHeight = kLabelPointSize * kUnitsPerPoint;
constexpr float kLabelGap = 40;

constexpr int kHarmonicCount = 5;
constexpr int kMarkedHarmonics = 3;
constexpr std::array<std::string_view, kHarmonicCount> kHarmonicNames = {"Fund", "2nd", "3rd",
                                                                         "4th", "5th"};
constexpr float kHarmonicNameX = 8700;
constexpr float kHarmonicFrequencyX = 9100;
constexpr float kHarmonicTransmissionX = 9900;
constexpr float kHarmonicImpedanceX = 10800;
constexpr float kMarkerRingWidth = 8;
constexpr float kMarkerCentreWidth = 6;

// The drawing code cannot measure text; an average Arial glyph is a little over half an em wide.
float EstimatedTextWidth(std::string_view text, float pointSize = kLabelPointSize) {
    return static_cast<float>(text.size()) * pointSize * kUnitsPerPoint * 0.6f;
}

// The width a grid label may take: the distance to the nearer neighbouring line, less a gap.
float RoomAround(const std::vector<float>& xs, std::size_t i) {
    float room = kPlotWidth;
    if (i > 0) room = std::min(room, xs[i] - xs[i - 1]);
    if (i + 1 < xs.size()) room = std::min(room, xs[i + 1] - xs[i]);
    return room - kLabelGap;
}

float LabelPointSizeToFit(std::string_view label, float room) {
    constexpr float kSmallestPointSize = 5.5f;
    const float fitting = kLabelPointSize * room / EstimatedTextWidth(label);
    return std::clamp(fitting, kSmallestPointSize, kLabelPointSize);
}

std::string Trimmed(std::string text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    const auto last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}

// NaN goes to the high end, so a broken dB value sits on the bottom edge like any value below
// the floor.
float ClampedToSingle(double value, float low, float high) {
    if (std::isnan(value)) return high;
    return static_cast<float>(
        std::clamp(value, static_cast<double>(low), static_cast<double>(high)));
}

void UseLabelFont(Surface& surface) {
    surface.SetFont(std::string(kLabelFont), kLabelPointSize);
}

void DrawCurve(Surface& surface, const SmallPlotScale& scale, const DesignState& state,
               const std::array<float, kSweepPoints>& values, Colour colour) {
    const int lastPoint = std::min<int>(state.sweepIntervals, kSweepPoints - 1);
    float previousX = 0;
    float previousY = 0;
    for (int i = 0; i <= lastPoint; ++i) {
        const float x = scale.X(state.sweepFrequency[i]);
        const float y = scale.Y(values[i]);
        if (i > 0) surface.Line(previousX, previousY, x, y, colour);
        previousX = x;
        previousY = y;
    }
}

void DrawHarmonicHeaders(Surface& surface) {
    surface.Text(8800, kHarmonicHeaderY, "Frequency:");
    surface.Text(10000, kHarmonicHeaderY, "Trans.:");
    surface.Text(10900, kHarmonicHeaderY, "Zin:");
}

void MarkHarmonic(Surface& surface, const std::optional<SmallPlotScale>& scale, float frequency,
                  float transmissionDb) {
    if (!scale) return;
    const float x = scale->X(frequency);
    const float y = scale->Y(transmissionDb);
    surface.Point(x, y, kMarkerRingWidth, kBlue);
    surface.Point(x, y, kMarkerCentreWidth, kWhite);
}

void PrintHarmonicRow(Surface& surface, int harmonic, float frequency, const LadderResult& result) {
    const float y = kHarmonicHeaderY + kHarmonicRowStep * static_cast<float>(harmonic);
    surface.Text(kHarmonicNameX, y, std::string(kHarmonicNames[harmonic - 1]));
    surface.Text(kHarmonicFrequencyX, y, FormatHz(frequency));
    surface.Text(kHarmonicTransmissionX, y, FormatNumber(result.transmissionDb) + " dB");
    surface.Text(kHarmonicImpedanceX, y, PrintForm(result.zMagnitude));
}

}  // namespace

std::optional<SmallPlotScale> SmallPlotScale::From(const DesignState& state) {
    if (!(state.sweepStart > 0) || !(state.sweepStop > 0)) return std::nullopt;
    const double logStart = std::log(static_cast<double>(state.sweepStart));
    const double logSpan = std::log(static_cast<double>(state.sweepStop)) - logStart;
    const double floorDb = state.plotFloorDb;
    if (!std::isfinite(logSpan) || logSpan == 0) return std::nullopt;
    if (!std::isfinite(floorDb) || floorDb == 0) return std::nullopt;
    return SmallPlotScale(logStart, logSpan, floorDb);
}

float SmallPlotScale::X(float frequency) const {
    if (!(frequency > 0)) return kSmallPlotLeft;
    const double x =
        (std::log(static_cast<double>(frequency)) - logStart_) * kPlotWidth / logSpan_ +
        kSmallPlotLeft;
    return ClampedToSingle(x, kSmallPlotLeft, kSmallPlotRight);
}

float SmallPlotScale::Y(float db) const {
    const double y = kSmallPlotTop - (static_cast<double>(db) / -floorDb_) * kPlotHeight;
    return ClampedToSingle(y, kSmallPlotTop, kSmallPlotBottom);
}

void DrawSmallPlotFrame(Surface& surface) {
    const float top = kSmallPlotTop - kFrameOverhang;
    const float bottom = kSmallPlotBottom + kFrameOverhang;
    surface.FillBox(kSmallPlotLeft, top, kSmallPlotRight, bottom, kPlotBackground);
    surface.OutlineBox(kSmallPlotLeft, top, kSmallPlotRight, bottom, kPlotOutline);
}

void DrawPlotGridFrequency(Surface& surface, const DesignState& state,
                           const std::vector<float>& gridFrequencies) {
    const auto scale = SmallPlotScale::From(state);
    if (!scale) return;
    std::vector<float> xs;
    for (float frequency : gridFrequencies)
        xs.push_back(scale->X(frequency));
    for (std::size_t i = 0; i < xs.size(); ++i) {
        surface.Line(xs[i], kSmallPlotTop, xs[i], kSmallPlotBottom, kPlotGrid);
        const std::string label = Trimmed(FormatHz(gridFrequencies[i]));
        // Towards the top of a decade the lines crowd together: every line keeps its label,
        // printed smaller where the room between its neighbours is short.
        const float pointSize = LabelPointSizeToFit(label, RoomAround(xs, i));
        const float width = EstimatedTextWidth(label, pointSize);
        const float labelX = xs[i] - width / 2;
        surface.SetFont(std::string(kLabelFont), pointSize);
        surface.Line(labelX, kFrequencyLabelY, labelX + width, kFrequencyLabelY, kWhite);
        surface.Text(labelX, kFrequencyLabelY, label);
    }
    UseLabelFont(surface);
}

void DrawPlotGridDb(Surface& surface, const DesignState& state) {
    const int divisions = state.graphDivisions;
    if (divisions <= 0) return;
    // One unit short of an exact division, so the last line falls just above the bottom edge.
    const float step = static_cast<float>(static_cast<double>(kPlotHeight) / divisions - 1);
    // Thousands of divisions would leave no visible gap between lines (and a step below a unit
    // could stall the loop on single-precision rounding).
    if (!(step >= 1)) return;
    UseLabelFont(surface);
    int division = 0;
    for (float y = kSmallPlotTop; y <= kSmallPlotBottom; y += step, ++division) {
        surface.Line(kSmallPlotLeft, y, kSmallPlotRight, y, kPlotGrid);
        const float value =
            static_cast<float>(static_cast<double>(division) / divisions * state.plotFloorDb);
        const std::string label = Trimmed(FormatEng(value));
        const float labelX = kSmallPlotLeft - kLabelGap - EstimatedTextWidth(label);
        surface.Text(labelX, y - kLabelHeight / 2, label);
    }
}

void DrawSmallPlot(Surface& surface, const DesignState& state, const DesignResults& results) {
    DrawSmallPlotFrame(surface);
    DrawPlotGridFrequency(surface, state, results.gridFrequencies);
    DrawPlotGridDb(surface, state);
    if (const auto scale = SmallPlotScale::From(state)) {
        DrawCurve(surface, *scale, state, state.sweepTransmission, kTransmissionCurve);
        DrawCurve(surface, *scale, state, state.sweepReturn, kReturnCurve);
    }
    DrawHarmonicTable(surface, state, results);
}

void DrawHarmonicTable(Surface& surface, const DesignState& state, const DesignResults& results) {
    const std::vector<HarmonicRow>& rows = results.harmonics;
    UseLabelFont(surface);
    DrawHarmonicHeaders(surface);
    const auto scale = SmallPlotScale::From(state);
    for (const HarmonicRow& row : rows) {
        if (row.n <= kMarkedHarmonics)
            MarkHarmonic(surface, scale, row.frequency, row.result.transmissionDb);
        PrintHarmonicRow(surface, row.n, row.frequency, row.result);
    }
    surface.SetLineWidth(1);
}

}  // namespace varo
