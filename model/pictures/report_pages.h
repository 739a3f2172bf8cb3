#pragma once

#include <string>

#include "core/design_state.h"
#include "model/design_results.h"
#include "platform/dialogs.h"
#include "platform/print_document.h"

namespace varo {

// The design report on one page: summary, component values and reactances, phases, stresses,
// schematic, response plot with the harmonic table, and the tank losses when the results carry
// them, all as the results settled them; the band plan on a second page when the results carry
// one. `date` goes into the footer.
PrintDocument DesignReportDocument(const DesignState& state, const DesignResults& results,
                                   const std::string& date);

// The report handed to the dialogs' print path (printer, preview or PDF). Failures are reported
// with the title "Printer Error". Returns true when the page went out.
bool PrintDesignReport(const DesignState& state, const DesignResults& results, Dialogs& dialogs);

}  // namespace varo
