#include "model/touchstone_load.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "platform/textfile.h"

namespace varo {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Values rounded for the file may put a lossless load a hair outside the passive region; within
// this share of its size it is taken as lossless.
constexpr double kPassiveTolerance = 1e-9;

// What is wrong with the line being read; the reader adds the line's number.
struct LineFault {
    std::string reason;
};

[[noreturn]] void Refuse(std::string reason) {
    throw LineFault{std::move(reason)};
}

// The next line from `position` on, without its line end (LF, CR LF or a lone CR).
std::string_view NextLine(std::string_view text, std::size_t& position) {
    const std::size_t end = std::min(text.find_first_of("\r\n", position), text.size());
    const std::string_view line = text.substr(position, end - position);
    position = end + 1;
    if (position < text.size() && text[end] == '\r' && text[position] == '\n') ++position;
    return line;
}

// The words of a line, between blanks.
class Words {
  public:
    explicit Words(std::string_view text) : text_(text) {}
    bool Next(std::string_view& word) {
        const std::size_t start = text_.find_first_not_of(kBlanks, position_);
        if (start == std::string_view::npos) return false;
        const std::size_t end = std::min(text_.find_first_of(kBlanks, start), text_.size());
        word = text_.substr(start, end - start);
        position_ = end;
        return true;
    }

  private:
    std::string_view text_;
    std::size_t position_ = 0;
};

// A word as a message shows it: in quotes, cut short, anything unprintable as '?' (the file may
// be anything but text).
std::string Quoted(std::string_view word) {
    constexpr std::size_t kShown = 24;
    std::string shown(1, '"');
    for (const char ch : word.substr(0, kShown))
        shown += (ch >= ' ' && ch <= '~') ? ch : '?';
    if (word.size() > kShown) shown.append(3, '.');
    shown += '"';
    return shown;
}

std::string ShortNumber(double value) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 9);
    return std::string(text.data(), end.ptr);
}

// A C-locale decimal with an optional sign and exponent.
double Number(std::string_view word) {
    std::string_view digits = word;
    if (digits.starts_with('+') && !digits.substr(1).starts_with('-')) digits.remove_prefix(1);
    double value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (error == std::errc::invalid_argument || stop != end || std::isnan(value))
        Refuse(Quoted(word) + " is not a number");
    if (error == std::errc::result_out_of_range || std::isinf(value))
        Refuse(Quoted(word) + " is out of range");
    return value;
}

enum class Parameter { S, Y, Z };
enum class Format { MagnitudeAngle, DecibelAngle, RealImaginary };

template <class T>
struct Named {
    std::string_view name;
    T value;
    bool operator==(const Named&) const = default;
};

constexpr Named<double> kUnits[] = {{"Hz", 1}, {"kHz", 1e3}, {"MHz", 1e6}, {"GHz", 1e9}};
constexpr Named<Parameter> kParameters[] = {
    {"S", Parameter::S}, {"Y", Parameter::Y}, {"Z", Parameter::Z}};
constexpr Named<Format> kFormats[] = {
    {"MA", Format::MagnitudeAngle}, {"DB", Format::DecibelAngle}, {"RI", Format::RealImaginary}};

// ASCII only: std::tolower follows the locale, which a desktop session may set to anything.
char LowerLetter(char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}

bool SameLetters(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b,
                              [](char x, char y) { return LowerLetter(x) == LowerLetter(y); });
}

template <class T, std::size_t N>
const Named<T>* Lookup(const Named<T> (&table)[N], std::string_view word) {
    const auto found = std::ranges::find_if(
        table, [&](const Named<T>& entry) { return SameLetters(entry.name, word); });
    return found == std::end(table) ? nullptr : found;
}

struct Options {
    Named<double> unit = kUnits[3];
    Parameter parameter = Parameter::S;
    Format format = Format::MagnitudeAngle;
    double referenceR = 50;
    bool operator==(const Options&) const = default;
};

// The option line's words after "#"; each group may be given once, in any order.
class OptionLineReader {
  public:
    Options Read(std::string_view text) {
        Words words(text);
        for (std::string_view word; words.Next(word);)
            Take(word, words);
        return options_;
    }

  private:
    void Take(std::string_view word, Words& words) {
        if (const auto unit = Lookup(kUnits, word)) {
            Once("frequency unit");
            options_.unit = *unit;
        } else if (const auto parameter = Lookup(kParameters, word)) {
            Once("parameter");
            options_.parameter = parameter->value;
        } else if (const auto format = Lookup(kFormats, word)) {
            Once("format");
            options_.format = format->value;
        } else if (SameLetters(word, "R")) {
            Once("reference resistance");
            options_.referenceR = ReferenceResistance(words);
        } else if (SameLetters(word, "G") || SameLetters(word, "H")) {
            Refuse(std::string(word) +
                   " parameters describe a two-port; a one-port file holds S, Y or Z parameters");
        } else {
            Refuse(
                "the option " + Quoted(word) +
                " is unknown (known: Hz, kHz, MHz, GHz, S, Y, Z, MA, DB, RI and R with a value)");
        }
    }

    void Once(std::string_view group) {
        if (std::ranges::find(given_, group) != given_.end())
            Refuse("the option line gives the " + std::string(group) + " twice");
        given_.push_back(group);
    }

    static double ReferenceResistance(Words& words) {
        std::string_view word;
        if (!words.Next(word)) Refuse("R is not followed by the reference resistance");
        const double ohms = Number(word);
        if (!(ohms > 0))
            Refuse("the reference resistance must be above 0 ohms; it is " + std::string(word));
        return ohms;
    }

    Options options_;
    std::vector<std::string_view> given_;
};

Complex Polar(double magnitude, double degrees) {
    const double radians = std::fmod(degrees, 360.0) * std::numbers::pi / 180;
    return {magnitude * std::cos(radians), magnitude * std::sin(radians)};
}

// The pair as the complex value the file means.
Complex PairValue(Format format, double first, double second) {
    switch (format) {
        case Format::MagnitudeAngle:
            if (first < 0) Refuse("the magnitude " + ShortNumber(first) + " is below 0");
            return Polar(first, second);
        case Format::DecibelAngle: {
            const double magnitude = std::pow(10.0, first / 20);
            if (std::isinf(magnitude))
                Refuse("the level " + ShortNumber(first) + " dB is too high");
            return Polar(magnitude, second);
        }
        case Format::RealImaginary:
            break;
    }
    return {first, second};
}

double Magnitude(Complex z) {
    return std::hypot(z.re, z.im);
}

Complex FromReflection(Complex gamma, double referenceR) {
    const double size = Magnitude(gamma);
    if (size > 1 + kPassiveTolerance)
        Refuse("the load reflects more than it receives (|S11| = " + ShortNumber(size) + ")");
    if (size > 1) gamma = (1 / size) * gamma;
    const Complex one{1, 0};
    return referenceR * ((one + gamma) / (one - gamma));
}

Complex Impedance(Parameter parameter, Complex value, double referenceR) {
    switch (parameter) {
        case Parameter::S:
            return FromReflection(value, referenceR);
        case Parameter::Y:
            return Complex{referenceR, 0} / value;
        case Parameter::Z:
            break;
    }
    return referenceR * value;
}

// A passive load of finite impedance; a resistance below 0 by no more than rounding becomes 0.
Complex PassiveLoad(Complex z) {
    if (!std::isfinite(z.re) || !std::isfinite(z.im)) Refuse("the load has no finite impedance");
    if (z.re < -kPassiveTolerance * Magnitude(z))
        Refuse("the load's resistance is below 0 (" + ShortNumber(z.re) + " ohms)");
    return {std::max(z.re, 0.0), z.im};
}

// The numbers of a data line: there must be three, but all are counted for the message.
std::array<double, 3> DataNumbers(std::string_view line) {
    std::array<double, 3> numbers{};
    std::size_t count = 0;
    Words words(line);
    for (std::string_view word; words.Next(word); ++count) {
        const double value = Number(word);
        if (count < numbers.size()) numbers[count] = value;
    }
    if (count != numbers.size())
        Refuse("a one-port line holds a frequency and two numbers; it has " +
               std::to_string(count));
    return numbers;
}

std::string_view FirstWord(std::string_view line) {
    Words words(line);
    std::string_view word;
    words.Next(word);
    return word;
}

class OnePortReader {
  public:
    void TakeLine(std::string_view line) {
        line = line.substr(0, line.find('!'));
        const std::size_t start = line.find_first_not_of(kBlanks);
        if (start == std::string_view::npos) return;
        line.remove_prefix(start);
        if (line.front() == '#') {
            TakeOptionLine(line.substr(1));
        } else if (line.front() == '[') {
            Refuse("Touchstone 2.0 keywords are not read; save the file as version 1.1");
        } else {
            TakeDataLine(line);
        }
    }

    OnePortLoad Finish() {
        if (load_.points.empty()) throw LoadFileError("the file holds no data lines");
        load_.referenceR = options_.referenceR;
        return std::move(load_);
    }

  private:
    void TakeOptionLine(std::string_view text) {
        const Options options = OptionLineReader().Read(text);
        if (optionsGiven_ && options != options_)
            Refuse("a second option line changes the format; one file holds one format");
        if (!optionsGiven_ && !load_.points.empty())
            Refuse("the option line must come before the first data line");
        options_ = options;
        optionsGiven_ = true;
    }

    void TakeDataLine(std::string_view line) {
        if (load_.points.size() == kMaxLoadPoints)
            Refuse("the file holds more than " + std::to_string(kMaxLoadPoints) + " points");
        const auto [frequency, first, second] = DataNumbers(line);
        const std::string_view frequencyWord = FirstWord(line);
        const double hertz = Hertz(frequency, frequencyWord);
        const Complex value = PairValue(options_.format, first, second);
        const Complex z = Impedance(options_.parameter, value, options_.referenceR);
        load_.points.push_back({hertz, PassiveLoad(z)});
        previousFrequencyWord_ = frequencyWord;
    }

    double Hertz(double frequency, std::string_view word) const {
        const double hertz = frequency * options_.unit.value;
        if (!(frequency > 0)) Refuse("the frequency " + FrequencyText(word) + " is not above 0");
        if (std::isinf(hertz)) Refuse("the frequency " + FrequencyText(word) + " is out of range");
        if (!load_.points.empty() && !(hertz > load_.points.back().frequency))
            Refuse("the frequency " + FrequencyText(word) + " is not above the one before (" +
                   FrequencyText(previousFrequencyWord_) + ")");
        return hertz;
    }

    // As the file writes it, so that the message shows what the reader sees in the file.
    std::string FrequencyText(std::string_view word) const {
        return std::string(word) + " " + std::string(options_.unit.name);
    }

    Options options_;
    bool optionsGiven_ = false;
    OnePortLoad load_;
    std::string_view previousFrequencyWord_;
};

}  // namespace

OnePortLoad ParseOnePortTouchstone(std::string_view text) {
    if (text.size() > kMaxLoadFileBytes)
        throw LoadFileError("the file is larger than " +
                            std::to_string(kMaxLoadFileBytes / (1024 * 1024)) + " MiB");
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    OnePortReader reader;
    int number = 0;
    for (std::size_t position = 0; position < text.size();) {
        ++number;
        try {
            reader.TakeLine(NextLine(text, position));
        } catch (const LineFault& fault) {
            throw LoadFileError(number, fault.reason);
        }
    }
    return reader.Finish();
}

OnePortLoad ReadOnePortTouchstone(const std::string& path) {
    InputFile file(path);
    return ParseOnePortTouchstone(ReadAtMost(file, kMaxLoadFileBytes));
}

}  // namespace varo
