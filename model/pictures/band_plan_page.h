#pragma once

#include <string>

#include "model/band_plan.h"
#include "platform/print_document.h"

namespace varo {

// The band plan as a printed page: what it was made for, the chart, and a block per band with
// its Q, coils, the capacitors at both edges, the worst harmonic against the limit, the
// stresses, and what the parts cannot do.
PrintPage BandPlanPage(const BandPlan& plan, int number, int count, const std::string& date);

}  // namespace varo
