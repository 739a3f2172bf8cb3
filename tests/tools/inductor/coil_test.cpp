#include "tools/inductor/coil.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/fault.h"

namespace varo {
namespace {

class FakeCoilForm : public TextFields<CoilForm> {
  public:
    void SetText(CoilField field, std::string_view text) override {
        TextFields<CoilForm>::SetText(field, text);
        if (field == CoilField::WireDiameterResult) ++wireDiameterCleared;
    }
    void FocusGaugeEntry() override { ++gaugeFocused; }

    int wireDiameterCleared = 0;
    int gaugeFocused = 0;
};

class CoilTest : public ::testing::Test {
  protected:
    CoilTest() {
        state.unitSystem = kInches;
        state.targetInductance = 10e-6f;
    }

    // What the screen does when the user types into an entry.
    void Type(CoilField entry, const std::string& text) {
        form.SetText(entry, text);
        OnWindingEntryChanged(state, entry, text);
    }

    bool Compute() { return ComputeCoil(state, form, dialogs); }

    CoilState state;
    FakeCoilForm form;
    ScriptedDialogs dialogs;
};

// The screen shows the winding itself, not these figures; a gauge taken away
// takes its wire results with it.
TEST_F(CoilTest, WorkedExampleTenMicrohenriesThenNoGauge) {
    Type(CoilField::Diameter, "2");
    Type(CoilField::Length, "4");
    Type(CoilField::Gauge, "14");
    ASSERT_TRUE(Compute());
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_TRUE(state.unitsLocked);
    EXPECT_NEAR(state.wireLengthFeet, 11.595, 0.001);
    EXPECT_NEAR(state.quarterWaveKHz, 246000 / 11.595, 0.5);
    EXPECT_NEAR(state.wireResistance, 0.02888, 1e-5);
    EXPECT_EQ(form.gaugeFocused, 0);
    for (const char* gauge : {"", "  ", "-100"}) {
        Type(CoilField::Gauge, gauge);
        ASSERT_TRUE(Compute()) << gauge;
        EXPECT_EQ((std::vector{state.actualGauge, state.wireDiameter, state.wireResistance,
                               state.percentFill, state.criticalGauge}),
                  (std::vector{kNoGauge, 0.0f, 0.0f, 0.0f, 6.0f}))
            << gauge;
        EXPECT_FALSE(state.fillMarkedRed) << gauge;
    }
    EXPECT_EQ(form.wireDiameterCleared, 3);
}

// The missing measure solved from the other two, shown in its entry in the
// display unit; exactly 1000 turns pass.
TEST_F(CoilTest, SolvesTheMissingMeasure) {
    const struct {
        std::int16_t unit;
        std::string diameter, length, turns;
        CoilField shownEntry;
        std::string shownText;
        float diameterInches, lengthInches, turnsValue;
    } cases[] = {
        // clang-format off
        {kInches,      "2",    "",      "22",   CoilField::Length,   "3.94 ",   2.0f,            3.94f,           22.0f},
        {kInches,      "",     "4",     "22",   CoilField::Diameter, "2.0136 ", 2.0136f,         4.0f,            22.0f},
        {kInches,      "",     "100",   "1000", CoilField::Diameter, "0.20009 ", 0.20009f,       100.0f,          1000.0f},
        // All three given: the typed turns are replaced; the turns entry keeps its text.
        {kInches,      "2",    "4",     "5",    CoilField::Turns,    "5",       2.0f,            4.0f,            22.136f},
        // The shown text is what the calculation goes on with.
        {kCentimetres, "",     "10.16", "22",   CoilField::Diameter, "5.1146 ", 5.1146f / 2.54f, 4.0f,            22.0f},
        {kCentimetres, "5.08", "",      "22",   CoilField::Length,   "10.008 ", 2.0f,            10.008f / 2.54f, 22.0f},
        // clang-format on
    };
    for (const auto& c : cases) {
        state = CoilState{};
        state.unitSystem = c.unit;
        state.targetInductance = 10e-6f;
        Type(CoilField::Diameter, c.diameter);
        Type(CoilField::Length, c.length);
        Type(CoilField::Turns, c.turns);
        ASSERT_TRUE(Compute()) << c.shownText;
        EXPECT_TRUE(dialogs.events().empty());
        EXPECT_EQ(form.Text(c.shownEntry), c.shownText);
        EXPECT_NEAR(state.coilDiameter, c.diameterInches, 1e-5f) << c.shownText;
        EXPECT_NEAR(state.coilLength, c.lengthInches, 1e-5f) << c.shownText;
        EXPECT_NEAR(state.coilTurns, c.turnsValue, 1e-3f) << c.shownText;
    }
}

TEST_F(CoilTest, ArithmeticFaultIsReportedNotThrown) {
    state.targetInductance = 0;  // no turns at all: the pitch is a division by zero
    Type(CoilField::Diameter, "2");
    Type(CoilField::Length, "4");
    EXPECT_FALSE(Compute());
    EXPECT_EQ(dialogs.messages(),
              std::vector<std::string>{"The winding could not be computed: Division by zero. "
                                       "Please check the entries."});
}

TEST_F(CoilTest, ClearForgetsWindingAndResultsButKeepsTheUnit) {
    state.unitSystem = kCentimetres;
    state.inductorChoice = 2;
    Type(CoilField::Diameter, "5");
    Type(CoilField::Length, "10");
    Type(CoilField::Gauge, "14");
    ASSERT_TRUE(Compute());

    ClearCoil(state);
    const std::vector<float> cleared{
        state.coilDiameter,   state.coilLength,       state.coilTurns,     state.targetInductance,
        state.turnsPerInch,   state.wireLengthInches, state.criticalGauge, state.wireDiameter,
        state.wireResistance, state.percentFill};
    EXPECT_EQ(cleared, std::vector<float>(cleared.size(), 0.0f));
    EXPECT_EQ(state.unitSystem, kCentimetres);
    EXPECT_EQ(state.inductorChoice, 2);
    EXPECT_TRUE(state.unitsLocked);
    EXPECT_EQ(state.actualGauge, kNoGauge);
}

}  // namespace
}  // namespace varo
