#include "model/input_view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <string>

#include "core/design_fixture.h"
#include "support/ngspice.h"

namespace varo {
namespace {

const test::DesignInputs kStepDown{3.9e6f, 1500, 300, 50, 12};
const test::DesignInputs kNoLSection{3.9e6f, 2000, 50, 50, 12};
const test::DesignInputs kStepUp{3.9e6f, 2500, 25, 75, 12};

std::complex<double> Std(Complex z) {
    return {z.re, z.im};
}

// At its design values each network hands the plate its load; the tube's figures worked by
// hand: 3000 V peak on 1500 ohms draws 2 A and delivers 3000 W; 1500 W alone develops
// sqrt(2 x 1500 x 1500) = 2121.3 V, so 1.41421 A.
TEST(InputView, AtTheDesignValuesThePlateSeesItsLoad) {
    const struct {
        test::DesignInputs design;
        float swing, power;
        double amperes, watts;
        bool c3AcrossLoad;
    } cases[] = {
        {kStepDown, 3000, 0, 2, 3000, false},
        {kStepDown, 0, 1500, 1.414214, 1500, false},
        {kNoLSection, 4000, 1500, 2, 4000, false},
        {kStepUp, 0, 1500, std::sqrt(2.0 * 1500 / 2500), 1500, true},
    };
    for (const auto& c : cases) {
        auto state = test::CalculatedDesign(c.design);
        state->peakSwing = c.swing;
        state->rfPower = c.power;
        const auto view = InputViewOf(*state, {}, nullptr);
        ASSERT_TRUE(view);
        SCOPED_TRACE(c.design.intermediateR);
        EXPECT_LT(std::abs(Std(view->operating.gamma)), 1e-4);
        EXPECT_NEAR(view->Vswr(), 1, 2e-4);
        EXPECT_EQ(view->c3AcrossLoad, c.c3AcrossLoad);
        EXPECT_NEAR(*view->plateCurrent, c.amperes, 1e-4 * c.amperes);
        EXPECT_NEAR(*view->loadWatts, c.watts, 1e-4 * c.watts);
        ASSERT_EQ(view->harmonics.size(), 4u);
        EXPECT_DOUBLE_EQ(view->harmonics[3].frequency, 5 * 3.9e6);
    }
    auto silent = test::CalculatedDesign(kStepDown);
    const auto view = InputViewOf(*silent, {}, nullptr);
    EXPECT_FALSE(view->plateSwing || view->plateCurrent || view->loadWatts);
    silent->plateR = 0;
    EXPECT_FALSE(InputViewOf(*silent, {}, nullptr));
}

std::string Value(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.12e", value);
    return text;
}

// The network as built, driven at the plate with `swing` volts: C1, L1, the midpoint capacitor
// (C2, with C3 beside it where the L section steps down), L2, C3 across the load where it steps
// up, and the load.
std::string Netlist(const DesignState& s, double swing, double frequency) {
    std::string net = "* tuned network\nV1 plate 0 AC " + Value(swing) + "\n";
    net += "C1 plate 0 " + Value(s.C1) + "\nL1 plate mid " + Value(s.L1) + "\n";
    const bool stepsDown = s.intermediateR > s.loadR, stepsUp = s.intermediateR < s.loadR;
    net += "C2 mid 0 " + Value(s.C2) + "\n";
    if (stepsDown) net += "C3 mid 0 " + Value(s.C3) + "\n";
    std::string out = "mid";
    if (stepsDown || stepsUp) {
        net += "L2 mid out " + Value(s.L2) + "\n";
        out = "out";
    }
    if (stepsUp) net += "C3 out 0 " + Value(s.C3) + "\n";
    net += "RL " + out + " 0 " + Value(s.loadR) + "\n";
    return net + ".ac lin 3 " + Value(frequency) + " " + Value(3 * frequency) + "\n.end\n";
}

// Every part off its design value: ngspice finds the same input impedance at the fundamental
// and the 2nd and 3rd harmonics, the same plate current and the same power in the load.
TEST(InputView, NgspiceAgreesOnADetunedNetwork) {
    if (!testing::NgspiceIsInstalled()) GTEST_SKIP() << "ngspice is not installed";
    for (const auto& inputs : {kStepDown, kNoLSection, kStepUp}) {
        auto state = test::CalculatedDesign(inputs);
        state->C1 *= 1.1f;
        state->C2 *= 0.93f;
        state->L1 *= 1.04f;
        state->L2 *= 0.95f;
        state->peakSwing = 3000;
        const auto view = InputViewOf(*state, {}, nullptr);
        ASSERT_TRUE(view);
        testing::TempFolder folder;
        testing::WriteBytes(folder.File("net.cir"), Netlist(*state, 3000, state->frequency));
        auto result = testing::Simulate(folder);
        const auto zin = [&](std::size_t i) {
            return -result["v(plate)"].at(i) / result["i(v1)"].at(i);
        };
        SCOPED_TRACE(inputs.intermediateR);
        const auto near = [](std::complex<double> spice, Complex ours) {
            EXPECT_LT(std::abs(Std(ours) - spice) / std::abs(spice), 1e-6) << spice;
        };
        near(zin(0), view->operating.z);
        near(zin(1), view->harmonics[0].z);
        near(zin(2), view->harmonics[1].z);
        EXPECT_NEAR(*view->plateCurrent / std::abs(result["i(v1)"].at(0)), 1, 1e-6);
        const std::string out = inputs.intermediateR == inputs.loadR ? "v(mid)" : "v(out)";
        const double watts = std::norm(result[out].at(0)) / (2 * state->loadR);
        EXPECT_NEAR(*view->loadWatts / watts, 1, 1e-6);
    }
}

// The load range's loads as the plate sees them through the network as it stands.
TEST(InputView, ShowsTheLoadRangeThroughTheNetwork) {
    auto state = test::CalculatedDesign(kStepDown);
    LoadRangeResult range;
    for (const double ohms : {50.0, 25.0}) {
        LoadCase load;
        load.zLoad = {ohms, 0};
        load.frequency = state->frequency;
        range.range.loads.push_back(load);
    }
    const auto view = InputViewOf(*state, {}, &range);
    ASSERT_EQ(view->loads.size(), 2u);
    EXPECT_LT(std::abs(Std(view->loads[0].gamma)), 1e-4);
    // A lossless network matched at both ends keeps the load's mismatch: |25 - 50| / (25 + 50).
    EXPECT_NEAR(std::abs(Std(view->loads[1].gamma)), 1.0 / 3, 1e-4);
}

}  // namespace
}  // namespace varo
