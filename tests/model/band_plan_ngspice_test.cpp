#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "core/design_fixture.h"
#include "model/band_plan.h"
#include "support/ngspice.h"

namespace varo {
namespace {

constexpr double kPico = 1e-12;

std::string Value(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.12e", value);
    return text;
}

// The band's network as built, driven at the plate by a current of 1 A: the plate's voltage is
// the impedance it sees, the load's the transimpedance.
std::string Netlist(const DesignState& design, const BandPlanInputs& amp, const BandResult& band,
                    const Tuning& tuning, const std::string& analysis) {
    const double plateC =
        tuning.tune + amp.tubeCapacitance + amp.strayCapacitance + band.band.tunePadder;
    std::string net = "* band plan check\nI1 0 plate AC 1\n";
    net += "C1 plate 0 " + Value(plateC) + "\nL1 plate mid " + Value(band.l1) + "\n";
    net += "CM mid 0 " + Value(tuning.load + band.band.loadPadder) + "\n";
    const bool lSection = band.l2 > 0;
    if (lSection) net += "L2 mid out " + Value(band.l2) + "\n";
    if (tuning.c3) net += "C3 out 0 " + Value(*tuning.c3) + "\n";
    net += std::string("RL ") + (lSection ? "out" : "mid") + " 0 " + Value(design.loadR) + "\n";
    return net + analysis + "\n.end\n";
}

// Three designs (the L section stepping down, absent, stepping up), three bands each: ngspice
// finds the plate load at every re-tuned band edge, and the harmonic attenuation the plan gives.
TEST(BandPlan, NgspiceAgreesAtTheEdgesAndOnTheHarmonics) {
    if (!testing::NgspiceIsInstalled()) GTEST_SKIP() << "ngspice is not installed";
    const test::DesignInputs designs[] = {
        {3.9e6f, 1500, 300, 50, 12}, {3.9e6f, 2000, 50, 50, 12}, {3.9e6f, 2500, 25, 75, 12}};
    BandPlanInputs amp;
    amp.tubeCapacitance = 5 * kPico;
    amp.strayCapacitance = 10 * kPico;
    amp.tune = {10 * kPico, 500 * kPico};
    amp.load = {30 * kPico, 3000 * kPico};
    amp.bands = {{"160 m", 1.8e6, 2.0e6, 0, 200 * kPico},
                 {"20 m", 14.0e6, 14.35e6},
                 {"10 m", 28.0e6, 29.7e6, 5 * kPico}};
    for (const auto& inputs : designs) {
        DesignState design;
        test::SetDesign(design, inputs);
        design.rfPower = 1500;
        for (const BandResult& band : PlanBands(design, amp).bands) {
            SCOPED_TRACE(band.band.name + " R2 " + std::to_string(inputs.intermediateR));
            for (const Tuning& edge : band.edges) {
                testing::TempFolder folder;
                const std::string f = Value(edge.frequency);
                testing::WriteBytes(folder.File("net.cir"),
                                    Netlist(design, amp, band, edge, ".ac lin 1 " + f + " " + f));
                const auto zin = testing::Simulate(folder)["v(plate)"].at(0);
                EXPECT_LT(std::abs(zin - std::complex<double>(design.plateR)) / design.plateR, 1e-3)
                    << edge.frequency << " " << zin;
            }
            testing::TempFolder folder;
            testing::WriteBytes(
                folder.File("net.cir"),
                Netlist(design, amp, band, band.centreTuning,
                        ".ac lin 10 " + Value(band.centre) + " " + Value(10 * band.centre)));
            const auto load = testing::Simulate(folder)[band.l2 > 0 ? "v(out)" : "v(mid)"];
            ASSERT_EQ(load.size(), 10u);
            for (const HarmonicEstimate& h : band.harmonics)
                EXPECT_NEAR(20 * std::log10(std::abs(load[h.n - 1] / load[0])), h.networkDb, 0.05)
                    << h.n;
        }
    }
}

}  // namespace
}  // namespace varo
