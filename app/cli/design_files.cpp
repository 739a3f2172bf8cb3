#include "app/cli/design_files.h"

#include "app/cli/text_load_help_form.h"

namespace varo::cli {

void TakeSwingAndPower(DesignState& state, const std::optional<std::string>& swing,
                       const std::optional<std::string>& power, Dialogs& dialogs) {
    if (!swing && !power) return;
    const float swingBefore = state.peakSwing;
    const float powerBefore = state.rfPower;
    // The helper reads both entries; one not given reads as 1, which its limits pass silently.
    TextLoadHelpForm form(swing.value_or("1"), power.value_or("1"), ClassOption::None);
    LoadHelpState help;
    RecalculateLoad(state, help, form, dialogs);
    if (!swing) state.peakSwing = swingBefore;
    if (!power) state.rfPower = powerBefore;
}

}  // namespace varo::cli
