#pragma once

#include <functional>
#include <string>

#include "core/design_state.h"
#include "core/reporter.h"
#include "platform/dialogs.h"
#include "model/design_form.h"

namespace varo {

// What the design screen remembers between its file actions for the rest of the run.
struct DesignSession {
    std::string spiceDefaultName;  // the name the LTspice dialog proposes from
    std::string quarnFilePath;     // last Quarn file chosen
    std::string spiceFilePath;     // last LTspice file chosen
    std::string netlistFilePath;   // last SPICE netlist chosen
    std::string sessionFilePath;   // the last-session file, found at start-up
};

// `cmdSpice`: recomputes, asks for the file name and writes the schematic. A cancelled dialog
// stops the export quietly. Returns true when a file was written.
bool ExportLTspice(DesignState& state, Dialogs& dialogs, Reporter& reporter,
                   DesignSession& session);

// "Write SPICE": recomputes, asks for a .cir file (overwrite prompt) and writes the netlist. A
// cancelled dialog stops the export quietly. Returns true when a file was written.
bool ExportSpiceNetlist(DesignState& state, Dialogs& dialogs, Reporter& reporter,
                        DesignSession& session);

// `cmdQuarn`: asks for the file name first, then validates, recomputes and writes the circuit
// file. A cancelled dialog stops the export quietly. Returns true when a file was written.
bool ExportQuarn(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                 DesignSession& session);

// `cmdExit`: validates, recomputes and writes the last-session file. A failure has been reported
// by then; the caller ends the program either way. Returns true when the file was written.
bool SaveSessionOnExit(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       const DesignSession& session);

// `cmdPrint`: validates and recomputes, then hands over to `printReport`.
void PrintDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                 const std::function<void()>& printReport);

// `cmdPlot`, `cmdInductor`, `cmdLoadHelp`: brings the network up to date before the next screen
// reads it.
void PrepareToLeaveDesign(DesignState& state, Reporter& reporter);

}  // namespace varo
