#pragma once

#include <array>
#include <optional>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "screens/design/design_results.h"
#include "tools/inductor/coil.h"

namespace varo {

// The design report: summary, component values and reactances, phases, stresses, schematic,
// response plot with the harmonic table, and the tank losses when the results carry them, laid
// out on one page and handed to the dialogs' print path (printer, preview or PDF). Failures are
// reported with the title "Printer Error". Returns true when the page went out.
bool PrintDesignReport(const DesignState& state, const DesignResults& results, Dialogs& dialogs);

// The winding data of each computed inductor (slot 0 for L1, slot 1 for L2) on one page, in the
// unit each winding was shown in. Returns true when the page went out.
bool PrintWindingData(const std::array<std::optional<CoilState>, 2>& windings, Dialogs& dialogs);

}  // namespace varo
