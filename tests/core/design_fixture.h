#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "core/design_state.h"
#include "core/network.h"
#include "tests/support/recording_reporter.h"  // also reached from bench/

namespace varo::test {

struct DesignInputs {
    float frequency, plateR, intermediateR, loadR, piQ;
};

// The default design of a first run.
inline constexpr DesignInputs kReferenceDesign{3.9e6f, 1500, 300, 50, 12};

// Sets pi and the given inputs on an existing record.
inline void SetDesign(DesignState& state, const DesignInputs& in, float genMultiplier = 1) {
    InitialiseConstants(state);
    state.frequency = in.frequency;
    state.plateR = in.plateR;
    state.intermediateR = in.intermediateR;
    state.loadR = in.loadR;
    state.piQ = in.piQ;
    state.genMultiplier = genMultiplier;
}

// A fresh record (heap: the sweep arrays make it large) with pi set and the given inputs.
inline std::unique_ptr<DesignState> MakeDesign(const DesignInputs& in, float genMultiplier = 1) {
    auto state = std::make_unique<DesignState>();
    SetDesign(*state, in, genMultiplier);
    return state;
}

// A fresh record with its components worked out; the test fails where they cannot be.
inline std::unique_ptr<DesignState> CalculatedDesign(const DesignInputs& in,
                                                     float genMultiplier = 1) {
    auto state = MakeDesign(in, genMultiplier);
    RecordingReporter reporter;
    EXPECT_TRUE(ComponentCalculations(*state, reporter));
    return state;
}

// The design screen's order: components, ladder, sweep, section phases.
inline bool Recalculate(DesignState& state, Reporter& reporter) {
    if (!ComponentCalculations(state, reporter)) return false;
    SetupLadder(state);
    if (!SweepRoutine(state, reporter)) return false;
    ComputeSectionPhases(state);
    return true;
}

}  // namespace varo::test
