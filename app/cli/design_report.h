#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/tank_losses.h"
#include "model/design_results.h"

namespace varo::cli {

// What `varo-cli design` shows: the state and the results after the program's sequence, and the
// messages in order.
struct DesignOutcome {
    const DesignState* state = nullptr;
    DesignResults results;
    std::vector<std::string> messages;
};

std::string DesignReportText(const DesignOutcome& outcome);
std::string DesignJson(const DesignOutcome& outcome);

}  // namespace varo::cli
