#pragma once

// Decimal digit strings for the number-text module: exact rounding of binary values to decimal
// places or significant digits, and reading a number from the start of a text. Private to
// core/numtext*.cpp.

#include <array>
#include <string_view>

namespace varo::numtext {

// A finite value as its significant decimal digits and the place of the decimal point:
// |value| = 0.d1 d2 d3 ... x 10^pointPos. No leading or trailing zero digits are kept, so zero
// has count 0. Large enough for every digit of any double printed exactly.
struct DecimalDigits {
    static constexpr int kCapacity = 1536;

    bool negative = false;
    int pointPos = 0;
    int count = 0;
    std::array<char, kCapacity> digits;

    bool IsZero() const { return count == 0; }
    // Decimal exponent of the leading digit in d.ddd form.
    int LeadingExponent() const { return pointPos - 1; }
    char DigitAt(int index) const { return index >= 0 && index < count ? digits[index] : '0'; }
};

// The shortest digits that read back as the same float (double).
DecimalDigits ShortestDigits(float v);
DecimalDigits ShortestDigits(double v);

// v rounded half away from zero to `precision` significant digits.
DecimalDigits RoundToSignificant(double v, int precision);

// v rounded half away from zero to `fractionDigits` places after the point.
DecimalDigits RoundToFraction(double v, int fractionDigits);

// The leading numeric value of a text: optional sign, digits, optional point and fraction,
// optional "E"/"e" with optional sign and digits. Reading stops at the first character that does
// not fit; no number at all gives 0. Magnitudes beyond the double range give an infinity, tiny
// ones 0.
double ReadLeadingNumber(std::string_view text);

}  // namespace varo::numtext
