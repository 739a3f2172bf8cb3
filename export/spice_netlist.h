#pragma once

#include <string>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/textfile.h"

namespace varo {

// The save dialog of the SPICE netlist: "Default.cir" proposed, overwrite prompt on.
SaveDialogRequest SpiceNetlistSaveRequest();

// A plain SPICE netlist of the network that ngspice and LTspice both run as it stands: the AC
// source with the LTspice schematic's amplitude, the generator resistance, the components from
// the component values (C3 also where the L section steps up, which the program's own analysis
// leaves out), the load to ground, an AC sweep from half to four times the operating frequency,
// and the design's inputs as comment lines. Throws ArithmeticFault (plateR 0 makes the source
// amplitude a division by zero); `text` then holds the lines built before the fault.
void BuildSpiceNetlist(const DesignState& state, FileText& text);
std::string SpiceNetlistText(const DesignState& state);

// Writes the netlist of the state as it stands (callers recompute first, as the LTspice export
// does). On any failure shows "We could not write the SPICE netlist file" and returns false; a
// partly written file is left as it stands.
bool WriteSpiceNetlist(const DesignState& state, const std::string& path, Dialogs& dialogs);

}  // namespace varo
