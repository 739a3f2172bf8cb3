#include "core/numtext.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <limits>
#include <span>
#include <type_traits>

#include "core/fault.h"
#include "core/numtext_decimal.h"

namespace varo {

using numtext::DecimalDigits;

namespace {

// ---- General number forms ------------------------------------------------------------------

enum class LeadingZero { Shown, Omitted };

template <typename T>
constexpr int SignificantDigits() {
    return std::is_same_v<T, float> ? 7 : 15;
}

// The shortest text that reads back as the same value, unless that needs more digits than the
// type shows; then the value rounded to those digits.
template <typename T>
DecimalDigits GeneralDigits(T v, int precision) {
    DecimalDigits d = numtext::ShortestDigits(v);
    if (d.count > precision) d = numtext::RoundToSignificant(static_cast<double>(v), precision);
    return d;
}

void AppendZeros(std::string& out, int n) {
    if (n > 0) out.append(static_cast<std::size_t>(n), '0');
}

void AppendDigits(std::string& out, const DecimalDigits& d, int first, int last) {
    out.append(d.digits.data() + first, d.digits.data() + last);
}

// "d.dddE+XX": one digit before the point, at least two exponent digits.
void AppendExponentForm(std::string& out, const DecimalDigits& d) {
    out += d.digits[0];
    if (d.count > 1) {
        out += '.';
        AppendDigits(out, d, 1, d.count);
    }
    const int exponent = d.LeadingExponent();
    out += 'E';
    out += exponent < 0 ? '-' : '+';
    const int magnitude = exponent < 0 ? -exponent : exponent;
    if (magnitude < 10) out += '0';
    char text[8];
    const auto result = std::to_chars(text, text + sizeof text, magnitude);
    out.append(text, result.ptr);
}

void AppendPlainForm(std::string& out, const DecimalDigits& d, LeadingZero leadingZero) {
    if (d.pointPos <= 0) {
        if (leadingZero == LeadingZero::Shown) out += '0';
        out += '.';
        AppendZeros(out, -d.pointPos);
        AppendDigits(out, d, 0, d.count);
    } else if (d.count <= d.pointPos) {
        AppendDigits(out, d, 0, d.count);
        AppendZeros(out, d.pointPos - d.count);
    } else {
        AppendDigits(out, d, 0, d.pointPos);
        out += '.';
        AppendDigits(out, d, d.pointPos, d.count);
    }
}

// The number without its sign. Exponent form once the integer part needs more digits than the
// type shows; small magnitudes switch to exponent form below 1E-04, so they keep their digits.
template <typename T>
void AppendGeneralMagnitude(std::string& out, T v, LeadingZero leadingZero, int precision) {
    if (std::isnan(v)) {
        out += "nan";
        return;
    }
    if (std::isinf(v)) {
        out += "inf";
        return;
    }
    if (v == 0) {
        out += '0';
        return;
    }
    const DecimalDigits d = GeneralDigits(std::fabs(v), precision);
    const int exponent = d.LeadingExponent();
    if (exponent >= precision || exponent < -4) {
        AppendExponentForm(out, d);
    } else {
        AppendPlainForm(out, d, leadingZero);
    }
}

enum class SignBlank { Shown, Omitted };

template <typename T>
std::string GeneralText(T v, SignBlank signBlank, LeadingZero leadingZero,
                        int precision = SignificantDigits<T>()) {
    std::string out;
    if (v < 0) {
        out += '-';
    } else if (signBlank == SignBlank::Shown) {
        out += ' ';
    }
    AppendGeneralMagnitude(out, v, leadingZero, precision);
    return out;
}

template <typename T>
std::string SignedGeneralText(T v) {
    return GeneralText(v, SignBlank::Shown, LeadingZero::Omitted);
}

template <typename T>
std::string FileText(T v) {
    std::string out = SignedGeneralText(v);
    std::replace(out.begin(), out.end(), ',', '.');
    out += ' ';
    return out;
}

// ---- Engineering formatters ----------------------------------------------------------------

// The formatters take finite values; an infinity shows as the largest single of its sign and NaN
// as no value at all, so no text ever reads "inf" or "nan".
float FiniteOrZero(float x) {
    if (std::isnan(x)) return 0.0f;
    if (std::isinf(x)) return std::copysign(FLT_MAX, x);
    return x;
}

// Conversion to single precision that saturates to infinity instead of leaving the range.
float SaturateToSingle(double x) {
    if (x > FLT_MAX) return std::numeric_limits<float>::infinity();
    if (x < -FLT_MAX) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(x);
}

struct PrefixBand {
    double threshold;  // the band applies from this value up
    double divisor;
    std::string_view unit;
    std::string_view pattern = {};  // only where the band fixes the pattern
};

enum class BandKey { Magnitude, Value };

// Thresholds are tested from the top down, the first match winning; anything below the lowest
// (and NaN) falls into the last row.
const PrefixBand& ChooseBand(std::span<const PrefixBand> bands, float x, BandKey key) {
    const double tested = key == BandKey::Magnitude ? std::fabs(double{x}) : double{x};
    for (const PrefixBand& band : bands.first(bands.size() - 1)) {
        if (tested >= band.threshold) return band;
    }
    return bands.back();
}

struct PatternStep {
    float above;  // the pattern applies when v is above this
    std::string_view pattern;
};

std::string_view ChoosePattern(std::span<const PatternStep> steps, double v) {
    for (const PatternStep& step : steps.first(steps.size() - 1)) {
        if (v > step.above) return step.pattern;
    }
    return steps.back().pattern;
}

// The value in its band, in single precision; where that range ends (a huge value divided by a
// small divisor) the double is kept, so the text still shows the size instead of "inf".
double ScaleIntoBand(float x, const PrefixBand& band) {
    const double scaled = double{x} / band.divisor;
    return std::fabs(scaled) <= FLT_MAX ? double{static_cast<float>(scaled)} : scaled;
}

// Rendering with the pattern and reading the text back drops the "." the pattern leaves on whole
// numbers and restores the leading zero below 1. The read-back value shows at most 7 significant
// digits, as a single does, so an extreme value gives "3.402823E+29G" and no text of any
// formatter grows beyond 15 characters.
std::string RenderScaled(double v, std::string_view pattern, std::string_view unit) {
    const double readBack = numtext::ReadLeadingNumber(FormatPattern(v, pattern));
    std::string out =
        GeneralText(readBack, SignBlank::Omitted, LeadingZero::Shown, SignificantDigits<float>());
    out += unit;
    return out;
}

// Threshold of each table's last row, which takes whatever the rows above leave.
constexpr double kOtherwise = std::numeric_limits<double>::infinity();

constexpr PrefixBand kEngBands[] = {
    {1e9, 1e9, "G"},     {1e6, 1e6, "M"},   {1000, 1000, "K"}, {1, 1, "  "},
    {0.001, 0.001, "m"}, {1e-6, 1e-6, "u"}, {1e-9, 1e-9, "n"}, {kOtherwise, 1e-12, "p"},
};

constexpr PatternStep kEngPatterns[] = {
    {1000, "######"}, {100, "####.#"}, {10, "###.##"}, {1, "##.###"}, {0, "#.####"},
};

constexpr PrefixBand kHzBands[] = {
    {1e9, 1e9, "G "}, {1e6, 1e6, "M "}, {1000, 1000, "K "}, {1, 1, "Hz"}, {kOtherwise, 0.001, "mH"},
};

constexpr PatternStep kHzPatterns[] = {
    {100, "####.##"},
    {10, "###.###"},
    {1, "##.####"},
    {0, "#.#####"},
};

constexpr PrefixBand kHenryBands[] = {
    {1e9, 1e9, "GH"},     {1e6, 1e6, "MH"},   {1000, 1000, "KH"},       {1, 1, "H"},
    {0.001, 0.001, "mH"}, {1e-6, 1e-6, "uH"}, {kOtherwise, 1e-9, "nH"},
};

// Shared by inductances and capacitances.
constexpr PatternStep kComponentPatterns[] = {
    {1000, "####.##"}, {100, "###.###"}, {10, "##.####"}, {1, "#.#####"}, {0, ".######"},
};

// The capacitance table pairs thresholds with divisors that differ (1e7 with 1e11), and its "nF"
// row can never match because it follows the failed test at 1e-8. Both are kept as they are:
// users compare these texts with earlier designs.
constexpr double kNoCapacitance = 0;
constexpr PrefixBand kFaradBands[] = {
    {1e7, 1e11, "GF"}, {1e4, 1e6, "MF"},     {10, 1000, "KF"},
    {1, 1, "F"},       {0.01, 0.001, "mF"},  {1e-8, 1e-6, "uF"},
    {1, 1e-9, "nF"},   {1e-14, 1e-12, "pF"}, {kOtherwise, kNoCapacitance, "  "},
};

constexpr PrefixBand kNumberBands[] = {
    {1e9, 1e9, "G", "##.###"},       {1e6, 1e6, "M", "##.###"}, {1000, 1000, "k", "##.###"},
    {100, 1, " ", "####.##"},        {10, 1, " ", "###.###"},   {1, 1, " ", "##.####"},
    {kOtherwise, 1, " ", "#.#####"},
};

// Below this magnitude a general value shows as zero.
constexpr double kNumberZeroLimit = 1e-5;

std::string FormatComponent(float x, std::span<const PrefixBand> bands) {
    x = FiniteOrZero(x);
    const PrefixBand& band = ChooseBand(bands, x, BandKey::Magnitude);
    const double v = band.divisor == kNoCapacitance ? 0.0 : ScaleIntoBand(x, band);
    if (v == 0) return "";
    return RenderScaled(v, ChoosePattern(kComponentPatterns, v), band.unit);
}

// ---- Entry parsing -------------------------------------------------------------------------

constexpr std::size_t kEntryCharacters = 12;
constexpr std::size_t kAcceptedDigitsLimit = 16;
constexpr double kEntryLimit = 1e10;

void TrimBlanks(std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        text.clear();
        return;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, first);
}

bool IsContinuationByte(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// Bytes a UTF-8 character announces by its first byte; anything malformed counts as one.
std::size_t AnnouncedLength(unsigned char byte) {
    if (byte >= 0xF0 && byte <= 0xF7) return 4;
    if (byte >= 0xE0) return byte <= 0xEF ? 3 : 1;
    if (byte >= 0xC0) return 2;
    return 1;
}

// Cuts text after its first `limit` characters without splitting a multi-byte character; stray
// bytes of malformed text count as one character each.
void CutToCharacters(std::string& text, std::size_t limit) {
    std::size_t i = 0;
    for (std::size_t characters = 0; i < text.size() && characters < limit; ++characters) {
        const std::size_t end = std::min(text.size(), i + AnnouncedLength(text[i]));
        ++i;
        while (i < end && IsContinuationByte(text[i]))
            ++i;
    }
    text.erase(i);
}

struct SuffixLetter {
    char letter;
    char accepted;
    double multiplier;
};

constexpr SuffixLetter kSuffixes[] = {
    {'p', 'p', 1e-12}, {'P', 'P', 1e-12}, {'n', 'n', 1e-9}, {'N', 'N', 1e-9},
    {'u', 'u', 1e-6},  {'U', 'U', 1e-6},  {'m', 'm', 1e-3}, {'k', 'k', 1e3},
    {'K', 'K', 1e3},   {'M', 'M', 1e6},   {'g', 'G', 1e9},  {'G', 'G', 1e9},
};

const SuffixLetter* FindSuffix(char ch) {
    for (const SuffixLetter& suffix : kSuffixes) {
        if (suffix.letter == ch) return &suffix;
    }
    return nullptr;
}

// The characters of an entry that make up its number, with the multiplier of its suffix.
class EntryScanner {
  public:
    void Take(char ch) {
        if (acc_.size() < kAcceptedDigitsLimit && !suffixSeen_ && ch >= '0' && ch <= '9') {
            acc_ += ch;
        }
        if (ch == ',') ch = '.';
        if (ch == '.' && !suffixSeen_ && !pointSeen_) {
            pointSeen_ = true;
            acc_ += '.';
        }
        if ((ch == '+' || ch == '-') && (acc_.empty() || acc_.back() == 'E')) acc_ += ch;
        if (!acc_.empty()) TakeLetter(ch);
    }

    double Value() const { return multiplier_ * numtext::ReadLeadingNumber(acc_); }

  private:
    void TakeLetter(char ch) {
        if ((ch == 'E' || ch == 'e') && !suffixSeen_) {
            if (exponentSeen_) return;
            exponentSeen_ = true;
            acc_ += 'E';
            pointSeen_ = true;  // no decimal point after an exponent
            return;
        }
        if (exponentSeen_ || suffixSeen_) return;
        if (const SuffixLetter* suffix = FindSuffix(ch)) {
            multiplier_ = suffix->multiplier;
            suffixSeen_ = true;
            acc_ += suffix->accepted;
        }
    }

    std::string acc_;
    double multiplier_ = 1.0;
    bool pointSeen_ = false;
    bool exponentSeen_ = false;
    bool suffixSeen_ = false;
};

// ---- Plot grid -----------------------------------------------------------------------------

constexpr float kGridSteps[] = {1.0f, 1.5f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 7.0f, 8.0f, 9.0f};
constexpr float kFirstDecade = 0.001f;
constexpr double kGridTopMargin = 1.0001;

void AppendGridLine(DesignState& state, float frequency) {
    const int index = CheckedIndex(state.gridLastIndex + 1, 0, kGridEntries - 1);
    state.gridFrequencies[static_cast<std::size_t>(index)] = frequency;
    state.gridLastIndex = static_cast<std::int16_t>(index);
}

}  // namespace

// ---- Public API ----------------------------------------------------------------------------

float ParseEngNumber(std::string& text) {
    TrimBlanks(text);
    CutToCharacters(text, kEntryCharacters);
    EntryScanner scanner;
    for (const char ch : text)
        scanner.Take(ch);
    // Clamped while still in double precision, so huge entries never leave the single range.
    const double value = std::clamp(scanner.Value(), -kEntryLimit, kEntryLimit);
    return static_cast<float>(value);
}

void ParseEngNumber(std::string& text, float& value) {
    value = ParseEngNumber(text);
}

std::string FormatEng(float x) {
    x = FiniteOrZero(x);
    const PrefixBand& band = ChooseBand(kEngBands, x, BandKey::Magnitude);
    const double v = ScaleIntoBand(x, band);
    if (v == 0) return "0  ";
    return RenderScaled(v, ChoosePattern(kEngPatterns, v), band.unit);
}

std::string FormatHz(float x) {
    x = FiniteOrZero(x);
    const PrefixBand& band = ChooseBand(kHzBands, x, BandKey::Value);
    const double v = ScaleIntoBand(x, band);
    if (v == 0) return "0.0 ";
    // The blank keeps positive frequencies aligned with negative ones.
    const std::string_view blank = v < 0 ? "" : " ";
    return std::string(blank) + RenderScaled(v, ChoosePattern(kHzPatterns, v), band.unit);
}

std::string FormatHenry(float x) {
    return FormatComponent(x, kHenryBands);
}

std::string FormatFarad(float x) {
    return FormatComponent(x, kFaradBands);
}

std::string FormatNumber(float x) {
    x = FiniteOrZero(x);
    const PrefixBand& band = ChooseBand(kNumberBands, x, BandKey::Magnitude);
    const bool belowZeroLimit = !(std::fabs(double{x}) > kNumberZeroLimit);
    const double v = belowZeroLimit ? 0.0 : ScaleIntoBand(x, band);
    if (v == 0) return " 0.0000  ";
    return RenderScaled(v, band.pattern, band.unit);
}

std::string FormatPattern(double v, std::string_view pattern) {
    // Far beyond any pattern in use; bounds the work for a malformed one.
    constexpr std::size_t kMaxFractionDigits = 30;
    const std::size_t point = pattern.find('.');
    const bool hasPoint = point != std::string_view::npos;
    const std::size_t fractionDigits =
        hasPoint
            ? std::min<std::size_t>(std::count(pattern.begin() + point + 1, pattern.end(), '#'),
                                    kMaxFractionDigits)
            : 0;

    std::string out;
    if (!std::isfinite(v)) return out;
    if (v < 0) out += '-';
    const DecimalDigits d = numtext::RoundToFraction(v, static_cast<int>(fractionDigits));
    if (d.pointPos > 0) {
        AppendDigits(out, d, 0, std::min(d.count, d.pointPos));
        AppendZeros(out, d.pointPos - d.count);
    }
    if (hasPoint) {
        out += '.';
        const int firstFraction = std::max(d.pointPos, 0);
        if (firstFraction < d.count) {
            AppendZeros(out, -d.pointPos);
            AppendDigits(out, d, firstFraction, d.count);
        }
    }
    return out;
}

std::string PlainText(float v) {
    return GeneralText(v, SignBlank::Omitted, LeadingZero::Shown);
}

std::string PlainText(double v) {
    return GeneralText(v, SignBlank::Omitted, LeadingZero::Shown);
}

std::string WriteForm(float v) {
    return GeneralText(v, SignBlank::Omitted, LeadingZero::Omitted);
}

std::string SignedText(float v) {
    return SignedGeneralText(v);
}

std::string SignedText(double v) {
    return SignedGeneralText(v);
}

std::string SignedText(int v) {
    char text[16];
    char* first = text;
    if (v >= 0) *first++ = ' ';
    const auto result = std::to_chars(first, text + sizeof text, v);
    return std::string(text, result.ptr);
}

std::string PrintForm(float v) {
    return SignedText(v) + ' ';
}

std::string PrintForm(double v) {
    return SignedText(v) + ' ';
}

std::string PrintForm(int v) {
    return SignedText(v) + ' ';
}

std::string FileForm(float v) {
    return FileText(v);
}

std::string FileForm(double v) {
    return FileText(v);
}

void BuildLogGrid(DesignState& state) {
    state.gridLastIndex = -1;
    const float top = SaturateToSingle(double{state.sweepStop} * kGridTopMargin);
    if (std::isnan(top) || top < 0.001) return;
    // The decade ends the scan once it overflows, so even an infinite top terminates.
    for (float decade = kFirstDecade; std::isfinite(decade); decade *= 10.0f) {
        for (const float step : kGridSteps) {
            const float candidate = decade * step;
            if (!std::isfinite(candidate) || top < candidate) return;
            if (candidate >= state.sweepStart) AppendGridLine(state, candidate);
        }
        if (top < decade * 10.0f) return;
    }
}

}  // namespace varo
