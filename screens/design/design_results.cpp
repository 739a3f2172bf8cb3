#include "screens/design/design_results.h"

#include <algorithm>

#include "core/fault.h"
#include "core/numtext.h"

namespace varo {

namespace {
constexpr int kHarmonicCount = 5;
}  // namespace

std::vector<HarmonicRow> AnalyzeHarmonics(DesignState& state, Reporter& reporter) {
    ComponentCalculations(state, reporter);
    SetupLadder(state);
    std::vector<HarmonicRow> rows;
    LadderResult result;
    try {
        for (int harmonic = 1; harmonic <= kHarmonicCount; ++harmonic) {
            state.analysisFrequency = StoreSingle(harmonic * static_cast<double>(state.frequency));
            AnalyzeLadder(state, 0, 0, state.analysisFrequency, result);
            rows.push_back({harmonic, state.analysisFrequency, result});
        }
    } catch (const ArithmeticFault&) {
        // The sweep has already told the user about a network that cannot be analysed.
    }
    return rows;
}

std::vector<float> BuildGridFrequencies(DesignState& state) {
    try {
        BuildLogGrid(state);
    } catch (const ArithmeticFault&) {
        // A grid too dense to list: the plot goes on without frequency lines.
        return {};
    }
    const int last = std::min<int>(state.gridLastIndex, kGridEntries - 1);
    return {state.gridFrequencies.begin(), state.gridFrequencies.begin() + (last + 1)};
}

}  // namespace varo
