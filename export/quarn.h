#pragma once

#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/textfile.h"

namespace varo {

// The save dialog of the Quarn export: no proposed name, overwrite prompt on.
SaveDialogRequest QuarnSaveRequest();

// The whole circuit file from the analysis ladder that SetupLadder built, `date` on line 3.
// Throws ArithmeticFault (a ladder position beyond the arrays, an overflowing product); `text`
// then holds the lines built before the fault.
void BuildQuarnFile(const DesignState& state, std::string_view date, FileText& text);
std::string QuarnFileText(const DesignState& state, std::string_view date);

// Writes the circuit file to `path`, whole or not at all. On any failure it only beeps (the path
// and reason go with the beep as detail) and returns false; a file already at `path` stays as it
// was.
bool WriteQuarnFile(const DesignState& state, const std::string& path, Dialogs& dialogs,
                    std::string_view date);
// The same with today's date.
bool WriteQuarnFile(const DesignState& state, const std::string& path, Dialogs& dialogs);

}  // namespace varo
