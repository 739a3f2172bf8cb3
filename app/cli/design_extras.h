#pragma once

#include <array>
#include <optional>
#include <string>

#include "app/cli/arguments.h"
#include "app/cli/cli_dialogs.h"
#include "core/reporter.h"
#include "core/tank_losses.h"
#include "model/design.h"
#include "platform/dialogs.h"

namespace varo::cli {

// What `varo-cli design` offers beyond the program's own files: a SPICE netlist, a Touchstone
// file and the tank's losses with real coils and capacitors.
struct DesignExtras {
    std::optional<std::string> spicePath;
    std::optional<std::string> touchstonePath;
    std::optional<TankQ> lossQ;  // set when the losses are asked for
    // --l1-winding and --l2-winding: diameter, length and wire gauge, as typed (inches).
    std::array<std::optional<std::array<std::string, 3>>, 2> windings;
};

// The design command's options with those of the extras added.
OptionTable WithDesignExtras(OptionTable options);

// Reads the options. A Q of 0 or less, or a Touchstone name that ends in neither .s2p nor .s1p,
// is a usage mistake (UsageError).
DesignExtras ReadDesignExtras(const Arguments& args);

// Winds each requested coil for the design's inductor as the inductor screen does (the turns
// from the diameter and length), and has the losses take its own Q.
void WindRequestedCoils(const DesignExtras& extras, Design& design, CliDialogs& dialogs);

// Writes each requested file as the desktop's buttons do. False if any was not written.
bool WriteDesignExtras(const DesignExtras& extras, Design& design, CliDialogs& dialogs,
                       Reporter& reporter);

}  // namespace varo::cli
