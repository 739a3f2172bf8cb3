#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>

#include "core/design_fixture.h"
#include "model/load_range.h"
#include "support/ngspice.h"

namespace varo {
namespace {

std::string Value(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.12e", value);
    return text;
}

// The re-tuned network driven at the plate by the swing the design's power needs there, the
// load a resistance in series with the reactance it has at the frequency; zero-volt sources
// read the coil currents.
std::string Netlist(const DesignState& design, const LoadCase& load) {
    const double w = 2 * std::numbers::pi * load.frequency;
    const double plateVolts = std::sqrt(2.0 * design.rfPower * design.plateR);
    std::string net = "* load range check\nV1 plate 0 AC " + Value(plateVolts) + "\n";
    net += "C1 plate 0 " + Value(load.tuning.c1) + "\nVL1 plate a 0\nL1 a mid " + Value(design.L1) +
           "\nCM mid 0 " + Value(load.tuning.load) + "\n";
    const bool lSection = design.L2 > 0 && design.intermediateR != design.loadR;
    std::string out = "mid";
    if (lSection) {
        net += "VL2 mid b 0\nL2 b out " + Value(design.L2) + "\n";
        out = "out";
    }
    if (load.tuning.c3) net += "C3 out 0 " + Value(*load.tuning.c3) + "\n";
    const double x = load.zLoad.im;
    if (x > 0) net += "LX " + out + " r " + Value(x / w) + "\n";
    if (x < 0) net += "CX " + out + " r " + Value(-1 / (w * x)) + "\n";
    if (x == 0) net += "VX " + out + " r 0\n";
    net += "RL r 0 " + Value(load.zLoad.re) + "\n";
    return net + ".ac lin 1 " + Value(load.frequency) + " " + Value(load.frequency) + "\n.end\n";
}

// A handful of loads on three networks (the L section stepping down, absent, stepping up):
// ngspice finds the plate load presented again, and the capacitor voltages and coil currents
// the load range reports.
TEST(LoadRange, NgspiceAgreesOnTheMatchAndTheStresses) {
    if (!testing::NgspiceIsInstalled()) GTEST_SKIP() << "ngspice is not installed";
    const test::DesignInputs designs[] = {
        {3.9e6f, 1500, 300, 50, 12}, {3.9e6f, 2000, 50, 50, 12}, {3.9e6f, 2500, 25, 75, 12}};
    for (const auto& inputs : designs) {
        DesignState design = *test::CalculatedDesign(inputs);
        design.rfPower = 1500;
        LoadRangeInputs loads;
        loads.loads = {{37, -22}, {80, 35}, {design.loadR, 0}, {30, 10}};
        for (const LoadCase& load : AnalyzeLoadRange(design, loads).loads) {
            SCOPED_TRACE(std::to_string(inputs.intermediateR) + " " +
                         std::to_string(load.zLoad.re) + std::to_string(load.zLoad.im));
            ASSERT_TRUE(load.tuning.solvable) << load.tuning.problem;
            testing::TempFolder folder;
            testing::WriteBytes(folder.File("net.cir"), Netlist(design, load));
            auto result = testing::Simulate(folder);
            const auto plate = result["v(plate)"].at(0);
            const auto zin = -plate / result["i(v1)"].at(0);
            EXPECT_LT(std::abs(zin - std::complex<double>(design.plateR)) / design.plateR, 1e-3)
                << zin;
            const auto near = [](double spice, double ours) {
                EXPECT_NEAR(ours / spice, 1, 0.005) << spice << " " << ours;
            };
            near(std::abs(plate), load.c1PeakVolts);
            near(std::abs(result["v(mid)"].at(0)), load.loadPeakVolts);
            near(std::abs(result["i(vl1)"].at(0)) / std::sqrt(2.0), load.l1Amperes);
            if (result.count("i(vl2)"))
                near(std::abs(result["i(vl2)"].at(0)) / std::sqrt(2.0), load.l2Amperes);
        }
    }
}

}  // namespace
}  // namespace varo
