#pragma once

#include <memory>

#include "core/design_fixture.h"
#include "core/network.h"

namespace varo::testing {

// As the program lays it out, but with a step-up C3 analysed across the load, as built.
inline std::unique_ptr<DesignState> AsBuiltDesign(const test::DesignInputs& inputs,
                                                  float genMultiplier = 1) {
    auto state = test::CalculatedDesign(inputs, genMultiplier);
    SetupLadder(*state);
    state->elementType[5] = kShuntCapacitor;
    return state;
}

}  // namespace varo::testing
