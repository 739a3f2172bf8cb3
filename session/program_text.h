#pragma once

#include <string>
#include <string_view>

namespace varo {

// Program-wide texts, fixed before any screen shows them (`pi` is set by InitialiseConstants).
// The build takes the project's version from this line, so it is the one place to change it.
inline constexpr std::string_view versionText = "2.17";

// A screen's window caption: the program, its version and the screen's own name.
inline std::string ScreenCaption(std::string_view screen) {
    return "VARO - Version " + std::string(versionText) + " - " + std::string(screen);
}
// The owner's notice line of the welcome screen.
inline constexpr std::string_view ownerNoticeText = "Free to use and share for radio work";

}  // namespace varo
