#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "app/cli/arguments.h"
#include "model/band_plan.h"

namespace varo::cli {

// What a band plan is made for, beside the design's own options: --cout, --stray, --tune,
// --load-cap, --bands, --conduction, --limit, --coil-q and --capacitor-q.
extern const std::set<std::string> kBandPlanOptions;

// A plain number, the whole text of it.
std::optional<double> PlainNumber(std::string_view text);

// The band plan's inputs from those options; a mistake throws UsageError.
BandPlanInputs ReadBandInputs(const Arguments& args, const DesignState& design);

// The parts' Q from --coil-q and --capacitor-q, the defaults where not given.
TankQ ReadTankQ(const Arguments& args);

}  // namespace varo::cli
