#include "screens/design/design_actions.h"

#include "export/ltspice.h"
#include "export/quarn.h"
#include "export/spice_netlist.h"
#include "model/design_file.h"
#include "model/pictures/report_pages.h"
#include "platform/textfile.h"
#include "session/last_session.h"

namespace varo {

namespace {

FileOutcome Outcome(bool written) {
    return written ? FileOutcome::Written : FileOutcome::Failed;
}

}  // namespace

FileOutcome ExportLTspice(Design& design, Dialogs& dialogs, Reporter& reporter,
                          DesignSession& session) {
    design.RecomputeNetwork(reporter);
    const auto chosen = dialogs.AskSaveFileName(LTspiceSaveRequest(session.spiceDefaultName));
    if (!chosen) return FileOutcome::Cancelled;
    session.spiceFilePath = *chosen;
    return Outcome(WriteLTspiceSchematic(design.state(), session.spiceFilePath, dialogs));
}

FileOutcome ExportSpiceNetlist(Design& design, Dialogs& dialogs, Reporter& reporter,
                               DesignSession& session) {
    design.RecomputeNetwork(reporter);
    const auto chosen = dialogs.AskSaveFileName(SpiceNetlistSaveRequest());
    if (!chosen) return FileOutcome::Cancelled;
    session.netlistFilePath = *chosen;
    return Outcome(WriteSpiceNetlist(design.state(), session.netlistFilePath, dialogs));
}

FileOutcome ExportQuarn(Design& design, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                        DesignSession& session) {
    const auto chosen = dialogs.AskSaveFileName(QuarnSaveRequest());
    if (!chosen) return FileOutcome::Cancelled;
    session.quarnFilePath = *chosen;
    design.ValidateAndRecompute(form, dialogs, reporter);
    return Outcome(WriteQuarnFile(design.state(), session.quarnFilePath, dialogs));
}

bool SaveSessionOnExit(Design& design, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       const DesignSession& session) {
    design.ValidateAndRecompute(form, dialogs, reporter);
    return WriteLastSession(design.state(), session.sessionFilePath, dialogs);
}

bool OpenDesignFile(Design& design, const std::string& path, Dialogs& dialogs) {
    try {
        ApplyDesignFile(ReadDesignFile(path), design);
        return true;
    } catch (const DesignFileError& error) {
        dialogs.ShowFailure(error.what(), path);
    } catch (const FileError& error) {
        dialogs.ShowFailure("The design file could not be read.", error.what());
    }
    return false;
}

bool SaveDesignFileAs(const Design& design, const std::string& path, Dialogs& dialogs) {
    if (const auto failure = SaveFailure(path, [&] { SaveDesignFile(design, path); })) {
        dialogs.ShowFailure("The design file was not written.", *failure);
        return false;
    }
    return true;
}

SaveDialogRequest DesignFileSaveRequest(const std::string& proposedName) {
    return {"Save the design", "VARO design (*.varo)|*.varo", 1, proposedName, true};
}

OpenDialogRequest DesignFileOpenRequest() {
    return {"Open a design", "VARO design (*.varo)|*.varo"};
}

bool PrintDesign(Design& design, DesignForm& form, Dialogs& dialogs, Reporter& reporter) {
    design.ValidateAndRecompute(form, dialogs, reporter);
    return PrintDesignReport(design.state(), design.results(), dialogs);
}

}  // namespace varo
