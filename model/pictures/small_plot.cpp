#include "model/pictures/small_plot.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/network.h"
#include "core/numtext.h"

namespace varo {

namespace {

constexpr int kHarmonicCount = 5;
constexpr int kMarkedHarmonics = 3;
constexpr std::array<std::string_view, kHarmonicCount> kHarmonicNames = {"Fund", "2nd", "3rd",
                                                                         "4th", "5th"};
constexpr float kHarmonicNameX = 8700;
constexpr float kHarmonicFrequencyX = 9100;
constexpr float kHarmonicTransmissionX = 9900;
constexpr float kHarmonicImpedanceX = 10800;
// Rows stand 160 apart: a font whose lines are no taller keeps them from touching.
constexpr float kHarmonicTablePointSize = 6.75f;

void DrawHarmonicHeaders(Surface& surface) {
    surface.Text(8800, kHarmonicHeaderY, "Frequency:");
    surface.Text(10000, kHarmonicHeaderY, "Trans.:");
    surface.Text(10900, kHarmonicHeaderY, "Zin:");
    // The column's unit, set apart from the header itself.
    const float unitX = 10900 + surface.MeasureText("Zin: ").width;
    surface.Text(unitX, kHarmonicHeaderY, "(ohms)");
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
    const auto scale = PlotScale::From(kSmallPlotFrame.area, state);
    if (!scale) return std::nullopt;
    return SmallPlotScale(*scale);
}

void DrawSmallPlotFrame(Surface& surface) {
    DrawPlotFrame(surface, kSmallPlotFrame);
}

void DrawPlotGridFrequency(Surface& surface, const DesignState& state,
                           const std::vector<float>& gridFrequencies) {
    if (const auto scale = SmallPlotScale::From(state))
        DrawFrequencyGrid(surface, kSmallPlotFrame, *scale, gridFrequencies);
}

void DrawPlotGridDb(Surface& surface, const DesignState& state) {
    DrawDbGrid(surface, kSmallPlotFrame, state.graphDivisions, state.plotFloorDb);
}

void DrawSmallPlot(Surface& surface, const DesignState& state, const DesignResults& results) {
    DrawSmallPlotFrame(surface);
    DrawPlotGridFrequency(surface, state, results.gridFrequencies);
    DrawPlotGridDb(surface, state);
    if (const auto scale = SmallPlotScale::From(state))
        DrawResponseCurves(surface, kSmallPlotFrame, *scale, state);
    DrawHarmonicTable(surface, state, results);
}

void DrawHarmonicTable(Surface& surface, const DesignState& state, const DesignResults& results) {
    surface.SetFont(kSmallPlotFrame.labels.font, kHarmonicTablePointSize);
    DrawHarmonicHeaders(surface);
    const auto scale = SmallPlotScale::From(state);
    for (const HarmonicRow& row : results.harmonics) {
        if (row.n <= kMarkedHarmonics && scale)
            MarkPlotPoint(surface, kSmallPlotFrame, *scale, row.frequency,
                          row.result.transmissionDb);
        PrintHarmonicRow(surface, row.n, row.frequency, row.result);
    }
    surface.SetLineWidth(1);
}

}  // namespace varo
