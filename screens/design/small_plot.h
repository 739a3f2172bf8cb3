#pragma once

#include <vector>

#include <optional>

#include "core/design_state.h"
#include "core/network.h"
#include "core/reporter.h"
#include "platform/surface.h"
#include "screens/design/design_results.h"

namespace varo {

// The small response plot of the design screen, in the screen's logical units.
inline constexpr float kSmallPlotLeft = 8000;
inline constexpr float kSmallPlotRight = 11500;
inline constexpr float kSmallPlotTop = 1200;
inline constexpr float kSmallPlotBottom = 4200;

// Colours of the small plot (0xBBGGRR).
inline constexpr Colour kPlotBackground = 0xFFFFEE;
inline constexpr Colour kPlotOutline = 0x663333;
inline constexpr Colour kPlotGrid = 0xAAAAAA;
inline constexpr Colour kTransmissionCurve = kRed;
inline constexpr Colour kReturnCurve = kBlue;

// Row of the frequency labels under the plot, and of the harmonic table's headers.
inline constexpr float kFrequencyLabelY = 4290;
inline constexpr float kHarmonicHeaderY = 4470;
inline constexpr float kHarmonicRowStep = 160;

// Log-frequency / dB mapping onto the plot area; the same rule serves curves and markers.
class SmallPlotScale {
  public:
    // Nothing when the sweep limits or the dB floor cannot give a finite mapping.
    static std::optional<SmallPlotScale> From(const DesignState& state);

    // Plot coordinates of a frequency and a dB value, clamped to the plot area.
    float X(float frequency) const;
    float Y(float db) const;

  private:
    SmallPlotScale(double logStart, double logSpan, double floorDb)
        : logStart_(logStart), logSpan_(logSpan), floorDb_(floorDb) {}
    double logStart_;
    double logSpan_;
    double floorDb_;
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
