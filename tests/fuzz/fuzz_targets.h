#pragma once

#include <string_view>

namespace varo::fuzz {

// Arbitrary bytes as entry text (the value then through every formatter), as a last-session file
// and as an overlay file: any crash, undefined behaviour or result out of bounds aborts.
void NumberText(std::string_view bytes);
void LastSession(std::string_view bytes);
void Overlay(std::string_view bytes);

}  // namespace varo::fuzz
