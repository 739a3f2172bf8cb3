#pragma once

#include "core/design_state.h"

namespace varo {

// The default design of a first run (3.9 MHz, 1500 -> 300 -> 50 ohms, Q 12) at 1.5 kW and a
// 2.5 kV swing: what the band plan's figures are timed with.
inline DesignState DefaultBenchDesign() {
    DesignState state;
    InitialiseConstants(state);
    state.frequency = 3.9e6f;
    state.plateR = 1500;
    state.intermediateR = 300;
    state.loadR = 50;
    state.piQ = 12;
    state.peakSwing = 2500;
    state.rfPower = 1500;
    state.genMultiplier = 1;
    return state;
}

}  // namespace varo
