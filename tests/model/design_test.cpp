#include "model/design.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "core/numtext.h"
#include "model/design_inputs.h"
#include "model/design_reporter.h"
#include "support/design_fakes.h"

namespace varo {
namespace {

using F = DesignField;
using Texts = std::map<DesignField, std::string>;
using Messages = std::vector<std::string>;

const std::string kLoadMin =
    "Minimum output load has been changed to minimum-allowed value of .1 ohms";
const std::string kUpward =
    "Minimum allowed intermediate resistance has been changed upward to be the same as the load";
const std::string kDownward =
    "The intermediate resistance has been changed downward to be the same as the input";
const std::string kPlateMin =
    "The minimum input termination is .1 ohm and has been changed to that value";
const std::string kFrequencyMin =
    "The minimum operating frequency is 10k Hz and has been changed to that value";
const std::string kFromZero = "The intermediate resistance has been changed from zero to0.1ohms";
const std::string kQMin =
    "The minimum PI-net Q value to be entered is 1.001 and has been changed to that value";

// A start-up design typed into the screen, the previous design's plate load 1500 ohms.
class DesignTest : public ::testing::Test {
  protected:
    DesignTest() : reporter(dialogs, form) { Start(1500); }

    void Start(float previousPlate) {
        design = std::make_unique<Design>();
        state().plateR = previousPlate;
        state().genMultiplier = 1;
        dialogs.clear();
        Type({{F::Frequency, "3.9M"},
              {F::Plate, "1500"},
              {F::Intermediate, "300"},
              {F::NominalLoad, "50"},
              {F::Q, "12"}});
    }

    void Type(const Texts& texts) {
        for (const auto& [field, text] : texts)
            form.TextFields<DesignForm>::SetText(field, text);
    }

    DesignState& state() { return design->state(); }
    const DesignResults& results() const { return design->results(); }

    std::unique_ptr<Design> design;
    test::RecordingDesignForm form;
    ScriptedDialogs dialogs;
    DesignReporter reporter;
};

struct ValidationCase {
    const char* name;
    float previousPlate;
    Texts typed;
    Messages messages;
    Texts shown;                  // fields after validation (only those listed are checked)
    std::array<float, 5> inputs;  // loadR, intermediateR, plateR, frequency, piQ
};

// Each limit in the order the entries are checked, and the fields rewritten as read.
TEST_F(DesignTest, ValidationClampsInOrderAndRewritesFields) {
    // clang-format off
    const ValidationCase cases[] = {
        {"valid entries are only reformatted", 1500, {{F::Q, " 12.5 "}}, {},
         {{F::Frequency, " 3.9M "}, {F::Plate, "1.5k"}, {F::Intermediate, "300 "},
          {F::NominalLoad, "50 "}, {F::Q, " 12.5 "}},
         {50, 300, 1500, 3.9e6f, 12.5f}},
        {"intermediate below the load", 1500, {{F::Intermediate, "40"}}, {kUpward},
         {{F::Intermediate, " 50"}}, {50, 50, 1500, 3.9e6f, 12}},
        {"intermediate equal to the load", 1500, {{F::Intermediate, "50"}}, {},
         {{F::Intermediate, "50 "}}, {50, 50, 1500, 3.9e6f, 12}},
        // The plate entry is read after this check: the previous plate load limits it.
        {"intermediate above the previous plate", 2500,
         {{F::Intermediate, "3000"}, {F::Plate, "3000"}}, {kDownward},
         {{F::Intermediate, " 2500"}, {F::Plate, "3k"}}, {50, 2500, 3000, 3.9e6f, 12}},
        {"everything blank", 1500,
         {{F::Frequency, ""}, {F::Plate, ""}, {F::Intermediate, ""}, {F::NominalLoad, ""},
          {F::Q, ""}},
         {kLoadMin, kFromZero, kPlateMin, kFrequencyMin, kQMin},
         {{F::Frequency, "10k"}, {F::Plate, ".1"}, {F::Intermediate, " .1"},
          {F::NominalLoad, ".1"}, {F::Q, "1.001"}},
         {0.1f, 0.1f, 0.1f, 10000, 1.001f}},
    };
    // clang-format on
    for (const ValidationCase& c : cases) {
        Start(c.previousPlate);
        Type(c.typed);
        ValidateInputs(state(), form, dialogs);
        EXPECT_EQ(dialogs.messages(), c.messages) << c.name;
        for (const auto& [field, text] : c.shown)
            EXPECT_EQ(form.Text(field), text) << c.name << ": " << ControlName(field);
        const std::array<float, 5> inputs{state().loadR, state().intermediateR, state().plateR,
                                          state().frequency, state().piQ};
        EXPECT_EQ(inputs, c.inputs) << c.name;
    }
}

// After the engine raised a Q too low for the ratio, a file action's recomputation changes
// nothing the screen shows.
TEST_F(DesignTest, RecomputingAnUnchangedDesignKeepsItsResults) {
    Type({{F::Q, "1.5"}});  // too low to match 1500 ohms to 300 ohms
    EXPECT_FALSE(design->Accept(form, dialogs, reporter));
    EXPECT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(state().piQ, 3.0f);
    EXPECT_EQ(form.Text(F::Q), " 3");
    const auto phases = results().phases;
    const auto stresses = results().stresses.texts;
    dialogs.clear();
    EXPECT_TRUE(design->ValidateAndRecompute(form, dialogs, reporter));
    EXPECT_TRUE(dialogs.messages().empty());
    ASSERT_EQ(results().phases.has_value(), phases.has_value());
    if (phases) {
        EXPECT_EQ(results().phases->piPhase, phases->piPhase);
    }
    EXPECT_EQ(results().stresses.texts, stresses);
}

// An entry typed before a file action moves the design on: the results follow it whole.
TEST_F(DesignTest, RecomputingAChangedDesignSettlesEverythingAgain) {
    design->Accept(form, dialogs, reporter);
    Type({{F::Frequency, "7.1M"}});
    design->ValidateAndRecompute(form, dialogs, reporter);
    EXPECT_EQ(results().inputs.frequency, 7.1e6f);
    EXPECT_EQ(results().components, ComponentValues::Of(state()));
    EXPECT_EQ(results().harmonics.at(0).frequency, 7.1e6f);
    EXPECT_EQ(results().sweep.start, 3.55e6f);
    EXPECT_EQ(state().elementCount, 4);
}

// The state's stale L-section reactances never reach the results.
TEST_F(DesignTest, NoLSectionIsAbsentFromTheResults) {
    design->Accept(form, dialogs, reporter);
    ASSERT_TRUE(results().components.lSection.has_value());
    Type({{F::Intermediate, "50"}});
    design->Accept(form, dialogs, reporter);
    EXPECT_NE(state().xL2, 0.0f);
    EXPECT_FALSE(results().components.lSection.has_value());
}

// 1.005 / 1.01 is below the floor: the floor, silently.
TEST_F(DesignTest, QMinusStopsSilentlyAtTheFloor) {
    state().plateR = 100;
    Type({{F::Plate, "100"}, {F::Intermediate, "99"}, {F::Q, "1.005"}});
    design->Adjust(form, dialogs, reporter, Adjustment::QMinus);
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_EQ(form.Text(F::Q), "1.001 ");
    EXPECT_EQ(state().piQ, 1.001f);
}

}  // namespace
}  // namespace varo

namespace varo {
namespace {

// The knobs set a part to its design value times a factor, nudged or not; the design values
// come back on request and are forgotten by the next recalculation. With the swing fixed, the
// plate current dips where C1 tunes the network; C1 across the plate takes no power, so the
// load's stays.
TEST_F(DesignTest, KnobsTuneFromTheDesignValuesUntilTheNextRecalculation) {
    EXPECT_FALSE(design->TunePart(TankPart::C1, 1.1, reporter));  // nothing worked out yet
    EXPECT_FALSE(design->Tuned());
    design->Accept(form, dialogs, reporter);
    state().peakSwing = 3000;
    const float c1 = state().C1, l2 = state().L2, c3 = state().C3;
    ASSERT_TRUE(design->NudgePart(Nudge::CapacitorUp, reporter));  // a nudge first: C3 comes back
    design->RestoreDesignValues();
    EXPECT_EQ(state().C3, c3);
    std::vector<double> amperes, watts;
    for (const double factor : {0.97, 1.0, 1.03}) {
        ASSERT_TRUE(design->TunePart(TankPart::C1, factor, reporter));
        design->SweepAsLaidOut(reporter);
        EXPECT_EQ(state().C1, static_cast<float>(c1 * factor));
        EXPECT_EQ(results().components.C1, state().C1);
        EXPECT_NEAR(design->TuningFactor(TankPart::C1), factor, 1e-6);
        amperes.push_back(*results().input->plateCurrent);
        watts.push_back(*results().input->loadWatts);
    }
    EXPECT_TRUE(design->Tuned());
    design->TunePart(TankPart::C1, 1, reporter);
    EXPECT_FALSE(design->Tuned());
    EXPECT_LT(amperes[1], std::min(amperes[0], amperes[2]));
    EXPECT_NEAR(watts[0] / watts[1], 1, 1e-5);
    EXPECT_NEAR(watts[2] / watts[1], 1, 1e-5);
    EXPECT_NEAR(amperes[1], 2, 1e-3);  // 3000 V on 1500 ohms

    ASSERT_TRUE(design->NudgePart(Nudge::InductorUp, reporter));
    const float c2 = state().C2;
    design->TunePart(TankPart::C2, 1.1, reporter);  // C3 beside it at the midpoint turns too
    EXPECT_EQ(state().C2, static_cast<float>(c2 * 1.1));
    EXPECT_EQ(state().C3, static_cast<float>(c3 * 1.1));
    EXPECT_TRUE(design->Tuned());
    EXPECT_NEAR(design->TuningFactor(TankPart::L2), 1.03, 1e-6);
    design->TunePart(TankPart::L2, 1, reporter);  // the knob counts from the design value
    EXPECT_EQ(state().L2, l2);
    design->NudgePart(Nudge::CapacitorUp, reporter);
    design->RestoreDesignValues();
    EXPECT_FALSE(design->Tuned());
    EXPECT_EQ(state().C3, c3);
    EXPECT_EQ(results().components, ComponentValues::Of(state()));

    design->TunePart(TankPart::L1, 0.5, reporter);
    Type({{F::Q, "10"}});  // new design values: the knobs count from them
    design->Accept(form, dialogs, reporter);
    EXPECT_FALSE(design->Tuned());
    EXPECT_EQ(design->TuningFactor(TankPart::L1), 1);
}

}  // namespace
}  // namespace varo
