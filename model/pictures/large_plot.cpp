#include "model/pictures/large_plot.h"

namespace varo {

void DrawLargePlotChart(Surface& surface, const DesignState& state,
                        const std::vector<float>& gridFrequencies) {
    DrawPlotFrame(surface, kLargePlotFrame);
    DrawDbGrid(surface, kLargePlotFrame, state.graphDivisions, state.plotFloorDb);
    const auto scale = PlotScale::From(kLargePlotFrame.area, state);
    if (!scale) return;
    DrawFrequencyGrid(surface, kLargePlotFrame, *scale, gridFrequencies);
    DrawResponseCurves(surface, kLargePlotFrame, *scale, state);
}

void MarkLargePlotHarmonic(Surface& surface, const DesignState& state, float frequency,
                           float transmissionDb) {
    if (const auto scale = PlotScale::From(kLargePlotFrame.area, state))
        MarkPlotPoint(surface, kLargePlotFrame, *scale, frequency, transmissionDb);
    surface.SetLineWidth(1);
}

}  // namespace varo
