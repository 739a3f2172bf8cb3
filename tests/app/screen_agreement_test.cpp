#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "app/cli/cli.h"
#include "model/design.h"
#include "screens/design/qt/frm_design.h"
#include "session/last_session.h"

namespace varo {
namespace {

// Frequency, plate, intermediate, load and Q as typed.
using Entries = std::array<std::string, 5>;
// The figures both show, by their JSON keys; an absent figure is NaN.
using Figures = std::map<std::string, float>;

constexpr float kAbsent = std::numeric_limits<float>::quiet_NaN();

Figures FiguresOf(const DesignResults& r) {
    const ComponentValues& p = r.components;
    const LSectionValues l =
        p.lSection.value_or(LSectionValues{kAbsent, kAbsent, kAbsent, kAbsent});
    const SectionPhases phases = r.phases.value_or(SectionPhases{kAbsent, kAbsent});
    return {{"C1", p.C1},
            {"L1", p.L1},
            {"C2", p.C2},
            {"L2", l.L2},
            {"C3", l.C3},
            {"xC1", p.xC1},
            {"xL1", p.xL1},
            {"xC2", p.xC2},
            {"xL2", l.xL2},
            {"xC3", l.xC3},
            {"piPhase", phases.piPhase},
            {"lPhase", phases.lPhase},
            {"vPlate", r.stresses.vPlate},
            {"iC1", r.stresses.iC1},
            {"iL1", r.stresses.iL1},
            {"iL2", r.stresses.iL2}};
}

// A figure of the report, from its derived values or its stresses.
const nlohmann::json& FigureIn(const nlohmann::json& report, const std::string& key) {
    const auto& derived = report.at("derived");
    return derived.contains(key) ? derived.at(key) : report.at("stresses").at(key);
}

// varo-cli opens the design screen's way before it applies its entries, and reports what the
// screen shows after the same Accept: after a Q error its phases and stresses are those of that
// press, not of a second recalculation; a design without L section has none on either.
void ExpectAgreement(const Entries& e) {
    Design design;
    ReadLastSession(design.state(), "");
    ScriptedDialogs dialogs;
    DesignSession session;
    FrmDesign screen(design, dialogs, session);
    screen.show();
    const char* names[] = {"txtFrequency", "txtPlate", "txtIntermediate", "txtNominalLoad", "txtQ"};
    for (std::size_t i = 0; i < e.size(); ++i)
        screen.findChild<QLineEdit*>(names[i])->setText(QString::fromStdString(e[i]));
    screen.findChild<QPushButton*>("cmdDesign")->click();

    std::ostringstream out, err;
    cli::Run({"design", "--json", "--frequency", e[0], "--plate", e[1], "--intermediate", e[2],
              "--load", e[3], "--q", e[4]},
             out, err);
    const auto report = nlohmann::json::parse(out.str());
    EXPECT_EQ(report.at("messages").get<std::vector<std::string>>(), dialogs.messages()) << e[0];
    for (const auto& [key, shown] : FiguresOf(design.results())) {
        const auto& figure = FigureIn(report, key);
        if (std::isnan(shown))
            EXPECT_TRUE(figure.is_null()) << key << " " << e[0];
        else
            EXPECT_EQ(figure.get<float>(), shown) << key << " " << e[0];
    }
}

TEST(ScreenAndCommandLine, AgreeOnMessagesAndFigures) {
    const Entries cases[] = {
        {"3.9M", "1500", "300", "50", "12"},         // the start-up design
        {"3.9M", "5000", "50", "50", "5"},           // Q too low
        {"7.1M", "1500", "50", "50", "12"},          // no L section
        {"14.2M", "1500", "40", "50", "8"},          // step up
        {"5k", "0", "0", "0", "1"},                  // limits
        {"abc", "1.2.3", "m", "9999999999999", ""},  // unreadable
    };
    for (const Entries& e : cases)
        ExpectAgreement(e);
    // Random designs, many with a Q too low for their ratio.
    std::mt19937 random(17);
    const auto pick = [&](double low, double high) {
        return std::to_string(
            std::exp(std::uniform_real_distribution(std::log(low), std::log(high))(random)));
    };
    for (int i = 0; i < 60; ++i)
        ExpectAgreement(
            {pick(1e5, 5e7), pick(200, 8000), pick(20, 500), pick(10, 300), pick(1, 30)});
}

}  // namespace
}  // namespace varo
