#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <random>
#include <string_view>
#include <sstream>
#include <string>
#include <vector>

#include "app/cli/cli.h"
#include "model/design.h"
#include "screens/design/qt/frm_design.h"
#include "session/last_session.h"

namespace varo {
namespace {

struct Entries {
    const char* name;
    const char* frequency;
    const char* plate;
    const char* intermediate;
    const char* load;
    const char* q;
};

// The figures both show, by their JSON keys; an absent figure is NaN.
using FigureMap = std::map<std::string, float>;

struct Figures {
    std::vector<std::string> messages;
    FigureMap figures;
};

constexpr float kAbsent = std::numeric_limits<float>::quiet_NaN();

FigureMap FiguresOf(const DesignResults& r) {
    const ComponentValues& p = r.components;
    const LSectionValues l = p.lSection.value_or(LSectionValues{kAbsent, kAbsent, kAbsent, kAbsent});
    const SectionPhases phases = r.phases.value_or(SectionPhases{kAbsent, kAbsent});
    return {{"C1", p.C1},         {"L1", p.L1},          {"C2", p.C2},
            {"L2", l.L2},         {"C3", l.C3},          {"xC1", p.xC1},
            {"xL1", p.xL1},       {"xC2", p.xC2},        {"xL2", l.xL2},
            {"xC3", l.xC3},       {"piPhase", phases.piPhase}, {"lPhase", phases.lPhase},
            {"vPlate", r.stresses.vPlate}, {"iC1", r.stresses.iC1}, {"iL1", r.stresses.iL1},
            {"iL2", r.stresses.iL2}};
}

// The design screen opened on the start-up design, the entries typed, Accept pressed.
Figures OnTheScreen(const Entries& e) {
    Design design;
    ReadLastSession(design.state(), "");
    ScriptedDialogs dialogs;
    DesignSession session;
    FrmDesign screen(design, dialogs, session);
    screen.show();
    const std::pair<const char*, const char*> typed[] = {{"txtFrequency", e.frequency},
                                                         {"txtPlate", e.plate},
                                                         {"txtIntermediate", e.intermediate},
                                                         {"txtNominalLoad", e.load},
                                                         {"txtQ", e.q}};
    for (const auto& [name, text] : typed)
        screen.findChild<QLineEdit*>(name)->setText(text);
    screen.findChild<QPushButton*>("cmdDesign")->click();
    return {dialogs.messages(), FiguresOf(design.results())};
}

// The JSON strings of the "messages" array, unescaped.
std::vector<std::string> JsonMessages(const std::string& json) {
    std::vector<std::string> messages;
    std::size_t i = json.find("\"messages\": [") + 13;
    while (i < json.size() && json[i] != ']') {
        if (json[i++] != '"') continue;
        std::string text;
        for (; json[i] != '"'; ++i) {
            if (json[i] != '\\') {
                text += json[i];
                continue;
            }
            const char escaped = json[++i];
            text += escaped == 'r' ? '\r' : escaped == 'n' ? '\n' : escaped;
        }
        ++i;
        messages.push_back(text);
    }
    return messages;
}

// A number, NaN for null; -1 for a key that is missing.
float JsonValue(const std::string& json, const std::string& key) {
    const std::size_t at = json.find("\"" + key + "\": ");
    if (at == std::string::npos) return -1;
    const char* value = json.c_str() + at + key.size() + 4;
    return std::string_view(value, 4) == "null" ? kAbsent : std::strtof(value, nullptr);
}

Figures OnTheCommandLine(const Entries& e) {
    std::ostringstream out, err;
    cli::Run({"design", "--json", "--frequency", e.frequency, "--plate", e.plate, "--intermediate",
              e.intermediate, "--load", e.load, "--q", e.q},
             out, err);
    const std::string json = out.str();
    FigureMap figures = FiguresOf(DesignResults{});
    for (auto& [key, value] : figures)
        value = JsonValue(json, key);
    return {JsonMessages(json), figures};
}

// Equal, NaN matching NaN.
bool SameFigures(const FigureMap& a, const FigureMap& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.first == y.first &&
               (x.second == y.second || (std::isnan(x.second) && std::isnan(y.second)));
    });
}

// varo-cli opens the design screen's way before it applies its entries, and reports what the
// screen shows after the same Accept: after a Q error its phases and stresses are those of that
// press, not of a second recalculation; a design without L section has none on either.
TEST(ScreenAndCommandLine, AgreeOnMessagesAndFigures) {
    const Entries cases[] = {
        {"start-up design", "3.9M", "1500", "300", "50", "12"},
        {"Q too low", "3.9M", "5000", "50", "50", "5"},
        {"no L section", "7.1M", "1500", "50", "50", "12"},
        {"step up", "14.2M", "1500", "40", "50", "8"},
        {"limits", "5k", "0", "0", "0", "1"},
        {"unreadable", "abc", "1.2.3", "m", "9999999999999", ""},
    };
    const auto agree = [](const Entries& e) {
        const Figures screen = OnTheScreen(e);
        const Figures command = OnTheCommandLine(e);
        EXPECT_EQ(command.messages, screen.messages) << e.name;
        EXPECT_TRUE(SameFigures(command.figures, screen.figures)) << e.name;
    };
    for (const Entries& e : cases)
        agree(e);
    // Random designs, many with a Q too low for their ratio.
    std::mt19937 random(17);
    const auto pick = [&](double low, double high) {
        return std::to_string(std::exp(std::uniform_real_distribution(std::log(low), std::log(high))(random)));
    };
    for (int i = 0; i < 60; ++i) {
        const std::string f = pick(1e5, 5e7), plate = pick(200, 8000), mid = pick(20, 500),
                          load = pick(10, 300), q = pick(1, 30);
        agree({"random", f.c_str(), plate.c_str(), mid.c_str(), load.c_str(), q.c_str()});
    }
}

}  // namespace
}  // namespace varo
