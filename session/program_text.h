#pragma once

#include <string_view>

namespace varo {

// Program-wide texts, fixed before any screen shows them (`pi` is set by InitialiseConstants).
// Screen captions are "VARO - Version " + versionText + " - ...". The build takes the project's
// version from this line, so it is the one place to change it.
inline constexpr std::string_view versionText = "2.17";
// The owner's notice line of the welcome screen.
inline constexpr std::string_view ownerNoticeText = "Free to use and share for radio work";

}  // namespace varo
