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
    void SetAcceptEnabled(bool) override {}
    void SetClassChoiceEnabled(bool) override {}
    ClassOption selected = ClassOption::None;
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

// Each class factor, and each limit with its message (no class, and a swing below one volt,
// are varo-cli's worked plate load).
TEST(RecalculateLoad, ClampsAndComputes) {
    // clang-format off
    const LoadCase cases[] = {
        // name                 swing     power   class                 load        shown       swing   power   messages
        {"ClassAB",             "2500",   "1000", ClassOption::ClassAB, 3906.25f,   "3.906k",   "2.5k", "1k",   {}},
        {"ClassC",              "1000",   "100",  ClassOption::ClassC,  5000.0f,    "5k",       "1k",   "100 ", {}},
        {"ClassB",              "1k",     "100",  ClassOption::ClassB,  5555.5557f, "5.556k",   "1k",   "100 ", {}},
        {"SwingAboveMaximum",   "100001", "1",    ClassOption::ClassC,  5e9f,       "5G",       "100k", "1 ",   {kSwingMax}},
        // Unreadable text parses as 0 and takes the minimum; swing is told before power.
        {"UnreadableText",      "NaN",    "abc",  ClassOption::ClassC,  0.5f,       "0.5 ",     "1 ",   "1 ",   {kSwingMin, kPowerMin}},
        {"SwingAndPowerOut",    "0",      "20M",  ClassOption::ClassC,  5e-8f,      " 0.0000  ","1 ",   "10M",  {kSwingMin, kPowerMax}},
        // Just under the design screen's least plate load: noted.
        {"BelowTheDesignsLeast","10",     "1k",   ClassOption::ClassC,  0.05f,      "0.05 ",    "10 ",  "1k",   {}},
    };
    // clang-format on
    for (const LoadCase& c : cases) {
        DesignState state;
        LoadHelpState help;
        FakeLoadHelpForm form;
        ScriptedDialogs dialogs;
        form.SetText(LoadHelpField::Voltage, c.swing);
        form.SetText(LoadHelpField::Power, c.power);
        form.selected = c.option;

        RecalculateLoad(state, help, form, dialogs);

        EXPECT_EQ(dialogs.messages(), c.messages) << c.name;
        EXPECT_FLOAT_EQ(help.newPlateLoad, c.plateLoad) << c.name;
        EXPECT_EQ(form.Text(LoadHelpField::NewLoad), "New plate load: " + c.loadText + " ohms");
        EXPECT_EQ(form.Text(LoadHelpField::Voltage), c.swingShown) << c.name;
        EXPECT_EQ(form.Text(LoadHelpField::Power), c.powerShown) << c.name;
        EXPECT_EQ(help.classFactor, ClassFactorOf(c.option)) << c.name;
        // Only a load below the design screen's .1 ohm is noted.
        EXPECT_EQ(form.Text(LoadHelpField::LimitNote).empty(), c.plateLoad >= 0.1f) << c.name;
    }
}

}  // namespace
}  // namespace varo
