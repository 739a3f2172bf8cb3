#pragma once

#include "core/design_state.h"
#include "core/reporter.h"
#include "platform/dialogs.h"
#include "model/design_form.h"
#include "model/design_results.h"

namespace varo {

// Fills the five design entries with the design's values as the screen shows them.
void ShowDesignInputs(const DesignState& state, DesignForm& form);

// Reads the five design entries into the state in a fixed order, raising each value that is
// below its limit to the limit, rewriting the field and saying so. The intermediate checks run
// before the plate entry is read, so they compare with the plate load of the previous design.
void ValidateInputs(DesignState& state, DesignForm& form, Dialogs& dialogs);

// The one sequence every design action ends with: validate, then CalculateDesign, then the
// view shows the results. Returns false when a step reported a fault; the view is shown in any
// case so the screen matches what the state now holds.
bool RecalculateDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       DesignView& view);

// Screen load: the entries show the design, then the load's results are shown. No validation.
void LoadDesignScreen(DesignState& state, DesignForm& form, Reporter& reporter, DesignView& view);

// The 1 % adjust buttons.
enum class Adjustment { QMinus, QPlus, IntermediateMinus, IntermediatePlus };

// Validates, steps the value, shows it in its entry, then runs the whole recalculation.
bool AdjustDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignView& view, Adjustment which);

// Accept (`cmdDesign`): recalculates and shows the generator resistance in its entry.
bool AcceptDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignView& view);

// `txtRinputMult` changed: a generator resistance of at least 1 mohm sets the multiplier and
// recalculates; a smaller value is ignored. Returns whether a recalculation ran.
bool OnGeneratorResistanceChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                  Reporter& reporter, DesignView& view);

// `UpDown3` moved to `position`: 0.1 per step into `txtRinputMultEntry`, multiplier = entry / 20.
bool OnGeneratorSpinChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                            Reporter& reporter, DesignView& view, int position);

// `txtUpDown1` changed: its text becomes the intermediate entry, then recalculates.
bool OnIntermediateSpinTextChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                   Reporter& reporter, DesignView& view);

// Typing in one of the five design entries only offers Accept; nothing is recalculated yet.
void OnDesignEntryEdited(DesignForm& form);

}  // namespace varo
