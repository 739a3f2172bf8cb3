#pragma once

#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"

namespace varo {

// The last-session file keeps the design inputs between runs, beside the executable.
inline constexpr std::string_view kSessionFileName = "VARO.CFG";

// `folder` joined with the file name; `folder` is taken without a trailing separator.
std::string SessionFilePath(const std::string& folder);

// Sets the default inputs (3.9 MHz, 1500, 300, 50 ohms, Q 12, multiplier 1) and overwrites them
// with what the file holds. Never reports: a missing or unreadable file, or one that is no regular
// file (a pipe, a device), ends the read silently with the five main inputs back at their
// defaults. Only the first 64 KiB are read, far more than the ten useful lines it needs.
void ReadLastSession(DesignState& state, const std::string& sessionFilePath);

// Writes the current inputs (setting `spare` to 0 first) with `date` on the date line, whole or
// not at all. On a failure it beeps, shows "The Last-Session file was not written correctly."
// with the path and reason as detail, and returns false; the previous file stays as it was.
bool WriteLastSession(DesignState& state, const std::string& sessionFilePath, Dialogs& dialogs,
                      std::string_view date);
// The same with today's date.
bool WriteLastSession(DesignState& state, const std::string& sessionFilePath, Dialogs& dialogs);

}  // namespace varo
