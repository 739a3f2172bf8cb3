#pragma once

#include <string>

namespace varo {

// `value` with exactly `decimals` decimals ("12.30"), the same in every locale.
std::string FixedText(double value, int decimals);
// The same with trailing zeros dropped ("12.3", "12").
std::string TrimmedText(double value, int decimals);

}  // namespace varo
