#pragma once

#include <vector>

#include "core/design_state.h"
#include "model/pictures/response_plot.h"
#include "platform/surface.h"

namespace varo {

// The large plot screen's chart, in its logical units. Its frame is filled exactly over the
// area and outlined 15 units beyond it above and below; the transmission curve starts with a
// blue dot, the return curve is blue throughout, and harmonics get a thin blue ring.
inline constexpr PlotFrame kLargePlotFrame{
    .area = {2000, 1000, 11000, 7000},
    .fillOverhang = 0,
    .outlineOverhang = 15,
    .transmission = {kTransmissionCurve, kBlue},
    .returnLoss = {kReturnCurve, kBlue},
    .marker = {23, kBlue, 20, kPlotBackground},
    .clampCurveX = false,
    .labels = {"Arial", 9, 6, 40, 7060},
};

// Frame, dB grid, frequency grid, then the transmission and return curves of the last sweep.
void DrawLargePlotChart(Surface& surface, const DesignState& state,
                        const std::vector<float>& gridFrequencies);

// Rings a harmonic's transmission on the chart and sets the pen back to one pixel.
void MarkLargePlotHarmonic(Surface& surface, const DesignState& state, float frequency,
                           float transmissionDb);

}  // namespace varo
