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

// Writes the circuit file to `path`. On any failure it only beeps and returns false; a partly
// written file stays on disk.
bool WriteQuarnFile(const DesignState& state, const std::string& path, Dialogs& dialogs,
                    std::string_view date);
// The same with today's date.
bool WriteQuarnFile(const DesignState& state, const std::string& path, Dialogs& dialogs);

}  // namespace varo
