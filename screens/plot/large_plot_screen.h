#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "model/design_results.h"
#include "platform/surface.h"

namespace varo {

// The large plot screen's logical size, in twips.
inline constexpr float kLargePlotScreenWidth = 12000;
inline constexpr float kLargePlotScreenHeight = 9000;

// A saved curve as drawn over the plot, in file order.
struct OverlayCurve {
    std::vector<float> frequency, value;
};
// Drawn by Get since the last redraw: transmission, then return.
using OverlayCurves = std::array<std::optional<OverlayCurve>, 2>;

// The one-line design summary under the heading.
std::string LargePlotSummary(const DesignState& state);

// The whole picture afresh: chart, curves, then the readout table with its harmonic rings. The
// header row's height depends a little on the screen, given as its height in twips.
void DrawLargePlot(Surface& surface, const DesignState& state, const DesignResults& results,
                   float screenHeightTwips);

// The readout: its header row, a row per harmonic, the first three ringed on the chart.
void ShowLargeReadout(Surface& surface, const DesignState& state,
                      const std::vector<HarmonicRow>& harmonics, float screenHeightTwips);

// The texts of one readout row, label first.
std::vector<std::string> ReadoutRowTexts(const HarmonicRow& row);

// "C3 (CL): 1234pF" and "L2 (LL): 1.5uH" on two lines: what the nudges change.
std::string NudgedPartsText(const DesignState& state);

// A cursor at a logical X of the plot: its frequency and the nearest swept point's figures,
// with the overlays' values at that frequency, as lines of text. Empty off the plot.
std::string CursorReadoutText(const SweepTable& sweep, const OverlayCurves& overlays,
                              float logicalX);
// The plot's frequency at a logical X; nothing off the plot or without a usable sweep.
std::optional<float> CursorFrequency(const SweepTable& sweep, float logicalX);

}  // namespace varo
