#pragma once

#include <optional>
#include <string>

#include "core/design_state.h"
#include "platform/dialogs.h"

namespace varo::cli {

// Swing and power are entered in the plate-load helper, so the options go through its limits and
// messages. An option not given keeps the design's value.
void TakeSwingAndPower(DesignState& state, const std::optional<std::string>& swing,
                       const std::optional<std::string>& power, Dialogs& dialogs);

}  // namespace varo::cli
