#pragma once

#include <vector>

#include "core/design_state.h"
#include "core/network.h"
#include "core/reporter.h"

namespace varo {

// One analysed harmonic (n = 1 is the fundamental).
struct HarmonicRow {
    int n = 0;
    float frequency = 0;
    LadderResult result;
};

// What one recalculation of the design produced, beside the fields it rewrote in DesignState.
// Every view of the design (design screen, large plot, printed report, varo-cli) reads this value;
// none of them computes or reports.
struct DesignResults {
    StressDisplay stresses;              // stress, phase and explanatory texts
    std::vector<HarmonicRow> harmonics;  // fundamental and harmonics 2 to 5
    std::vector<float> gridFrequencies;  // log-axis grid lines between the sweep limits
};

// The harmonic table's numbers: ComponentCalculations and SetupLadder, then the ladder analysed
// at n x frequency for n = 1 to 5, each frequency left in analysisFrequency. A network that
// cannot be analysed ends the list at the fault (the sweep has already told the user).
std::vector<HarmonicRow> AnalyzeHarmonics(DesignState& state, Reporter& reporter);

// BuildLogGrid, then its entries as a list; empty when the grid cannot be built.
std::vector<float> BuildGridFrequencies(DesignState& state);

}  // namespace varo
