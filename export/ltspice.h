#pragma once

#include <string>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/textfile.h"

namespace varo {

// The save dialog of the LTspice export. An empty `spiceDefaultName` becomes "Default.ASC"; the
// name is never taken back from the dialog, so "Default.ASC" is what the dialog always proposes.
SaveDialogRequest LTspiceSaveRequest(std::string& spiceDefaultName);

// The whole schematic file: the source with its internal resistance, the ladder's elements from
// C1, L1, C2, L2, C3 as the L section places them, the load, the sweep directive and comments.
// Throws ArithmeticFault (plateR 0 makes the source amplitude a division by zero); `text` then
// holds the lines built before the fault.
void BuildLTspiceSchematic(const DesignState& state, FileText& text);
std::string LTspiceSchematicText(const DesignState& state);

// Writes the schematic to `path`, whole or not at all. On any failure shows "We could not write
// the LTspice schematic file" with the path and reason as detail, and returns false; a file
// already at `path` stays as it was.
bool WriteLTspiceSchematic(const DesignState& state, const std::string& path, Dialogs& dialogs);

}  // namespace varo
