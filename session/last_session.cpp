#include "session/last_session.h"

#include <array>
#include <utility>

#include "core/fault.h"
#include "core/numtext.h"
#include "platform/system.h"
#include "platform/textfile.h"

namespace varo {

namespace {

constexpr std::string_view kHeader = "VARO last-session file";
constexpr std::string_view kWriteFailed = "The Last-Session file was not written correctly.";
// A session file holds thirteen short lines; anything beyond this is not read.
constexpr std::size_t kMostSessionBytes = 64 * 1024;

// The five main inputs, in the order the file holds them.
std::array<float DesignState::*, 5> MainInputs() {
    return {&DesignState::frequency, &DesignState::plateR, &DesignState::intermediateR,
            &DesignState::loadR, &DesignState::piQ};
}

// The three values that the older, shorter form of the file lacks.
std::array<float DesignState::*, 3> LaterInputs() {
    return {&DesignState::peakSwing, &DesignState::spare, &DesignState::rfPower};
}

void SetMainDefaults(DesignState& state) {
    state.frequency = 3900000.0f;
    state.plateR = 1500.0f;
    state.intermediateR = 300.0f;
    state.loadR = 50.0f;
    state.piQ = 12.0f;
}

// Yields the useful lines of the file: blank lines and lines starting with "*" are skipped, and
// of the rest only the text after the first ":" is kept (the whole line when there is none).
// Labels are never compared, so edited or missing labels do no harm.
class UsefulLineReader {
  public:
    explicit UsefulLineReader(TextFileReader& file) : file_(file) {}

    bool Next(std::string& value) {
        std::string line;
        while (file_.ReadLine(line)) {
            if (line.empty() || line.front() == '*') continue;
            const std::size_t colon = line.find(':');
            value = colon == std::string::npos ? line : line.substr(colon + 1);
            return true;
        }
        return false;
    }

  private:
    TextFileReader& file_;
};

// Parses the next useful lines into `fields`; false when the file ends first, the values
// already stored staying.
template <std::size_t N>
bool ReadValues(UsefulLineReader& lines, DesignState& state,
                const std::array<float DesignState::*, N>& fields) {
    std::string text;
    for (float DesignState::*field : fields) {
        if (!lines.Next(text)) return false;
        ParseEngNumber(text, state.*field);
    }
    return true;
}

void ReadSessionValues(DesignState& state, const std::string& sessionFilePath) {
    TextFileReader file(sessionFilePath, kMostSessionBytes);
    SetMainDefaults(state);
    UsefulLineReader lines(file);
    std::string ignored;
    if (!lines.Next(ignored) || !lines.Next(ignored)) return;  // header and date
    if (!ReadValues(lines, state, MainInputs())) return;
    if (file.AtEnd()) return;  // the older form ends after the fifth value
    ReadValues(lines, state, LaterInputs());
}

void BuildSessionText(DesignState& state, std::string_view date, FileText& text) {
    text.Line({kHeader});
    text.Line();
    text.Line({date});
    text.Line();
    state.spare = 0.0f;
    const std::array<std::pair<std::string_view, float>, 8> labelled = {{
        {"Frequency: ", state.frequency},
        {"Plate impedance: ", state.plateR},
        {"Intermediate impedance: ", state.intermediateR},
        {"Load impedance: ", state.loadR},
        {"PI-section Q: ", state.piQ},
        {"Peak plate voltage swing: ", state.peakSwing},
        {"Spare: ", state.spare},
        {"RF power: ", state.rfPower},
    }};
    for (const auto& [label, value] : labelled)
        text.Line({label, WriteForm(value)});
    text.Line();
}

}  // namespace

std::string SessionFilePath(const std::string& folder) {
    return folder + "/" + std::string(kSessionFileName);
}

void ReadLastSession(DesignState& state, const std::string& sessionFilePath) {
    SetMainDefaults(state);
    state.genMultiplier = 1.0f;
    try {
        ReadSessionValues(state, sessionFilePath);
    } catch (const FileError&) {
        SetMainDefaults(state);
    } catch (const ArithmeticFault&) {
        SetMainDefaults(state);
    }
}

bool WriteLastSession(DesignState& state, const std::string& sessionFilePath, Dialogs& dialogs,
                      std::string_view date) {
    const auto failure = SaveFailure(sessionFilePath, [&] {
        WriteTextFile(sessionFilePath,
                      [&](FileText& text) { BuildSessionText(state, date, text); });
    });
    if (!failure) return true;
    dialogs.Beep();
    dialogs.ShowFailure(kWriteFailed, *failure);
    return false;
}

bool WriteLastSession(DesignState& state, const std::string& sessionFilePath, Dialogs& dialogs) {
    return WriteLastSession(state, sessionFilePath, dialogs, TodayShortDate());
}

}  // namespace varo
