#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/design_state.h"
#include "platform/print_document.h"
#include "screens/design/design_results.h"
#include "tools/inductor/coil.h"

namespace varo {

// Every printed page is this many twips across and down: it fits inside 15 mm margins on A4
// and on Letter alike, so neither paper shrinks it by more than a few percent.
inline constexpr float kPrintPageWidth = 10200;
inline constexpr float kPrintPageHeight = 14100;

inline constexpr const char* kPrintFooter = "VARO from Merrow Software";

// The design report on one page, from the component values the design holds now (a nudge on
// the large plot shows), stresses worked out afresh from them, and the results' plot, harmonic
// table and tank losses. `date` goes into the footer.
PrintDocument DesignReportDocument(const DesignState& state, const DesignResults& results,
                                   const std::string& date);

// Each computed winding (slot 0 L1, slot 1 L2) on one page, in the unit it was shown in.
PrintDocument WindingDataDocument(const std::array<std::optional<CoilState>, 2>& windings,
                                  const std::string& date);

}  // namespace varo
