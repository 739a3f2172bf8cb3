#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "app/cli/cli.h"
#include "model/design_results.h"
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

struct Figures {
    std::vector<std::string> messages;
    ComponentValues parts;
};

// The design screen opened on the start-up design, the entries typed, Accept pressed.
Figures OnTheScreen(const Entries& e) {
    DesignState state;
    ReadLastSession(state, "");
    ScriptedDialogs dialogs;
    DesignSession session;
    FrmDesign screen(state, dialogs, session);
    screen.show();
    const std::pair<const char*, const char*> typed[] = {{"txtFrequency", e.frequency},
                                                         {"txtPlate", e.plate},
                                                         {"txtIntermediate", e.intermediate},
                                                         {"txtNominalLoad", e.load},
                                                         {"txtQ", e.q}};
    for (const auto& [name, text] : typed)
        screen.findChild<QLineEdit*>(name)->setText(text);
    screen.findChild<QPushButton*>("cmdDesign")->click();
    return {dialogs.messages(), ComponentValues::Of(state)};
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

float JsonValue(const std::string& json, const std::string& key) {
    const std::size_t at = json.find("\"" + key + "\": ");
    return at == std::string::npos ? -1 : std::strtof(json.c_str() + at + key.size() + 4, nullptr);
}

Figures OnTheCommandLine(const Entries& e) {
    std::ostringstream out, err;
    cli::Run({"design", "--json", "--frequency", e.frequency, "--plate", e.plate, "--intermediate",
              e.intermediate, "--load", e.load, "--q", e.q},
             out, err);
    const std::string json = out.str();
    ComponentValues parts;
    const std::pair<const char*, float ComponentValues::*> keys[] = {
        {"C1", &ComponentValues::C1},   {"L1", &ComponentValues::L1},
        {"C2", &ComponentValues::C2},   {"L2", &ComponentValues::L2},
        {"C3", &ComponentValues::C3},   {"xC1", &ComponentValues::xC1},
        {"xL1", &ComponentValues::xL1}, {"xC2", &ComponentValues::xC2},
        {"xL2", &ComponentValues::xL2}, {"xC3", &ComponentValues::xC3}};
    for (const auto& [key, field] : keys)
        parts.*field = JsonValue(json, key);
    return {JsonMessages(json), parts};
}

// varo-cli opens the design screen's way before it applies its entries: after a Q error the
// parts the calculation did not reach, and the L section of a design without one, keep the
// values of the design the screen opened on.
TEST(ScreenAndCommandLine, AgreeOnMessagesAndComponents) {
    const Entries cases[] = {
        {"start-up design", "3.9M", "1500", "300", "50", "12"},
        {"Q too low", "3.9M", "5000", "50", "50", "5"},
        {"no L section", "7.1M", "1500", "50", "50", "12"},
        {"step up", "14.2M", "1500", "40", "50", "8"},
        {"limits", "5k", "0", "0", "0", "1"},
        {"unreadable", "abc", "1.2.3", "m", "9999999999999", ""},
    };
    for (const Entries& e : cases) {
        const Figures screen = OnTheScreen(e);
        const Figures command = OnTheCommandLine(e);
        EXPECT_EQ(command.messages, screen.messages) << e.name;
        EXPECT_EQ(command.parts, screen.parts) << e.name;
    }
}

}  // namespace
}  // namespace varo
