#include "screens/plot/overlay_files.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <vector>

#include "core/fault.h"
#include "core/numtext.h"
#include "platform/save_file.h"
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

std::string OverlayText(const DesignState& state, const std::array<float, kSweepPoints>& values) {
    FileText text;
    for (int i = 0; i <= state.sweepIntervals; ++i) {
        const int at = CheckedIndex(i, 0, kSweepPoints - 1);
        text.Line({FileForm(state.sweepFrequency[at]), FileForm(values[at])});
    }
    return text.str();
}

// A list item longer than this is no number the overlay could use.
constexpr std::size_t kLongestItem = 64;
// Twice the largest overlay any sweep writes; a larger file is refused without reading it all.
constexpr std::size_t kMostOverlayBytes = 1024 * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// One list item: an optional sign, digits with "." as the decimal point, an optional exponent.
OverlayReadError ParseListNumber(std::string_view item, float& value) {
    if (!item.empty() && item.front() == '+') item.remove_prefix(1);
    const char* end = item.data() + item.size();
    const auto [stop, error] = std::from_chars(item.data(), end, value);
    if (stop != end || item.empty()) return OverlayReadError::NotANumber;
    if (error == std::errc::result_out_of_range) return OverlayReadError::OutOfRange;
    if (error != std::errc() || !std::isfinite(value)) return OverlayReadError::NotANumber;
    return OverlayReadError::None;
}

// Takes the file's numbers as list input, chunk by chunk as they are read, and stops at the first
// thing that makes the file unusable. Runs of blanks, commas and line ends count as one separator,
// so a line's two numbers and the next line's read as consecutive values.
class ListNumberReader {
  public:
    OverlayReadError Take(std::string_view chunk) {
        if (atStart_ && chunk.substr(0, kByteOrderMark.size()) == kByteOrderMark)
            chunk.remove_prefix(kByteOrderMark.size());
        atStart_ = false;
        for (const char ch : chunk) {
            const OverlayReadError error = TakeCharacter(ch);
            if (error != OverlayReadError::None) return error;
        }
        return OverlayReadError::None;
    }

    // The end of the file ends the last item.
    OverlayReadError Finish() {
        // An empty file is read as no pairs at all: its curve draws nothing, without a word.
        return EndItem();
    }

    const std::vector<float>& numbers() const { return numbers_; }

  private:
    OverlayReadError TakeCharacter(char ch) {
        if (kListSeparators.find(ch) != std::string_view::npos) return EndItem();
        if (item_.empty() && numbers_.size() == kMostNumbers)
            return OverlayReadError::TooManyPoints;
        if (item_.size() == kLongestItem) return OverlayReadError::NotANumber;
        item_ += ch;
        return OverlayReadError::None;
    }

    OverlayReadError EndItem() {
        if (item_.empty()) return OverlayReadError::None;
        float value = 0;
        const OverlayReadError error = ParseListNumber(item_, value);
        item_.clear();
        if (error == OverlayReadError::None) numbers_.push_back(value);
        return error;
    }

    std::vector<float> numbers_;
    std::string item_;
    bool atStart_ = true;
};

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

OverlayReadError ReadNumbers(InputFile& file, ListNumberReader& numbers) {
    char buffer[16 * 1024];
    for (std::size_t total = 0;;) {
        const std::size_t count = file.Read(buffer, sizeof buffer);
        if (count == 0) return numbers.Finish();
        total += count;
        const OverlayReadError error = numbers.Take(std::string_view(buffer, count));
        if (error != OverlayReadError::None) return error;
        if (total > kMostOverlayBytes) return OverlayReadError::TooLarge;
    }
}

OverlayReadResult ReadNumbers(const std::string& path, ListNumberReader& numbers) {
    try {
        InputFile file(path);
        return OverlayReadResult{ReadNumbers(file, numbers), {}};
    } catch (const FileError& failure) {
        return OverlayReadResult{OverlayReadError::Unreadable, failure.what()};
    }
}

}  // namespace

bool WriteOverlayFiles(const DesignState& state, const std::string& folder, Dialogs& dialogs) {
    const auto failure = SaveFailure(folder, [&] {
        const FileContents files[] = {
            {PathIn(folder, kOverlayTransmissionFile), OverlayText(state, state.sweepTransmission)},
            {PathIn(folder, kOverlayReturnFile), OverlayText(state, state.sweepReturn)},
        };
        SaveFiles(files);
    });
    if (!failure) return true;
    dialogs.Beep();
    dialogs.ShowFailure(kWriteFailed, *failure);
    return false;
}

OverlayReadResult ReadOverlayFile(const std::string& path, DesignState& state,
                                  OverlayData& overlay) {
    ListNumberReader numbers;
    OverlayReadResult result = ReadNumbers(path, numbers);
    if (result.ok()) result.error = CheckPairs(numbers.numbers());
    if (result.ok()) TakePairs(numbers.numbers(), state, overlay);
    return result;
}

std::string OverlayReadErrorText(std::string_view fileName, OverlayReadError error) {
    std::string problem;
    switch (error) {
        case OverlayReadError::None:
            return {};
        case OverlayReadError::Unreadable:
            problem = " could not be read";
            break;
        case OverlayReadError::TooLarge:
            problem = " is larger than any overlay file (over 1 MiB)";
            break;
        case OverlayReadError::NotANumber:
            problem = " holds text that is not a number";
            break;
        case OverlayReadError::OutOfRange:
            problem = " holds a number that is out of range";
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
            dialogs.ShowFailure(OverlayReadErrorText(name, result.error), result.detail, {},
                                MessageIcon::Exclamation);
            return false;
        }
        if (draw) draw(overlay.overlayLastIndex, 0.0f, state.plotFloorDb, curve);
    }
    return true;
}

}  // namespace varo
