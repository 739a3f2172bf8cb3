#pragma once

#include <functional>
#include <string>

#include "core/reporter.h"
#include "model/design.h"
#include "model/design_form.h"
#include "platform/dialogs.h"

namespace varo {

// What the design screen remembers between its file actions for the rest of the run.
struct DesignSession {
    std::string spiceDefaultName;  // the name the LTspice dialog proposes from
    std::string quarnFilePath;     // last Quarn file chosen
    std::string spiceFilePath;     // last LTspice file chosen
    std::string netlistFilePath;   // last SPICE netlist chosen
    std::string sessionFilePath;   // the last-session file, found at start-up
    std::string designFilePath;    // the design file open now; empty for none
};

// How a file action ended: a cancelled dialog stops it quietly, before anything is read in.
enum class FileOutcome { Cancelled, Written, Failed };

// `cmdSpice`: recomputes, asks for the file name and writes the schematic.
FileOutcome ExportLTspice(Design& design, Dialogs& dialogs, Reporter& reporter,
                          DesignSession& session);

// "Write SPICE": recomputes, asks for a .cir file (overwrite prompt) and writes the netlist.
FileOutcome ExportSpiceNetlist(Design& design, Dialogs& dialogs, Reporter& reporter,
                               DesignSession& session);

// `cmdQuarn`: asks for the file name first, then validates, recomputes and writes the circuit
// file.
FileOutcome ExportQuarn(Design& design, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                        DesignSession& session);

// `cmdExit`: validates, recomputes and writes the last-session file. A failure has been reported
// by then; the caller ends the program either way. Returns true when the file was written.
bool SaveSessionOnExit(Design& design, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       const DesignSession& session);

// Opens a design file into the design (the caller shows it again: Design::Load). A file that
// cannot be read or taken is reported and changes nothing. Returns true when the design was
// taken.
bool OpenDesignFile(Design& design, const std::string& path, Dialogs& dialogs);

// Saves the design as it stands into a design file, whole or not at all; a failure is reported.
bool SaveDesignFileAs(const Design& design, const std::string& path, Dialogs& dialogs);

// The dialogs' requests for design files.
SaveDialogRequest DesignFileSaveRequest(const std::string& proposedName);
OpenDialogRequest DesignFileOpenRequest();

// `cmdPrint`: validates and recomputes, then prints the report of the results that settled.
// Returns true when the page went out.
bool PrintDesign(Design& design, DesignForm& form, Dialogs& dialogs, Reporter& reporter);

}  // namespace varo
