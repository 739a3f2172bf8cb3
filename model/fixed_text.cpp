#include "model/fixed_text.h"

#include <charconv>

namespace varo {

std::string FixedText(double value, int decimals) {
    char buffer[64];
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    return error == std::errc() ? std::string(buffer, end) : "?";
}

std::string TrimmedText(double value, int decimals) {
    std::string text = FixedText(value, decimals);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

}  // namespace varo
