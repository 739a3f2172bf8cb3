#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/fault.h"
#include "core/network.h"
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
    const auto note = [&](int line, const char* text) {
        texts.push_back({StressPart::Note, text, line});
    };
    if (withPower) {
        note(0, "Stresses shown are based on a peak");
        note(1, "plate voltage swing of 2.5k volts");
        note(2, "and an RF power level of 1k watts");
    }
    note(3, "The transmission plot is based on a generator");
    note(4, "output impedance of 1.5k ohms.");
    note(5, "You may enter a new generator output");
    note(kGeneratorNoteLine, "impedance here:");
    return texts;
}

// Values worked out from the circuit: vMid = sqrt(Ri P), iC = V / Xc, the L1 current of a
// matched pi vMid / Ri x sqrt(1 + q2^2), phases -(atan q1 + atan q2) and -atan(QL).
TEST(ShowStresses, TextsByPart) {
    using P = StressPart;
    const struct {
        const char* name;
        DesignInputs inputs;
        float rfPower;
        std::vector<StressText> texts;
    } cases[] = {
        {"step down (C3 merged into C2)", kReferenceDesign, 1000,
         WithNotes({{P::C1Voltage, "2.5kVpeak"},
                    {P::C2Voltage, "774.6 Vpeak"},
                    {P::C1Current, "6.8314 Arms"},
                    {P::C2Current, "10.716 Arms"},
                    {P::L1Current, "6.88 Arms"},
                    {P::L2Current, "4.4721 Arms"},
                    {P::TotalPhase, "Total phase: -223.7 deg."}},
                   true)},
        {"step up (C3 across the load shows no current)",
         {3.9e6f, 1500, 50, 100, 12},
         1000,
         WithNotes({{P::C1Voltage, "2.5kVpeak"},
                    {P::C2Voltage, "316.23 Vpeak"},
                    {P::C3Voltage, "447.21 Veak"},
                    {P::C1Current, "8.4751 Arms"},
                    {P::C3Current, " 0.0000  Arms"},
                    {P::C2Current, "7.2453 Arms"},
                    {P::L1Current, "8.5144 Arms"},
                    // lPhase 0: (vLoad - vMid) / xL2 = (316.228 - 223.607) / 50
                    {P::L2Current, "1.8524 Arms"},
                    {P::TotalPhase, "Total phase: -142.81 deg."}},
                   true)},
        {"no L section (no L2 current)",
         {3.9e6f, 1500, 300, 300, 12},
         1000,
         WithNotes({{P::C1Voltage, "2.5kVpeak"},
                    {P::C2Voltage, "774.6 Vpeak"},
                    {P::C1Current, "6.8314 Arms"},
                    {P::C2Current, "6.6334 Arms"},
                    {P::L1Current, "6.88 Arms"},
                    {P::TotalPhase, "Total phase: -157.8 deg."}},
                   true)},
        // Without power the C1 current stays at its starting value 1.
        {"no RF power", kReferenceDesign, 0,
         WithNotes({{P::C1Current, "1 Arms"},
                    {P::C2Current, " 0.0000  Arms"},
                    {P::TotalPhase, "Total phase: -223.7 deg."}},
                   false)},
    };
    for (const auto& c : cases) {
        auto state = DesignAtPower(c.inputs, c.rfPower);
        RecordingReporter reporter;
        EXPECT_EQ(ShowStresses(*state, reporter).texts, c.texts) << c.name;
        EXPECT_EQ(reporter.events,
                  c.rfPower > 0 ? std::vector<std::string>{} : std::vector<std::string>{"close"})
            << c.name;
    }
}

TEST(ShowStresses, ZeroCapacitanceFaultPropagates) {
    auto state = DesignAtPower(kReferenceDesign, 1000);
    state->C2 = 0;
    RecordingReporter reporter;
    EXPECT_THROW(ShowStresses(*state, reporter), ArithmeticFault);
}

}  // namespace
}  // namespace varo
