#pragma once

#include <functional>
#include <string_view>

#include "core/design_state.h"
#include "core/reporter.h"
#include "platform/dialogs.h"
#include "screens/design/design_form.h"

namespace varo {

// Fills the five design entries with the design's values as the screen shows them.
void ShowDesignInputs(const DesignState& state, DesignForm& form);

// Reads the five design entries into the state in a fixed order, raising each value that is
// below its limit to the limit, rewriting the field and saying so. The intermediate checks run
// before the plate entry is read, so they compare with the plate load of the previous design.
void ValidateInputs(DesignState& state, DesignForm& form, Dialogs& dialogs);

// The one sequence every design action ends with: validate, compute the components, lay out the
// ladder, sweep, find the section phases, then redraw schematic, stresses and small plot.
// Returns false when a step reported a fault; the redraws run in any case so the screen shows
// what the state now holds.
bool RecalculateDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       DesignRedraw& redraw);

// ComponentCalculations then SetupLadder: what every consumer of the network runs first,
// because the phase calculation leaves the ladder holding the L section only.
bool RecomputeNetwork(DesignState& state, Dialogs& dialogs, Reporter& reporter);

// The 1 % adjust buttons.
enum class Adjustment { QMinus, QPlus, IntermediateMinus, IntermediatePlus };

// Validates, steps the value, shows it in its entry, then runs the whole recalculation.
bool AdjustDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignRedraw& redraw, Adjustment which);

// Accept (`cmdDesign`): recalculates and shows the generator resistance in its entry.
bool AcceptDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignRedraw& redraw);

// `txtRinputMult` changed: a generator resistance of at least 1 mohm sets the multiplier and
// recalculates; a smaller value is ignored. Returns whether a recalculation ran.
bool OnGeneratorResistanceChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                  Reporter& reporter, DesignRedraw& redraw);

// `UpDown3` moved to `position`: 0.1 per step into `txtRinputMultEntry`, multiplier = entry / 20.
bool OnGeneratorSpinChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                            Reporter& reporter, DesignRedraw& redraw, int position);

// `txtUpDown1` changed: its text becomes the intermediate entry, then recalculates.
bool OnIntermediateSpinTextChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                   Reporter& reporter, DesignRedraw& redraw);

// Typing in one of the five design entries only offers Accept; nothing is recalculated yet.
void OnDesignEntryEdited(DesignForm& form);

// Runs `step`; an arithmetic fault in it is reported through the dialogs instead of escaping.
// Returns false after a fault.
bool RunGuarded(Dialogs& dialogs, const std::function<void()>& step);

}  // namespace varo
