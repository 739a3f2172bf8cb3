#include "tools/inductor/coil.h"

#include <gtest/gtest.h>

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
    void FocusGaugeEntry() override {}
    int wireDiameterCleared = 0;
};

struct CoilTest : ::testing::Test {
    void Start(std::int16_t unit, float inductance = 10e-6f) {
        state = CoilState{};
        state.unitSystem = unit;
        state.targetInductance = inductance;
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

// The screen shows the winding itself, not these figures; a gauge taken away takes its wire
// results with it; Clear forgets winding and results but keeps the unit.
TEST_F(CoilTest, WorkedExampleThenNoGaugeThenClear) {
    Start(kCentimetres);
    state.inductorChoice = 2;
    Type(CoilField::Diameter, "5.08");
    Type(CoilField::Length, "10.16");
    Type(CoilField::Gauge, "14");
    ASSERT_TRUE(Compute());
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_NEAR(state.wireLengthFeet, 11.595, 0.001);
    EXPECT_NEAR(state.quarterWaveKHz, 246000 / 11.595, 0.5);
    EXPECT_NEAR(state.wireResistance, 0.02888, 1e-5);
    for (const char* gauge : {"", "  ", "-100"}) {
        Type(CoilField::Gauge, gauge);
        ASSERT_TRUE(Compute()) << gauge;
        EXPECT_EQ((std::vector{state.actualGauge, state.wireDiameter, state.wireResistance,
                               state.percentFill, state.criticalGauge, float(state.fillMarkedRed)}),
                  (std::vector{kNoGauge, 0.0f, 0.0f, 0.0f, 6.0f, 0.0f}))
            << gauge;
    }
    EXPECT_EQ(form.wireDiameterCleared, 3);

    ClearCoil(state);
    const std::vector<float> cleared{
        state.coilDiameter,   state.coilLength,       state.coilTurns,     state.targetInductance,
        state.turnsPerInch,   state.wireLengthInches, state.criticalGauge, state.wireDiameter,
        state.wireResistance, state.percentFill};
    EXPECT_EQ(cleared, std::vector<float>(cleared.size(), 0.0f));
    EXPECT_EQ(std::tuple(state.unitSystem, state.inductorChoice, state.unitsLocked),
              std::tuple(kCentimetres, std::int16_t{2}, true));
}

// The missing measure solved from the other two, shown in its entry in the display unit;
// exactly 1000 turns pass.
TEST_F(CoilTest, SolvesTheMissingMeasure) {
    const struct {
        std::int16_t unit;
        std::string diameter, length, turns;
        CoilField shownEntry;
        std::string shownText;
        float diameterInches, lengthInches, turnsValue;
    } cases[] = {
        // clang-format off
        {kInches,      "2",    "",      "22",   CoilField::Length,   "3.94 ",   2.0f,            3.94f,  22.0f},
        {kInches,      "",     "100",   "1000", CoilField::Diameter, "0.20009 ", 0.20009f,       100.0f, 1000.0f},
        // All three given: the typed turns are replaced; the turns entry keeps its text.
        {kInches,      "2",    "4",     "5",    CoilField::Turns,    "5",       2.0f,            4.0f,   22.136f},
        // The shown text is what the calculation goes on with.
        {kCentimetres, "",     "10.16", "22",   CoilField::Diameter, "5.1146 ", 5.1146f / 2.54f, 4.0f,   22.0f},
        // clang-format on
    };
    for (const auto& c : cases) {
        Start(c.unit);
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
    Start(kInches, 0);  // no turns at all: the pitch is a division by zero
    Type(CoilField::Diameter, "2");
    Type(CoilField::Length, "4");
    EXPECT_FALSE(Compute());
    EXPECT_EQ(dialogs.messages(),
              std::vector<std::string>{"The winding could not be computed: Division by zero. "
                                       "Please check the entries."});
}

}  // namespace
}  // namespace varo
