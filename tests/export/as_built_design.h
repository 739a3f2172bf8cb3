#pragma once

#include <memory>
#include <string_view>

#include "core/design_fixture.h"
#include "core/network.h"

namespace varo::testing {

class SilentReporter final : public Reporter {
  public:
    void ShowMessage(std::string_view, std::string_view, MessageIcon) override {}
};

// The design computed and laid out as the program does it, but with C3 analysed as a shunt
// capacitor across the load where the L section steps up, as the network is built.
inline std::unique_ptr<DesignState> AsBuiltDesign(const test::DesignInputs& inputs,
                                                  float genMultiplier = 1) {
    auto state = test::MakeDesign(inputs, genMultiplier);
    SilentReporter reporter;
    if (!ComponentCalculations(*state, reporter)) return nullptr;
    SetupLadder(*state);
    state->elementType[5] = kShuntCapacitor;
    return state;
}

}  // namespace varo::testing
