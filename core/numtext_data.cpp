#include "core/numtext_data.h"

#include <charconv>

namespace varo {

void AppendDataNumber(std::string& text, double v) {
    char buffer[32];
    // The same digits for 0 and -0.
    const double value = v == 0 ? 0.0 : v;
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 10);
    text.append(buffer, end.ptr);
}

}  // namespace varo
