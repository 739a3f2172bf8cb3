#pragma once

#include "core/design_state.h"
#include "model/design_form.h"
#include "platform/dialogs.h"

namespace varo {

// The least plate load the design screen takes (ohms); a smaller entry is raised to it.
inline constexpr float kLeastPlateLoad = 0.1f;

// The smallest pi-section Q an entry or a step may leave.
inline constexpr float kMinimumQ = 1.001f;

// Reads an entry with the engineering parser; the caller decides how to show it back.
float ReadField(const DesignForm& form, DesignField field);

// Fills the five design entries with the design's values as the screen shows them.
void ShowDesignInputs(const DesignState& state, DesignForm& form);

// Reads the five design entries into the state in a fixed order, raising each value that is
// below its limit to the limit, rewriting the field and saying so. The intermediate checks run
// before the plate entry is read, so they compare with the plate load of the previous design.
void ValidateInputs(DesignState& state, DesignForm& form, Dialogs& dialogs);

}  // namespace varo
