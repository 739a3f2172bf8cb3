#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/textfile.h"

namespace varo {

enum class TouchstoneKind {
    OnePort,  // .s1p: the input reflection referred to the plate load, the load side terminated
    TwoPort,  // .s2p: the network alone, both ports referred to 50 ohms
};

// The file name's extension decides, in any case of letters; nothing for any other name.
std::optional<TouchstoneKind> TouchstoneKindOf(std::string_view path);

// The save dialog of the Touchstone export: two-port and one-port filters, "Default.s2p".
SaveDialogRequest TouchstoneSaveRequest();

// Touchstone 1.1 text, magnitude and angle, over the sweep's frequencies (sweepFrequency at
// 0..sweepIntervals), from the component values as the state holds them (nudges included) with
// the analysis's Q. The network has C3 across the load also where the L section steps up.
// Throws ArithmeticFault (a zero Q or load); `text` then holds the lines built before the fault.
void BuildTouchstone(const DesignState& state, TouchstoneKind kind, FileText& text);
std::string TouchstoneText(const DesignState& state, TouchstoneKind kind);

// Writes the file whose extension (.s1p or .s2p) `path` names. Another extension shows "A
// Touchstone file name ends in .s2p (two-port) or .s1p (one-port)" and writes nothing; a
// failure while writing shows "We could not write the Touchstone file", leaving what was
// written. Returns whether the file was written.
bool WriteTouchstoneFile(const DesignState& state, const std::string& path, Dialogs& dialogs);

}  // namespace varo
