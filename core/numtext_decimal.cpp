#include "core/numtext_decimal.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

namespace varo::numtext {

namespace {

// Room for the longest exact fixed text of a double: 309 integer digits, the point and 1074
// fraction digits (the smallest denormal), plus the sign.
constexpr int kTextCapacity = DecimalDigits::kCapacity;

bool IsDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

// Reads the output of std::to_chars (fixed or scientific) into significant digits.
DecimalDigits FromCharsText(const char* first, const char* last) {
    DecimalDigits d;
    const char* p = first;
    if (p < last && *p == '-') {
        d.negative = true;
        ++p;
    }
    bool inFraction = false;
    for (; p < last && *p != 'e'; ++p) {
        const char ch = *p;
        if (ch == '.') {
            inFraction = true;
            continue;
        }
        const bool leadingZero = d.count == 0 && ch == '0';
        if (!leadingZero) d.digits[d.count++] = ch;
        if (!inFraction && !leadingZero) ++d.pointPos;
        if (inFraction && leadingZero) --d.pointPos;
    }
    if (p < last) {
        int exponent = 0;
        const char* expFirst = p + 1;
        if (expFirst < last && *expFirst == '+') ++expFirst;
        std::from_chars(expFirst, last, exponent);
        d.pointPos += exponent;
    }
    while (d.count > 0 && d.digits[d.count - 1] == '0')
        --d.count;
    if (d.count == 0) d.pointPos = 0;
    return d;
}

template <typename... Format>
DecimalDigits PrintDigits(auto v, Format... format) {
    char text[kTextCapacity];
    const auto result = std::to_chars(text, text + kTextCapacity, v, format...);
    return FromCharsText(text, result.ptr);
}

// Number of binary places after the point in the exact value of v (0 for whole numbers).
int FractionBits(double v) {
    int exponent = 0;
    const double fraction = std::frexp(std::fabs(v), &exponent);
    const auto mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
    if (mantissa == 0) return 0;
    const int bits = 53 - exponent - std::countr_zero(mantissa);
    return bits > 0 ? bits : 0;
}

// Every digit of the exact binary value: a value with k binary places has k decimal places.
DecimalDigits ExactDigits(double v) {
    return PrintDigits(v, std::chars_format::fixed, FractionBits(v));
}

// Cuts d to its first `keep` digits, rounding half away from zero on the digit at `keep`.
// The caller guarantees that digit decides the rounding (it is exact or not a tie).
void RoundAt(DecimalDigits& d, int keep) {
    if (keep >= d.count) return;
    if (keep < 0) {
        d.count = 0;
        d.pointPos = 0;
        return;
    }
    const bool roundUp = d.digits[keep] >= '5';
    d.count = keep;
    if (roundUp) {
        int i = d.count - 1;
        while (i >= 0 && d.digits[i] == '9')
            --i;
        if (i < 0) {
            d.digits[0] = '1';
            d.count = 1;
            ++d.pointPos;
        } else {
            ++d.digits[i];
            d.count = i + 1;
        }
    }
    while (d.count > 0 && d.digits[d.count - 1] == '0')
        --d.count;
    if (d.count == 0) d.pointPos = 0;
}

// A quick text one digit longer than needed decides the rounding unless that extra digit is a
// 5, which may be a tie (or the rounded form of one); then the exact digits decide.
bool NeedsExactDigits(const DecimalDigits& quick, int keep) {
    return quick.DigitAt(keep) == '5';
}

// Decimal exponent of the leading digit of a numeric text (digits with an optional point);
// used to tell an overflow from an underflow.
long long LeadingDecimalExponent(std::string_view mantissa, long long exponent) {
    const std::size_t point = mantissa.find('.');
    const std::size_t firstNonZero = mantissa.find_first_not_of("0.");
    if (firstNonZero == std::string_view::npos) return std::numeric_limits<long long>::min();
    if (point == std::string_view::npos || firstNonZero < point) {
        const std::size_t wholeDigits = point == std::string_view::npos ? mantissa.size() : point;
        return exponent + static_cast<long long>(wholeDigits - firstNonZero) - 1;
    }
    return exponent - static_cast<long long>(firstNonZero - point);
}

}  // namespace

DecimalDigits ShortestDigits(float v) {
    return PrintDigits(v, std::chars_format::scientific);
}

DecimalDigits ShortestDigits(double v) {
    return PrintDigits(v, std::chars_format::scientific);
}

DecimalDigits RoundToSignificant(double v, int precision) {
    DecimalDigits d = PrintDigits(v, std::chars_format::scientific, precision);
    if (NeedsExactDigits(d, precision)) d = ExactDigits(v);
    RoundAt(d, precision);
    return d;
}

DecimalDigits RoundToFraction(double v, int fractionDigits) {
    DecimalDigits d = PrintDigits(v, std::chars_format::fixed, fractionDigits + 1);
    if (NeedsExactDigits(d, d.pointPos + fractionDigits)) d = ExactDigits(v);
    RoundAt(d, d.pointPos + fractionDigits);
    return d;
}

double ReadLeadingNumber(std::string_view text) {
    std::size_t i = 0;
    const std::size_t n = text.size();
    bool negative = false;
    if (i < n && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';

    const std::size_t mantissaFirst = i;
    std::size_t digitCount = 0;
    for (; i < n && IsDigit(text[i]); ++i)
        ++digitCount;
    if (i < n && text[i] == '.') {
        for (++i; i < n && IsDigit(text[i]); ++i)
            ++digitCount;
    }
    if (digitCount == 0) return 0.0;
    const std::size_t mantissaLast = i;

    // The exponent counts only when at least one digit follows the "E" and its sign.
    long long exponent = 0;
    if (i < n && (text[i] == 'E' || text[i] == 'e')) {
        std::size_t j = i + 1;
        bool negativeExponent = false;
        if (j < n && (text[j] == '+' || text[j] == '-')) negativeExponent = text[j++] == '-';
        if (j < n && IsDigit(text[j])) {
            for (; j < n && IsDigit(text[j]); ++j) {
                if (exponent < 100000) exponent = exponent * 10 + (text[j] - '0');
            }
            if (negativeExponent) exponent = -exponent;
            i = j;
        }
    }

    double value = 0.0;
    const char* first = text.data() + mantissaFirst;
    const auto result = std::from_chars(first, text.data() + i, value);
    if (result.ec == std::errc::result_out_of_range) {
        const std::string_view mantissa = text.substr(mantissaFirst, mantissaLast - mantissaFirst);
        const bool overflow = LeadingDecimalExponent(mantissa, exponent) > 0;
        value = overflow ? std::numeric_limits<double>::infinity() : 0.0;
    } else if (result.ec != std::errc()) {
        value = 0.0;
    }
    return negative ? -value : value;
}

}  // namespace varo::numtext
