#include "tools/loadhelp/plate_load.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace varo {
namespace {

class FakeLoadHelpForm : public TextFields<LoadHelpForm> {
  public:
    ClassOption SelectedClass() const override { return selected; }
    void ClearClassSelection() override { selected = ClassOption::None; }
    void SetAcceptEnabled(bool enabled) override { acceptEnabled = enabled; }
    void SetClassChoiceEnabled(bool enabled) override { classChoiceEnabled = enabled; }

    ClassOption selected = ClassOption::None;
    bool acceptEnabled = false;
    bool classChoiceEnabled = false;
};

const std::string kSwingMin = "Voltage level has been reset to the minimum-allowed value of 1 volt";
const std::string kSwingMax =
    "Maximum peak voltage swing is 100k volts and has been changed to that value";
const std::string kPowerMin = "Power level has been reset to the minimum-allowed value of 1 watt";
const std::string kPowerMax =
    "Power level has been reset to the maximum-allowed value of 10000k watts";

struct LoadCase {
    const char* name;
    std::string swing, power;
    ClassOption option;
    float plateLoad;
    std::string loadText, swingShown, powerShown;
    std::vector<std::string> messages;
};

class RecalculateLoadTest : public ::testing::TestWithParam<LoadCase> {};

TEST_P(RecalculateLoadTest, ClampsAndComputes) {
    const LoadCase& c = GetParam();
    DesignState state;
    LoadHelpState help;
    FakeLoadHelpForm form;
    ScriptedDialogs dialogs;
    form.SetText(LoadHelpField::Voltage, c.swing);
    form.SetText(LoadHelpField::Power, c.power);
    form.selected = c.option;

    RecalculateLoad(state, help, form, dialogs);

    EXPECT_EQ(dialogs.messages(), c.messages);
    EXPECT_FLOAT_EQ(help.newPlateLoad, c.plateLoad);
    EXPECT_EQ(form.Text(LoadHelpField::NewLoad), "New plate load: " + c.loadText + " ohms");
    EXPECT_EQ(form.Text(LoadHelpField::Voltage), c.swingShown);
    EXPECT_EQ(form.Text(LoadHelpField::Power), c.powerShown);
    EXPECT_EQ(help.classFactor, ClassFactorOf(c.option));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    PlateLoad, RecalculateLoadTest,
    ::testing::Values(
        //       name                   swing     power   class                 load        shown       swing   power
        LoadCase{"ClassAB",             "2500",   "1000", ClassOption::ClassAB, 3906.25f,   "3.906k",   "2.5k", "1k",   {}},
        LoadCase{"ClassC",              "1000",   "100",  ClassOption::ClassC,  5000.0f,    "5k",       "1k",   "100 ", {}},
        LoadCase{"ClassB",              "1k",     "100",  ClassOption::ClassB,  5555.5557f, "5.556k",   "1k",   "100 ", {}},
        LoadCase{"NoClassIsTwo",        "1000",   "100",  ClassOption::None,    5000.0f,    "5k",       "1k",   "100 ", {}},
        LoadCase{"SwingBelowOne",       "0.5",    "100",  ClassOption::ClassC,  0.005f,     "0.005 ",   "1 ",   "100 ", {kSwingMin}},
        LoadCase{"SwingAboveMaximum",   "100001", "1",    ClassOption::ClassC,  5e9f,       "5G",       "100k", "1 ",   {kSwingMax}},
        LoadCase{"PowerBelowOne",       "1000",   "0.5",  ClassOption::ClassC,  500000.0f,  "500k",     "1k",   "1 ",   {kPowerMin}},
        LoadCase{"PowerAboveMaximum",   "1000",   "2E7",  ClassOption::ClassC,  0.05f,      "0.05 ",    "1k",   "10M",  {kPowerMax}},
        // Unreadable text parses as 0 and takes the minimum; swing is told before power.
        LoadCase{"UnreadableText",      "NaN",    "abc",  ClassOption::ClassC,  0.5f,       "0.5 ",     "1 ",   "1 ",   {kSwingMin, kPowerMin}},
        LoadCase{"SwingAndPowerOut",    "0",      "20M",  ClassOption::ClassC,  5e-8f,      " 0.0000  ","1 ",   "10M",  {kSwingMin, kPowerMax}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

}  // namespace
}  // namespace varo
