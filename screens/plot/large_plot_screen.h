#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/reporter.h"
#include "platform/surface.h"
#include "platform/textfile.h"
#include "model/design_results.h"

namespace varo {

// The large plot screen's logical size, in twips.
inline constexpr float kLargePlotScreenWidth = 12000;
inline constexpr float kLargePlotScreenHeight = 9000;

// The sweep as the last redraw left it. The overlay reader writes its frequencies into the
// design's sweep, so the cursor and the exports read this copy instead.
struct SweepCopy {
    std::vector<float> frequency, transmission, phase, returnDb, vswr, zMagnitude, zAngle;
    static SweepCopy Of(const DesignState& state);
    std::size_t size() const { return frequency.size(); }
};

// A saved curve as drawn over the plot, in file order.
struct OverlayCurve {
    std::vector<float> frequency, value;
};

// What the screen's picture, cursor and exports read; worked out by each redraw.
struct LargePlotResults {
    std::vector<float> gridFrequencies;
    std::vector<HarmonicRow> harmonics;  // fundamental and harmonics 2 to 5
    SweepCopy sweep;
    float sweepStart = 0, sweepStop = 0;
    float referenceOhms = 0;  // what return and VSWR are referred to
    // Drawn by Get since the last redraw: transmission, then return.
    std::array<std::optional<OverlayCurve>, 2> overlays;
};

// The one-line design summary under the heading.
std::string LargePlotSummary(const DesignState& state);

// What a redraw computes before it draws: the log grid, the sweep (which reports its own
// failure), and the readout's five analyses of the ladder as it stands.
LargePlotResults ComputeLargePlot(DesignState& state, Reporter& reporter);

// The whole picture afresh: chart, curves, then the readout table with its harmonic rings. The
// header row's height depends a little on the screen, given as its height in twips.
void DrawLargePlot(Surface& surface, const DesignState& state, const LargePlotResults& results,
                   float screenHeightTwips);

// The readout: its header row, a row per harmonic, the first three ringed on the chart.
void ShowLargeReadout(Surface& surface, const DesignState& state,
                      const std::vector<HarmonicRow>& harmonics, float screenHeightTwips);

// The texts of one readout row, label first.
std::vector<std::string> ReadoutRowTexts(const HarmonicRow& row);

// The four buttons that change an L-section part by a factor of 1.03.
enum class Nudge { CapacitorDown, CapacitorUp, InductorDown, InductorUp };

// Changes C3 or L2 and lays the ladder out again (the inductor's up button also sweeps); the
// caller then redraws. A value that would leave the single-precision range is reported and
// kept. Returns whether the part changed.
bool NudgeComponent(DesignState& state, Nudge nudge, Reporter& reporter);

// "C3 (CL): 1234pF" and "L2 (LL): 1.5uH" on two lines: what the nudges change.
std::string NudgedPartsText(const DesignState& state);

// A cursor at a logical X of the plot: its frequency and the nearest swept point's figures,
// with the overlays' values at that frequency, as lines of text. Empty off the plot.
std::string CursorReadoutText(const LargePlotResults& results, float logicalX);
// The plot's frequency at a logical X; nothing off the plot or without a usable sweep.
std::optional<float> CursorFrequency(const LargePlotResults& results, float logicalX);

// The sweep as comma-separated text: a header naming units and reference, a line per point.
void BuildSweepCsv(const LargePlotResults& results, FileText& text);

}  // namespace varo
