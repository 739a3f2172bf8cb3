#include "screens/design/design_actions.h"

#include "export/ltspice.h"
#include "export/quarn.h"
#include "export/spice_netlist.h"
#include "model/design_inputs.h"
#include "session/last_session.h"

namespace varo {

bool ExportLTspice(DesignState& state, Dialogs& dialogs, Reporter& reporter,
                   DesignSession& session) {
    RecomputeNetwork(state, reporter);
    const auto chosen = dialogs.AskSaveFileName(LTspiceSaveRequest(session.spiceDefaultName));
    if (!chosen) return false;
    session.spiceFilePath = *chosen;
    return WriteLTspiceSchematic(state, session.spiceFilePath, dialogs);
}

bool ExportSpiceNetlist(DesignState& state, Dialogs& dialogs, Reporter& reporter,
                        DesignSession& session) {
    RecomputeNetwork(state, reporter);
    const auto chosen = dialogs.AskSaveFileName(SpiceNetlistSaveRequest());
    if (!chosen) return false;
    session.netlistFilePath = *chosen;
    return WriteSpiceNetlist(state, session.netlistFilePath, dialogs);
}

bool ExportQuarn(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                 DesignSession& session) {
    const auto chosen = dialogs.AskSaveFileName(QuarnSaveRequest());
    if (!chosen) return false;
    session.quarnFilePath = *chosen;
    ValidateInputs(state, form, dialogs);
    RecomputeNetwork(state, reporter);
    return WriteQuarnFile(state, session.quarnFilePath, dialogs);
}

bool SaveSessionOnExit(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       const DesignSession& session) {
    ValidateInputs(state, form, dialogs);
    RecomputeNetwork(state, reporter);
    return WriteLastSession(state, session.sessionFilePath, dialogs);
}

void PrintDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                 const std::function<void()>& printReport) {
    ValidateInputs(state, form, dialogs);
    RecomputeNetwork(state, reporter);
    if (printReport) printReport();
}

void PrepareToLeaveDesign(DesignState& state, Reporter& reporter) {
    RecomputeNetwork(state, reporter);
}

}  // namespace varo
