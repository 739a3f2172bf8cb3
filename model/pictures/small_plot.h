#pragma once

#include <optional>
#include <vector>

#include "core/design_state.h"
#include "core/network.h"
#include "core/reporter.h"
#include "model/design_results.h"
#include "model/pictures/response_plot.h"
#include "platform/surface.h"

namespace varo {

// The small response plot of the design screen, in the screen's logical units.
inline constexpr float kSmallPlotLeft = 8000;
inline constexpr float kSmallPlotRight = 11500;
inline constexpr float kSmallPlotTop = 1200;
inline constexpr float kSmallPlotBottom = 4200;

// Row of the frequency labels under the plot, and of the harmonic table's headers.
inline constexpr float kFrequencyLabelY = 4290;
inline constexpr float kHarmonicHeaderY = 4470;
inline constexpr float kHarmonicRowStep = 160;

// Filled and outlined 15 units beyond the area above and below; curves without a first dot;
// harmonics ringed in blue with a white centre.
inline constexpr PlotFrame kSmallPlotFrame{
    .area = {kSmallPlotLeft, kSmallPlotTop, kSmallPlotRight, kSmallPlotBottom},
    .fillOverhang = 15,
    .outlineOverhang = 15,
    .transmission = {kTransmissionCurve, std::nullopt},
    .returnLoss = {kReturnCurve, std::nullopt},
    .marker = {8, kBlue, 6, kWhite},
    .clampCurveX = true,
    .labels = {"Arial", 8, 6, 40, kFrequencyLabelY},
};

// The small plot's mapping: the design's sweep limits across, 0 dB to plotFloorDb down.
class SmallPlotScale : public PlotScale {
  public:
    // Nothing when the sweep limits or the dB floor cannot give a finite mapping.
    static std::optional<SmallPlotScale> From(const DesignState& state);

  private:
    explicit SmallPlotScale(const PlotScale& scale) : PlotScale(scale) {}
};

// Frame, frequency grid, dB grid, the transmission and return curves, then the harmonic table,
// all from the design and the results of its last recalculation.
void DrawSmallPlot(Surface& surface, const DesignState& state, const DesignResults& results);

void DrawSmallPlotFrame(Surface& surface);
// One vertical line and one label per grid frequency.
void DrawPlotGridFrequency(Surface& surface, const DesignState& state,
                           const std::vector<float>& gridFrequencies);
void DrawPlotGridDb(Surface& surface, const DesignState& state);

// Rings the first three harmonics on the plot and prints the table under it.
void DrawHarmonicTable(Surface& surface, const DesignState& state, const DesignResults& results);

}  // namespace varo
