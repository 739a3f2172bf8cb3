#pragma once

#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/network.h"

namespace varo::cli {

// One row of the harmonic analysis (n = 1 is the fundamental). zAngle has the usual sign:
// positive for an inductive input.
struct HarmonicRow {
    int n = 0;
    float frequency = 0;
    LadderResult result;
    float zAngle = 0;
};

// What `varo-cli design` shows: the state after the program's sequence, the stress texts, the
// harmonics and the messages in order.
struct DesignOutcome {
    const DesignState* state = nullptr;
    StressDisplay stresses;
    std::vector<HarmonicRow> harmonics;
    std::vector<std::string> messages;
};

// Analyses the fundamental and harmonics 2 to 5 the way the harmonic table does (the ladder is
// laid out afresh first). A fault stops the list where it happened.
std::vector<HarmonicRow> AnalyzeHarmonics(DesignState& state, Reporter& reporter);

std::string DesignReportText(const DesignOutcome& outcome);
std::string DesignJson(const DesignOutcome& outcome);
// A header line and one row per sweep point.
std::string SweepCsv(const DesignState& state);

}  // namespace varo::cli
