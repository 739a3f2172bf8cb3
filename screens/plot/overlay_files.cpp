#include "screens/plot/overlay_files.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <vector>

#include "core/fault.h"
#include "core/numtext.h"
#include "platform/system.h"
#include "platform/textfile.h"

namespace varo {

namespace {

constexpr std::string_view kWriteFailed = "We are unable to write an overlay file";
constexpr std::string_view kFilesMissing = "Files enabling overlay have not been written.";
constexpr std::string_view kFilesMissingTitle = "File Test";
constexpr std::string_view kListSeparators = " \t,\r\n";
constexpr std::size_t kMostNumbers = 2 * static_cast<std::size_t>(kSweepPoints);

std::string PathIn(const std::string& folder, std::string_view name) {
    return (std::filesystem::path(folder) / name).string();
}

void BuildOverlayText(const DesignState& state, const std::array<float, kSweepPoints>& values,
                      FileText& text) {
    for (int i = 0; i <= state.sweepIntervals; ++i) {
        const int at = CheckedIndex(i, 0, kSweepPoints - 1);
        text.Line({FileForm(state.sweepFrequency[at]), FileForm(values[at])});
    }
}

// One list item: an optional sign, digits with "." as the decimal point, an optional exponent.
bool ParseListNumber(std::string_view item, float& value) {
    if (!item.empty() && item.front() == '+') item.remove_prefix(1);
    const char* end = item.data() + item.size();
    const auto [stop, error] = std::from_chars(item.data(), end, value);
    return error == std::errc() && stop == end && std::isfinite(value);
}

// Takes the file's numbers as list input. Runs of blanks, commas and line ends count as one
// separator, so a line's two numbers and the next line's read as consecutive values.
OverlayReadError ParseListNumbers(std::string_view text, std::vector<float>& numbers) {
    for (std::size_t start = text.find_first_not_of(kListSeparators);
         start != std::string_view::npos; start = text.find_first_not_of(kListSeparators, start)) {
        const std::size_t end = std::min(text.find_first_of(kListSeparators, start), text.size());
        if (numbers.size() == kMostNumbers) return OverlayReadError::TooManyPoints;
        float value = 0;
        if (!ParseListNumber(text.substr(start, end - start), value))
            return OverlayReadError::NotANumber;
        numbers.push_back(value);
        start = end;
    }
    return OverlayReadError::None;
}

// The overlay is drawn on a logarithmic frequency axis, so every frequency must be above 0.
OverlayReadError CheckPairs(const std::vector<float>& numbers) {
    if (numbers.size() % 2 != 0) return OverlayReadError::OddCount;
    for (std::size_t i = 0; i < numbers.size(); i += 2)
        if (!(numbers[i] > 0)) return OverlayReadError::FrequencyNotPositive;
    return OverlayReadError::None;
}

void TakePairs(const std::vector<float>& numbers, DesignState& state, OverlayData& overlay) {
    const std::size_t pairs = numbers.size() / 2;
    for (std::size_t i = 0; i < pairs; ++i) {
        state.sweepFrequency[i] = numbers[2 * i];
        overlay.overlayValue[i] = numbers[2 * i + 1];
    }
    overlay.overlayLastIndex = static_cast<std::int16_t>(static_cast<int>(pairs) - 1);
}

OverlayReadError ReadNumbers(const std::string& path, std::vector<float>& numbers) {
    try {
        const TextFileReader file(path);
        return ParseListNumbers(file.text(), numbers);
    } catch (const FileError&) {
        return OverlayReadError::Unreadable;
    }
}

}  // namespace

bool WriteOverlayFiles(const DesignState& state, const std::string& folder, Dialogs& dialogs) {
    try {
        WriteTextFile(PathIn(folder, kOverlayTransmissionFile), [&](FileText& text) {
            BuildOverlayText(state, state.sweepTransmission, text);
        });
        WriteTextFile(PathIn(folder, kOverlayReturnFile),
                      [&](FileText& text) { BuildOverlayText(state, state.sweepReturn, text); });
        return true;
    } catch (const FileError&) {
    } catch (const ArithmeticFault&) {
    }
    dialogs.Beep();
    dialogs.ShowMessage(kWriteFailed);
    return false;
}

OverlayReadResult ReadOverlayFile(const std::string& path, DesignState& state,
                                  OverlayData& overlay) {
    std::vector<float> numbers;
    OverlayReadError error = ReadNumbers(path, numbers);
    if (error == OverlayReadError::None) error = CheckPairs(numbers);
    if (error == OverlayReadError::None) TakePairs(numbers, state, overlay);
    return OverlayReadResult{error};
}

std::string OverlayReadErrorText(std::string_view fileName, OverlayReadError error) {
    std::string problem;
    switch (error) {
        case OverlayReadError::None:
            return {};
        case OverlayReadError::Unreadable:
            problem = " could not be read";
            break;
        case OverlayReadError::NotANumber:
            problem = " holds text that is not a number";
            break;
        case OverlayReadError::OddCount:
            problem = " ends with a frequency that has no value";
            break;
        case OverlayReadError::TooManyPoints:
            problem = " holds more than " + std::to_string(kSweepPoints) + " points";
            break;
        case OverlayReadError::FrequencyNotPositive:
            problem = " holds a frequency of 0 or below";
            break;
    }
    return std::string(fileName) + problem + "; the overlay was not drawn.";
}

bool ReadOverlayFiles(DesignState& state, OverlayData& overlay, const std::string& folder,
                      Dialogs& dialogs, const OverlayDrawer& draw) {
    const std::array<std::string_view, 2> names = {kOverlayTransmissionFile, kOverlayReturnFile};
    for (std::int16_t curve = 0; curve < 2; ++curve) {
        const std::string_view name = names[curve];
        const auto path = FindFileIgnoringCase(folder, std::string(name));
        if (!path) {
            dialogs.ShowMessage(kFilesMissing, kFilesMissingTitle, MessageIcon::Exclamation);
            return false;
        }
        const OverlayReadResult result = ReadOverlayFile(*path, state, overlay);
        if (!result.ok()) {
            dialogs.ShowMessage(OverlayReadErrorText(name, result.error), {},
                                MessageIcon::Exclamation);
            return false;
        }
        if (draw) draw(overlay.overlayLastIndex, 0.0f, state.plotFloorDb, curve);
    }
    return true;
}

}  // namespace varo
