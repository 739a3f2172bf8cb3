#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/tank_network.h"
#include "model/design_results.h"
#include "model/input_view.h"
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
// The same for a frequency of the sweep (the Smith chart's cursor).
std::string CursorReadoutTextAt(const SweepTable& sweep, const OverlayCurves& overlays,
                                float frequency);
// The plot's frequency at a logical X; nothing off the plot or without a usable sweep.
std::optional<float> CursorFrequency(const SweepTable& sweep, float logicalX);
// The other way: the logical X of a frequency on the plot.
std::optional<float> CursorX(const SweepTable& sweep, float frequency);
// The swept point nearest a frequency; none without a sweep.
std::optional<std::size_t> SweptIndexNear(const SweepTable& sweep, float frequency);

// ---- The tuning knobs ----------------------------------------------------------------------

// A knob's position counts steps of 0.2 % from the part's design value, up to about twice or
// half it; the arrow keys take one step, Page Up and Page Down 3 %, as the nudges do.
inline constexpr int kKnobSteps = 350;
inline constexpr int kKnobFineStep = 1;
inline constexpr int kKnobCoarseStep = 15;
double KnobFactor(int position);
int KnobPosition(double factor);

struct KnobControl {
    TankPart part;
    const char* name;     // the control's object name
    const char* caption;  // what the knob tunes, its spoken name too
};
inline constexpr KnobControl kKnobs[] = {{TankPart::C1, "dialC1", "C1 (tune)"},
                                         {TankPart::C2, "dialC2", "C2 (load)"},
                                         {TankPart::L1, "dialL1", "L1"},
                                         {TankPart::L2, "dialL2", "L2"}};

// A knob's value: "227.626pF, +3.0 %"; the loading knob of a network whose C3 stands at the
// midpoint names the two together: "C2 + C3 798.4pF, -1.2 %".
std::string KnobValueText(const DesignState& state, TankPart part, double factor);

// What the tube sees at the design frequency, a line each: its heading, the input impedance,
// the reflection re the plate load, the VSWR, the plate current and the power into the load.
std::string TubeViewHeading(const DesignState& state);
std::vector<std::string> TubeViewLines(const InputView& view);

}  // namespace varo
