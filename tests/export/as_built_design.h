#pragma once

#include <memory>

#include "core/design_fixture.h"
#include "core/network.h"

namespace varo::testing {

// The design computed and laid out as the program does it, but with C3 analysed as a shunt
// capacitor across the load where the L section steps up, as the network is built.
inline std::unique_ptr<DesignState> AsBuiltDesign(const test::DesignInputs& inputs,
                                                  float genMultiplier = 1) {
    auto state = test::CalculatedDesign(inputs, genMultiplier);
    SetupLadder(*state);
    state->elementType[5] = kShuntCapacitor;
    return state;
}

}  // namespace varo::testing
