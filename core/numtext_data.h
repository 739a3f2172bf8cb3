#pragma once

#include <string>

namespace varo {

// Numbers in measured-data files (Touchstone): up to 10 significant digits (finer than any
// measurement laid over them, and enough for every single-precision frequency), no trailing
// zeros, no "." on whole numbers, exponent form below 1e-4 and from 1e10 ("2.5e-05"), "."
// whatever the locale. Appended to `text`: a data file holds many thousands of them. `v` must
// be finite.
void AppendDataNumber(std::string& text, double v);

}  // namespace varo
