#pragma once

#include <string_view>

namespace varo::fuzz {

// Arbitrary bytes as entry text (the value then through every formatter), as a last-session file,
// as an overlay file and as a one-port Touchstone load: any crash, undefined behaviour or result
// out of bounds aborts.
void NumberText(std::string_view bytes);
void LastSession(std::string_view bytes);
void Overlay(std::string_view bytes);
void TouchstoneLoad(std::string_view bytes);

}  // namespace varo::fuzz
