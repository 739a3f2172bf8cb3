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

// The screen shows the winding itself; these figures it does not.
TEST_F(CoilTest, WorkedExampleTenMicrohenries) {
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
}

struct SolveCase {
    const char* name;
    std::int16_t unitSystem;
    std::string diameter, length, turns;
    CoilField shownEntry;  // the entry the solved measure is written into
    std::string shownText;
    float diameterInches, lengthInches, turnsValue;
    float tolerance;
};

class CoilSolveTest : public CoilTest, public ::testing::WithParamInterface<SolveCase> {};

TEST_P(CoilSolveTest, SolvesTheMissingMeasure) {
    const SolveCase& c = GetParam();
    state.unitSystem = c.unitSystem;
    Type(CoilField::Diameter, c.diameter);
    Type(CoilField::Length, c.length);
    Type(CoilField::Turns, c.turns);

    ASSERT_TRUE(Compute());
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(form.Text(c.shownEntry), c.shownText);
    EXPECT_NEAR(state.coilDiameter, c.diameterInches, c.tolerance);
    EXPECT_NEAR(state.coilLength, c.lengthInches, c.tolerance);
    EXPECT_NEAR(state.coilTurns, c.turnsValue, c.tolerance);
}

INSTANTIATE_TEST_SUITE_P(
    Wheeler, CoilSolveTest,
    ::testing::Values(
        SolveCase{"LengthFromDiameterAndTurns", kInches, "2", "", "22", CoilField::Length, "3.94 ",
                  2.0f, 3.94f, 22.0f, 1e-5f},
        SolveCase{"DiameterFromLengthAndTurns", kInches, "", "4", "22", CoilField::Diameter,
                  "2.0136 ", 2.0136f, 4.0f, 22.0f, 1e-5f},
        // All three given: the typed turns are replaced; the turns entry keeps its text.
        SolveCase{"TurnsRecomputedWhenAllGiven", kInches, "2", "4", "5", CoilField::Turns, "5",
                  2.0f, 4.0f, 22.136f, 1e-3f},
        // Shown in centimetres, and the shown text is what the calculation goes on with.
        SolveCase{"DiameterShownInCentimetres", kCentimetres, "", "10.16", "22",
                  CoilField::Diameter, "5.1146 ", 5.1146f / 2.54f, 4.0f, 22.0f, 1e-5f},
        SolveCase{"LengthShownInCentimetres", kCentimetres, "5.08", "", "22", CoilField::Length,
                  "10.008 ", 2.0f, 10.008f / 2.54f, 22.0f, 1e-5f}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CoilTest, TurnLimitAcceptsExactlyOneThousand) {
    Type(CoilField::Length, "100");
    Type(CoilField::Turns, "1000");
    EXPECT_TRUE(Compute());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_EQ(state.turnsPerInch, 10.0f);
}

TEST_F(CoilTest, NoGaugeClearsTheWireResults) {
    Type(CoilField::Diameter, "2");
    Type(CoilField::Length, "4");
    Type(CoilField::Gauge, "14");
    ASSERT_TRUE(Compute());
    ASSERT_GT(state.wireResistance, 0.0f);

    for (const char* gauge : {"", "  ", "-100"}) {
        Type(CoilField::Gauge, gauge);
        ASSERT_TRUE(Compute()) << gauge;
        EXPECT_EQ(state.actualGauge, kNoGauge) << gauge;
        EXPECT_EQ(state.wireDiameter, 0.0f) << gauge;
        EXPECT_EQ(state.wireResistance, 0.0f) << gauge;
        EXPECT_EQ(state.percentFill, 0.0f) << gauge;
        EXPECT_FALSE(state.fillMarkedRed) << gauge;
        EXPECT_EQ(state.criticalGauge, 6.0f) << gauge;
    }
    EXPECT_EQ(form.wireDiameterCleared, 3);
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
