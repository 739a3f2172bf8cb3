#pragma once

#include <string>

namespace varo {

// The folder that holds the last-session file: the executable's folder when it can be written
// (a program built or unpacked by the user), otherwise `configFolder` (an installed program in
// a system folder), which is then created if it does not exist yet.
std::string ChooseSessionFolder(const std::string& executableFolder,
                                const std::string& configFolder);

// The user's configuration folder for VARO, e.g. ~/.config/varo; empty when the system names
// none.
std::string UserConfigFolder();

// The last-session file for this run, chosen once at start-up from the two folders above.
std::string StartupSessionFilePath();

}  // namespace varo
