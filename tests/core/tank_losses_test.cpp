#include "core/tank_losses.h"

#include <gtest/gtest.h>

#include <numeric>

#include "core/design_fixture.h"
#include "core/fault.h"

namespace varo {
namespace {

using test::DesignInputs;

// An independent calculation of the pi network 2000 -> 50 ohms at 3.8 MHz, Q 12 (C1 222.8 pF,
// L1 8.804 uH, C2 1140.7 pF) with coils of Q 300; the rule of thumb 1 - Q / Q_coil gives 96 %.
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
}

// The load receives the RF power, and what the network takes in is that plus every part's
// dissipation; parts a design lacks dissipate nothing, and C3 beside C2 takes its share.
TEST(TankLosses, DissipationsAndLoadPowerAddUpToTheInputPower) {
    const struct {
        DesignInputs inputs;
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

TEST(TankLosses, AQOfZeroOrLessIsAFault) {
    const auto state = test::CalculatedDesign({3.9e6f, 1500, 300, 50, 12});
    state->rfPower = 1000;
    for (const TankQ q : {TankQ{0, 2000}, TankQ{300, -1}})
        EXPECT_THROW(AnalyzeTankLosses(*state, q), ArithmeticFault);
}

}  // namespace
}  // namespace varo
