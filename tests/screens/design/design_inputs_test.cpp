#include "screens/design/design_inputs.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "design_fakes.h"
#include "screens/design/design_reporter.h"

namespace varo {
namespace {

using Texts = std::map<std::string, std::string>;
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
const std::string kQMin =
    "The minimum PI-net Q value to be entered is 1.001 and has been changed to that value";

// A start-up design typed into the screen, the previous design's plate load 1500 ohms.
class DesignInputsTest : public ::testing::Test {
  protected:
    DesignInputsTest() : reporter(dialogs, form) {
        InitialiseConstants(state);
        state.plateR = 1500;
        state.genMultiplier = 1;
        Type({{"txtFrequency", "3.9M"},
              {"txtPlate", "1500"},
              {"txtIntermediate", "300"},
              {"txtNominalLoad", "50"},
              {"txtQ", "12"}});
    }

    void Type(const Texts& texts) {
        for (const auto& [control, text] : texts)
            form.fields[control] = text;
    }

    bool Recalculate() { return RecalculateDesign(state, form, dialogs, reporter, redraw); }
    bool Adjust(Adjustment which) {
        return AdjustDesign(state, form, dialogs, reporter, redraw, which);
    }

    DesignState state;
    MapDesignForm form;
    ScriptedDialogs dialogs;
    DesignReporter reporter;
    RecordingRedraw redraw;
};

struct ValidationCase {
    const char* name;
    float previousPlate;
    Texts typed;
    Messages messages;
    Texts shown;                  // fields after validation (only those listed are checked)
    std::array<float, 5> inputs;  // loadR, intermediateR, plateR, frequency, piQ
};

class ValidateInputsTest : public DesignInputsTest,
                           public ::testing::WithParamInterface<ValidationCase> {};

TEST_P(ValidateInputsTest, ClampsInOrderAndRewritesFields) {
    const ValidationCase& c = GetParam();
    state.plateR = c.previousPlate;
    Type(c.typed);

    ValidateInputs(state, form, dialogs);

    EXPECT_EQ(dialogs.messages(), c.messages);
    for (const auto& [control, text] : c.shown)
        EXPECT_EQ(form.FieldText(control), text) << control;
    const std::array<float, 5> inputs{state.loadR, state.intermediateR, state.plateR,
                                      state.frequency, state.piQ};
    EXPECT_EQ(inputs, c.inputs);
}

INSTANTIATE_TEST_SUITE_P(
    Limits, ValidateInputsTest,
    ::testing::Values(
        ValidationCase{"ValidEntriesAreOnlyReformatted",
                       1500,
                       {{"txtQ", " 12.5 "}},
                       {},
                       {{"txtFrequency", " 3.9M "},
                        {"txtPlate", "1.5k"},
                        {"txtIntermediate", "300 "},
                        {"txtNominalLoad", "50 "},
                        {"txtQ", " 12.5 "}},
                       {50, 300, 1500, 3.9e6f, 12.5f}},
        ValidationCase{
            "ZeroLoadThenZeroIntermediate",
            1500,
            {{"txtNominalLoad", "0"}, {"txtIntermediate", "0"}},
            {kLoadMin, "The intermediate resistance has been changed from zero to0.1ohms"},
            {{"txtNominalLoad", ".1"}, {"txtIntermediate", " .1"}},
            {0.1f, 0.1f, 1500, 3.9e6f, 12}},
        ValidationCase{"ZeroIntermediateTakesTheLoad",
                       1500,
                       {{"txtIntermediate", ""}},
                       {"The intermediate resistance has been changed from zero to50ohms"},
                       {{"txtIntermediate", " 50"}},
                       {50, 50, 1500, 3.9e6f, 12}},
        ValidationCase{"IntermediateBelowLoad",
                       1500,
                       {{"txtIntermediate", "40"}},
                       {kUpward},
                       {{"txtIntermediate", " 50"}},
                       {50, 50, 1500, 3.9e6f, 12}},
        // The plate entry is read after this check: the previous plate load limits it.
        ValidationCase{"IntermediateAbovePreviousPlate",
                       2500,
                       {{"txtIntermediate", "3000"}, {"txtPlate", "3000"}},
                       {kDownward},
                       {{"txtIntermediate", " 2500"}, {"txtPlate", "3k"}},
                       {50, 2500, 3000, 3.9e6f, 12}},
        ValidationCase{"FrequencyBelowMinimum",
                       1500,
                       {{"txtFrequency", "5k"}},
                       {kFrequencyMin},
                       {{"txtFrequency", "10k"}},
                       {50, 300, 1500, 10000, 12}},
        ValidationCase{"QOfOne",
                       1500,
                       {{"txtQ", "1"}},
                       {kQMin},
                       {{"txtQ", "1.001"}},
                       {50, 300, 1500, 3.9e6f, 1.001f}},
        ValidationCase{
            "EverythingBlankReportsInEntryOrder",
            1500,
            {{"txtFrequency", ""},
             {"txtPlate", ""},
             {"txtIntermediate", ""},
             {"txtNominalLoad", ""},
             {"txtQ", ""}},
            {kLoadMin, "The intermediate resistance has been changed from zero to0.1ohms",
             kPlateMin, kFrequencyMin, kQMin},
            {{"txtFrequency", "10k"},
             {"txtPlate", ".1"},
             {"txtIntermediate", " .1"},
             {"txtNominalLoad", ".1"},
             {"txtQ", "1.001"}},
            {0.1f, 0.1f, 0.1f, 10000, 1.001f}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DesignInputsTest, RecalculationRedrawsInOrder) {
    EXPECT_TRUE(Recalculate());
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(redraw.calls, (std::vector<std::string>{"schematic", "stresses", "plot"}));
    EXPECT_GT(state.C1, 0.0f);
    EXPECT_NE(state.piPhase, 0.0f);
}

TEST_F(DesignInputsTest, FaultInARedrawIsReportedAndTheRestStillDraws) {
    redraw.stressesFault = true;
    EXPECT_FALSE(Recalculate());
    EXPECT_EQ(dialogs.messages(),
              Messages{"The network could not be analysed: Division by zero. Please check the "
                       "entries."});
    EXPECT_EQ(redraw.calls, (std::vector<std::string>{"schematic", "stresses", "plot"}));
}

TEST_F(DesignInputsTest, RaisedQFromTheEngineReachesTheQEntry) {
    Type({{"txtQ", "1.5"}});  // too low to match 1500 ohms to 300 ohms
    EXPECT_FALSE(Recalculate());
    EXPECT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(state.piQ, 3.0f);
    EXPECT_EQ(form.FieldText("txtQ"), " 3");
}

TEST_F(DesignInputsTest, QMinusStopsAtTheFloorWithoutAMessage) {
    state.plateR = 100;
    Type({{"txtPlate", "100"}, {"txtIntermediate", "99"}, {"txtQ", "1.005"}});
    EXPECT_TRUE(Adjust(Adjustment::QMinus));
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(state.piQ, 1.001f);
    EXPECT_EQ(form.FieldText("txtQ"), "1.001 ");
    EXPECT_EQ(redraw.calls.size(), 3u);
}

struct AdjustCase {
    const char* name;
    Adjustment which;
    Texts typed;
    std::string control, shown;
    Messages messages;
    float value;
};

class AdjustDesignTest : public DesignInputsTest,
                         public ::testing::WithParamInterface<AdjustCase> {};

TEST_P(AdjustDesignTest, StepsOnePercentAndRevalidates) {
    const AdjustCase& c = GetParam();
    Type(c.typed);
    Adjust(c.which);
    EXPECT_EQ(dialogs.messages(), c.messages);
    EXPECT_EQ(form.FieldText(c.control), c.shown);
    const bool isQ = c.control == "txtQ";
    EXPECT_FLOAT_EQ(isQ ? state.piQ : state.intermediateR, c.value);
    EXPECT_EQ(redraw.calls.size(), 3u);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, AdjustDesignTest,
    ::testing::Values(
        AdjustCase{"QPlus", Adjustment::QPlus, {}, "txtQ", "12.12 ", {}, 12.12f},
        // The second validation lifts a step below the load straight back, and says so.
        AdjustCase{"IntermediateMinusCannotPassTheLoad",
                   Adjustment::IntermediateMinus,
                   {{"txtIntermediate", "50"}},
                   "txtIntermediate",
                   " 50",
                   {kUpward},
                   50}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DesignInputsTest, SmallGeneratorResistanceIsIgnored) {
    form.fields["txtRinputMult"] = "0.0005";
    EXPECT_FALSE(OnGeneratorResistanceChanged(state, form, dialogs, reporter, redraw));
    EXPECT_EQ(state.genMultiplier, 1.0f);
    EXPECT_TRUE(redraw.calls.empty());

    form.fields["txtRinputMult"] = "1m";
    EXPECT_TRUE(OnGeneratorResistanceChanged(state, form, dialogs, reporter, redraw));
    EXPECT_EQ(state.genMultiplier, static_cast<float>(0.001f / 1500.0));
    EXPECT_EQ(redraw.calls.size(), 3u);
}

TEST_F(DesignInputsTest, GeneratorSpinSetsEntryMultiplierAndResistance) {
    EXPECT_TRUE(OnGeneratorSpinChanged(state, form, dialogs, reporter, redraw, 20));
    EXPECT_EQ(form.FieldText("txtRinputMultEntry"), "2");
    EXPECT_EQ(state.genMultiplier, 0.1f);
    EXPECT_EQ(form.FieldText("txtRinputMult"), "150 ");
    EXPECT_EQ(redraw.calls.size(), 3u);

    OnGeneratorSpinChanged(state, form, dialogs, reporter, redraw, 3);
    EXPECT_EQ(form.FieldText("txtRinputMultEntry"), "0.3");
    EXPECT_FLOAT_EQ(state.genMultiplier, 0.015f);  // 0.3 single over 20, rounded once more
}

TEST_F(DesignInputsTest, IntermediateSpinTextBecomesTheIntermediateEntry) {
    form.fields["txtUpDown1"] = "400";
    OnIntermediateSpinTextChanged(state, form, dialogs, reporter, redraw);
    EXPECT_EQ(state.intermediateR, 400.0f);
    EXPECT_EQ(form.FieldText("txtIntermediate"), "400 ");
    EXPECT_EQ(redraw.calls.size(), 3u);
}

TEST_F(DesignInputsTest, EditingOnlyOffersAccept) {
    OnDesignEntryEdited(form);
    EXPECT_EQ(form.enabled, std::vector<std::string>{"cmdDesign"});
    EXPECT_TRUE(form.log.empty());
}

TEST_F(DesignInputsTest, AcceptShowsTheGeneratorResistance) {
    state.genMultiplier = 2;
    EXPECT_TRUE(AcceptDesign(state, form, dialogs, reporter, redraw));
    EXPECT_EQ(form.FieldText("txtRinputMult"), "3k");
    EXPECT_EQ(form.log.back(), "txtRinputMult=3k");
}

}  // namespace
}  // namespace varo
