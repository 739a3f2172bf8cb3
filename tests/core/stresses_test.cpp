#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "core/fault.h"
#include "core/network.h"
#include "core/tank_losses.h"
#include "design_fixture.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

using test::DesignInputs;
using test::kReferenceDesign;
using test::RecordingReporter;

std::unique_ptr<DesignState> DesignAtPower(const DesignInputs& inputs, float rfPower) {
    auto state = test::MakeDesign(inputs);
    RecordingReporter reporter;
    EXPECT_TRUE(test::Recalculate(*state, reporter));
    state->rfPower = rfPower;
    state->peakSwing = 2500;
    return state;
}

// The explanatory block: the three stress lines with RF power, then the four generator lines.
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

// Values worked out from the circuit: vMid = sqrt(Ri P), iC = V / Xc, the L1 current of a
// matched pi vMid / Ri x sqrt(1 + q2^2), phases -(atan q1 + atan q2) and -atan(QL).
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

// An independent calculation of the pi network 2000 -> 50 ohms at 3.8 MHz, Q 12 (C1 222.8 pF,
// L1 8.804 uH, C2 1140.7 pF) with coils of Q 300 (rule of thumb 1 - Q / Q_coil: 96 %).
TEST(TankLosses, PiNetworkAgreesWithAnIndependentCalculation) {
    const struct {
        double capacitorQ;
        double efficiencyPercent, lossDb, zInReal, zInImag;
    } cases[] = {
        {1e15, 96.154, 0.1703, 1924.35, -14.07},  // ideal capacitors
        {2000, 95.600, 0.1954, 1914.40, -15.16},
    };
    const auto state = test::CalculatedDesign({3.8e6f, 2000, 50, 50, 12});
    state->rfPower = 100;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.capacitorQ);
        const TankLosses losses = AnalyzeTankLosses(*state, {300, c.capacitorQ});
        EXPECT_NEAR(losses.efficiencyPercent, c.efficiencyPercent, 0.001);
        EXPECT_NEAR(losses.lossDb, c.lossDb, 0.0001);
        EXPECT_NEAR(losses.zInReal, c.zInReal, 0.01);
        EXPECT_NEAR(losses.zInImag, c.zInImag, 0.01);
    }
    for (const TankQ q : {TankQ{0, 2000}, TankQ{300, -1}})
        EXPECT_THROW(AnalyzeTankLosses(*state, q), ArithmeticFault);
}

// The load receives the RF power, and what the network takes in is that plus every part's
// dissipation; parts a design lacks dissipate nothing, and C3 beside C2 takes its share.
TEST(TankLosses, DissipationsAndLoadPowerAddUpToTheInputPower) {
    const struct {
        test::DesignInputs inputs;
        bool hasLSection;
    } cases[] = {
        {{3.9e6f, 1500, 300, 50, 12}, true},  // steps down: C3 merged into C2
        {{7e6f, 2500, 25, 75, 12}, true},     // steps up: C3 across the load
        {{3.8e6f, 2000, 50, 50, 12}, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.inputs.intermediateR);
        const auto state = test::CalculatedDesign(c.inputs);
        state->rfPower = 1000;
        const TankLosses losses = AnalyzeTankLosses(*state, {});
        const double dissipated = std::accumulate(losses.watts.begin(), losses.watts.end(), 0.0);
        EXPECT_DOUBLE_EQ(losses.loadWatts, 1000);
        EXPECT_NEAR(losses.loadWatts + dissipated, losses.inputWatts, 1e-9 * losses.inputWatts);
        for (TankPart part : {TankPart::L1, TankPart::C1, TankPart::C2})
            EXPECT_GT(losses.Watts(part), 0);
        EXPECT_EQ(losses.Watts(TankPart::L2) > 0, c.hasLSection);
        EXPECT_EQ(losses.Watts(TankPart::C3) > 0, c.hasLSection);
    }
}

}  // namespace
}  // namespace varo
