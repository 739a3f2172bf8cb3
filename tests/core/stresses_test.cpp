#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "core/fault.h"
#include "core/tank_losses.h"
#include "design_fixture.h"

namespace varo {
namespace {

using namespace test;

std::unique_ptr<DesignState> DesignAtPower(const DesignInputs& inputs, float rfPower) {
    auto state = MakeDesign(inputs);
    RecordingReporter reporter;
    EXPECT_TRUE(Recalculate(*state, reporter));
    state->rfPower = rfPower;
    state->peakSwing = 2500;
    return state;
}

// The notes: three on the stresses (with RF power only), four on the generator.
std::vector<StressText> WithNotes(std::vector<StressText> texts, bool withPower) {
    const char* const notes[] = {"Stresses shown are based on a peak",
                                 "plate voltage swing of 2.5k volts",
                                 "and an RF power level of 1k watts",
                                 "The transmission plot is based on a generator",
                                 "output impedance of 1.5k ohms.",
                                 "You may enter a new generator output",
                                 "impedance here:"};
    for (int line = withPower ? 0 : 3; line < 7; ++line)
        texts.push_back({StressPart::Note, notes[line], line});
    return texts;
}

// Worked from the circuit: vMid = sqrt(Ri P), iC = V / Xc, iL1 = vMid / Ri x sqrt(1 + q2^2),
// phases -(atan q1 + atan q2) and -atan(QL).
TEST(ShowStresses, TextsByPart) {
    using P = StressPart;
    const struct {
        DesignInputs inputs;
        float rfPower;
        std::vector<StressText> texts;
    } cases[] = {
        {kReferenceDesign,  // step down: C3 merged into C2
         1000,
         {{P::C1Voltage, "2.5kVpeak"},
          {P::C2Voltage, "774.6 Vpeak"},
          {P::C1Current, "6.8314 Arms"},
          {P::C2Current, "10.716 Arms"},
          {P::L1Current, "6.88 Arms"},
          {P::L2Current, "4.4721 Arms"},
          {P::TotalPhase, "Total phase: -223.7 deg."}}},
        {{3.9e6f, 1500, 50, 100, 12},  // step up: C3 across the load shows no current
         1000,
         {{P::C1Voltage, "2.5kVpeak"},
          {P::C2Voltage, "316.23 Vpeak"},
          {P::C3Voltage, "447.21 Veak"},
          {P::C1Current, "8.4751 Arms"},
          {P::C3Current, " 0.0000  Arms"},
          {P::C2Current, "7.2453 Arms"},
          {P::L1Current, "8.5144 Arms"},
          // lPhase 0: (vLoad - vMid) / xL2 = (316.228 - 223.607) / 50
          {P::L2Current, "1.8524 Arms"},
          {P::TotalPhase, "Total phase: -142.81 deg."}}},
        {kReferenceDesign,  // without power the C1 current stays at its starting value 1
         0,
         {{P::C1Current, "1 Arms"},
          {P::C2Current, " 0.0000  Arms"},
          {P::TotalPhase, "Total phase: -223.7 deg."}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.texts.back().text);
        auto state = DesignAtPower(c.inputs, c.rfPower);
        RecordingReporter reporter;
        EXPECT_EQ(ShowStresses(*state, reporter).texts, WithNotes(c.texts, c.rfPower > 0));
        EXPECT_EQ(reporter.events, std::vector<std::string>(c.rfPower > 0 ? 0 : 1, "close"));
    }
    auto state = DesignAtPower(kReferenceDesign, 1000);
    state->C2 = 0;
    RecordingReporter reporter;
    EXPECT_THROW(ShowStresses(*state, reporter), ArithmeticFault);
}

// 2000 -> 50 ohms at 3.8 MHz, Q 12 (C1 222.8 pF, L1 8.804 uH, C2 1140.7 pF) with coils of Q 300
// agrees with an independent calculation (rule of thumb 1 - Q / Q_coil: 96 %). The input takes the
// load's RF power plus every part's dissipation; parts a design lacks dissipate nothing.
TEST(TankLosses, AgreesWithAnIndependentCalculationAndPowersAddUp) {
    const struct {
        DesignInputs inputs;
        TankQ q;
        double efficiencyPercent = 0, lossDb = 0, zInReal = 0, zInImag = 0;  // 0: not worked out
    } cases[] = {
        {{3.8e6f, 2000, 50, 50, 12}, {300, 1e15}, 96.154, 0.1703, 1924.35, -14.07},
        {{3.8e6f, 2000, 50, 50, 12}, {300, 2000}, 95.600, 0.1954, 1914.40, -15.16},
        {{3.9e6f, 1500, 300, 50, 12}, {}},  // steps down: C3 merged into C2
        {{7e6f, 2500, 25, 75, 12}, {}},     // steps up: C3 across the load
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.inputs.plateR << " Qc " << c.q.capacitor);
        const auto state = CalculatedDesign(c.inputs);
        state->rfPower = 1000;
        const TankLosses losses = AnalyzeTankLosses(*state, c.q);
        const double dissipated = std::accumulate(losses.watts.begin(), losses.watts.end(), 0.0);
        EXPECT_DOUBLE_EQ(losses.loadWatts, 1000);
        EXPECT_NEAR(losses.loadWatts + dissipated, losses.inputWatts, 1e-9 * losses.inputWatts);
        for (TankPart part : {TankPart::L1, TankPart::C1, TankPart::C2})
            EXPECT_GT(losses.Watts(part), 0);
        const bool hasLSection = c.inputs.intermediateR != c.inputs.loadR;
        EXPECT_EQ(losses.Watts(TankPart::L2) > 0, hasLSection);
        EXPECT_EQ(losses.Watts(TankPart::C3) > 0, hasLSection);
        if (c.efficiencyPercent == 0) continue;
        EXPECT_NEAR(losses.efficiencyPercent, c.efficiencyPercent, 0.001);
        EXPECT_NEAR(losses.lossDb, c.lossDb, 0.0001);
        EXPECT_NEAR(losses.zInReal, c.zInReal, 0.01);
        EXPECT_NEAR(losses.zInImag, c.zInImag, 0.01);
    }
    const auto state = CalculatedDesign(cases[0].inputs);
    state->rfPower = 1000;
    for (const TankQ q : {TankQ{0, 2000}, TankQ{300, -1}})
        EXPECT_THROW(AnalyzeTankLosses(*state, q), ArithmeticFault);
}

}  // namespace
}  // namespace varo
