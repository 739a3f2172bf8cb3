#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "core/fault.h"
#include "core/network.h"
#include "design_fixture.h"
#include "recording_reporter.h"

namespace varo {
namespace {

using test::DesignInputs;
using test::kReferenceDesign;
using test::MakeDesign;
using test::RecordingReporter;

std::unique_ptr<DesignState> DesignAtPower(const DesignInputs& inputs, float rfPower,
                                           float peakSwing) {
    auto state = MakeDesign(inputs);
    RecordingReporter reporter;
    EXPECT_TRUE(test::Recalculate(*state, reporter));
    state->rfPower = rfPower;
    state->peakSwing = peakSwing;
    return state;
}

// The explanatory block, line k at kExplanationTopY + k x kExplanationLineStep: the three stress
// lines when there is RF power, then the four generator lines.
std::vector<PlacedText> Explanation(bool withPower, const char* swing, const char* power,
                                    const char* generator) {
    std::vector<PlacedText> lines;
    const auto add = [&](int k, std::string text) {
        lines.push_back(
            {std::move(text), kExplanationX, kExplanationTopY + k * kExplanationLineStep});
    };
    if (withPower) {
        add(0, "Stresses shown are based on a peak");
        add(1, std::string("plate voltage swing of ") + swing + " volts");
        add(2, std::string("and an RF power level of ") + power + " watts");
    }
    add(3, "The transmission plot is based on a generator");
    add(4, std::string("output impedance of ") + generator + " ohms.");
    add(5, "You may enter a new generator output");
    add(6, "impedance here:");
    EXPECT_EQ(lines.back().y, kGeneratorEntryY);
    return lines;
}

std::vector<PlacedText> Joined(std::vector<PlacedText> head, const std::vector<PlacedText>& tail) {
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

TEST(ComputeStresses, VoltagesAndCurrents) {
    auto state = DesignAtPower({3.9e6f, 2500, 300, 50, 12}, 1000, 3000);
    RecordingReporter reporter;
    ComputeStresses(*state, reporter);
    // sqrt(2500 x 1000) = 1581.14; the currents are the voltages over the reactances.
    EXPECT_NEAR(state->vPlate, 1581.1388, 1e-3);
    EXPECT_NEAR(state->vMid, std::sqrt(300000.0), 1e-3);
    EXPECT_NEAR(state->vLoad, std::sqrt(50000.0), 1e-3);
    EXPECT_NEAR(state->iC1, 1581.1388 / state->xC1, 1e-4);
    EXPECT_NEAR(state->iC2, std::sqrt(300000.0) / state->xC2, 1e-4);
    EXPECT_NEAR(state->iC3, std::sqrt(300000.0) / state->xC3, 1e-4);
    EXPECT_TRUE(reporter.events.empty());
}

TEST(ComputeStresses, NoPowerClosesFilesAndKeepsC1CurrentAtOne) {
    auto state = DesignAtPower(kReferenceDesign, 0, 2500);
    state->vMid = 5;
    state->iC3 = 5;
    RecordingReporter reporter;
    ComputeStresses(*state, reporter);
    EXPECT_EQ(reporter.events, std::vector<std::string>{"close"});
    EXPECT_EQ(state->vPlate, 0);
    EXPECT_EQ(state->vMid, 0);
    EXPECT_EQ(state->vLoad, 0);
    EXPECT_EQ(state->iC1, 1);
    EXPECT_EQ(state->iC2, 0);
    EXPECT_EQ(state->iC3, 0);
}

struct DisplayCase {
    const char* name;
    DesignInputs inputs;
    float rfPower;
    std::vector<PlacedText> texts;
};

// Expected texts worked out from the circuit: vMid = sqrt(Ri P), iC = V / Xc, the L1 current of
// a matched pi vMid / Ri x sqrt(1 + q2^2), phases -(atan q1 + atan q2) and -atan(QL).
TEST(ShowStresses, TextsAndPositions) {
    const DisplayCase cases[] = {
        {"step down (C3 merged into C2)", kReferenceDesign, 1000,
         Joined({{"2.5kVpeak", 4800, 7200},
                 {"774.6 Vpeak", 6200, 7200},
                 {"6.8314 Arms", 4800, 7400},
                 {"10.716 Arms", 6200, 7400},
                 {"6.88 Arms", 5350, 5700},
                 {"4.4721 Arms", 6950, 5700},
                 {"Total phase: -223.7 deg.", 4800, 7700}},
                Explanation(true, "2.5k", "1k", "1.5k"))},
        {"step up (C3 across the load shows no current)",
         {3.9e6f, 1500, 50, 100, 12},
         1000,
         Joined({{"2.5kVpeak", 4800, 7200},
                 {"316.23 Vpeak", 6200, 7200},
                 {"447.21 Veak", 7800, 7200},
                 {"8.4751 Arms", 4800, 7400},
                 {" 0.0000  Arms", 7800, 7400},
                 {"7.2453 Arms", 6200, 7400},
                 {"8.5144 Arms", 5350, 5700},
                 // lPhase 0: (vLoad - vMid) / xL2 = (316.228 - 223.607) / 50
                 {"1.8524 Arms", 6950, 5700},
                 {"Total phase: -142.81 deg.", 4800, 7700}},
                Explanation(true, "2.5k", "1k", "1.5k"))},
        {"no L section (no L2 current)",
         {3.9e6f, 1500, 300, 300, 12},
         1000,
         Joined({{"2.5kVpeak", 4800, 7200},
                 {"774.6 Vpeak", 6200, 7200},
                 {"6.8314 Arms", 4800, 7400},
                 {"6.6334 Arms", 6200, 7400},
                 {"6.88 Arms", 5350, 5700},
                 {"Total phase: -157.8 deg.", 4800, 7700}},
                Explanation(true, "2.5k", "1k", "1.5k"))},
        {"no RF power", kReferenceDesign, 0,
         Joined({{"1 Arms", 4800, 7400},
                 {" 0.0000  Arms", 6200, 7400},
                 {"Total phase: -223.7 deg.", 4800, 7700}},
                Explanation(false, "", "", "1.5k"))},
    };
    for (const auto& c : cases) {
        auto state = DesignAtPower(c.inputs, c.rfPower, 2500);
        RecordingReporter reporter;
        const StressDisplay display = ShowStresses(*state, reporter);
        ASSERT_EQ(display.texts.size(), c.texts.size()) << c.name;
        for (size_t i = 0; i < c.texts.size(); ++i) {
            EXPECT_EQ(display.texts[i].text, c.texts[i].text) << c.name << " #" << i;
            EXPECT_EQ(display.texts[i].x, c.texts[i].x) << c.name << " #" << i;
            EXPECT_EQ(display.texts[i].y, c.texts[i].y) << c.name << " #" << i;
        }
    }
}

TEST(ShowStresses, GeneratorImpedanceFollowsTheMultiplier) {
    auto state = DesignAtPower(kReferenceDesign, 0, 2500);
    state->genMultiplier = 2.5f;
    RecordingReporter reporter;
    const StressDisplay display = ShowStresses(*state, reporter);
    ASSERT_GE(display.texts.size(), 3u);
    EXPECT_EQ(display.texts[display.texts.size() - 3].text, "output impedance of 3.75k ohms.");
    EXPECT_EQ(display.iL1, 0);
    EXPECT_EQ(display.iL2, 0);
}

TEST(ShowStresses, ZeroCapacitanceFaultPropagates) {
    auto state = DesignAtPower(kReferenceDesign, 1000, 2500);
    state->C2 = 0;
    RecordingReporter reporter;
    EXPECT_THROW(ShowStresses(*state, reporter), ArithmeticFault);
}

}  // namespace
}  // namespace varo
