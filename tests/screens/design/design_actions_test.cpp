#include "screens/design/design_actions.h"

#include <gtest/gtest.h>

#include "core/design_fixture.h"

#include <filesystem>
#include <string>

#include "export/spice_netlist.h"
#include "platform/system.h"
#include "screens/design/design_reporter.h"
#include "support/design_fakes.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

namespace fs = std::filesystem;
using testing::ReadBytes;

class DesignActionsTest : public ::testing::Test {
  protected:
    DesignActionsTest() : reporter(dialogs, form) {
        // The inputs as start-up reads them, and as the screen shows them.
        test::SetDesign(state, test::kReferenceDesign);
        state.peakSwing = 2500;
        state.rfPower = 1000;
        for (const auto& [field, text] : {std::pair{DesignField::Frequency, "3.9M"},
                                          {DesignField::Plate, "1500"},
                                          {DesignField::Intermediate, "300"},
                                          {DesignField::NominalLoad, "50"},
                                          {DesignField::Q, "12"}})
            form.TextFields<DesignForm>::SetText(field, text);
    }

    const SaveDialogRequest& OnlyDialog() const {
        EXPECT_EQ(dialogs.events().size(), 1u);
        return dialogs.events().front().request;
    }

    DesignState state;
    test::RecordingDesignForm form;
    ScriptedDialogs dialogs;
    DesignReporter reporter;
    DesignSession session;
    testing::TempFolder temp;
    fs::path folder{temp.str()};
};

TEST_F(DesignActionsTest, CancelledLTspiceDialogWritesNothing) {
    EXPECT_FALSE(ExportLTspice(state, dialogs, reporter, session));
    EXPECT_EQ(OnlyDialog(), (SaveDialogRequest{"VARO Design - write LTspice schematic",
                                               "LTspice schematic files (*.ASC) | *.ASC", 1,
                                               "Default.ASC", true}));
    EXPECT_EQ(session.spiceDefaultName, "Default.ASC");
    EXPECT_EQ(session.spiceFilePath, "");
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(DesignActionsTest, LTspiceGoesToTheChosenFileFromARecomputedLadder) {
    const std::string path = temp.File("net.asc");
    dialogs.AnswerNextSave(path);
    EXPECT_TRUE(ExportLTspice(state, dialogs, reporter, session));
    EXPECT_EQ(session.spiceFilePath, path);
    EXPECT_EQ(state.elementCount, 4);  // the full ladder, not what the phases left behind
    EXPECT_EQ(ReadBytes(path).rfind("Version 4\r\nSHEET 1  1000 \r\n", 0), 0u);
    // The LTspice export takes the entries as they were last accepted.
    EXPECT_TRUE(form.log.empty());
}

TEST_F(DesignActionsTest, SpiceNetlistAsksForACirFileAndWritesFromAFullLadder) {
    EXPECT_FALSE(ExportSpiceNetlist(state, dialogs, reporter, session));
    EXPECT_EQ(OnlyDialog(), SpiceNetlistSaveRequest());
    EXPECT_TRUE(fs::is_empty(folder));
    const std::string path = temp.File("net.cir");
    dialogs.AnswerNextSave(path);
    EXPECT_TRUE(ExportSpiceNetlist(state, dialogs, reporter, session));
    EXPECT_EQ(session.netlistFilePath, path);
    EXPECT_EQ(state.elementCount, 4);
    EXPECT_EQ(ReadBytes(path), SpiceNetlistText(state));
    EXPECT_TRUE(form.log.empty());
}

TEST_F(DesignActionsTest, CancelledQuarnDialogStopsBeforeValidating) {
    EXPECT_FALSE(ExportQuarn(state, form, dialogs, reporter, session));
    EXPECT_EQ(OnlyDialog(),
              (SaveDialogRequest{"Write Quarn File", "Quarn files (*.KVF)|*.KVF", 1, "", true}));
    EXPECT_TRUE(form.log.empty());
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(DesignActionsTest, QuarnValidatesThenWrites) {
    const std::string path = temp.File("net.KVF");
    dialogs.AnswerNextSave(path);
    EXPECT_TRUE(ExportQuarn(state, form, dialogs, reporter, session));
    EXPECT_EQ(session.quarnFilePath, path);
    EXPECT_EQ(form.Text(DesignField::Plate), "1.5k");
    EXPECT_EQ(ReadBytes(path).rfind("Quarn circuit file by VARO\r\nUntitled\r\n", 0), 0u);
}

TEST_F(DesignActionsTest, ExitWritesTheSessionFile) {
    form.TextFields<DesignForm>::SetText(DesignField::Frequency, "7.1M");
    session.sessionFilePath = temp.File("VARO.CFG");
    EXPECT_TRUE(SaveSessionOnExit(state, form, dialogs, reporter, session));
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(ReadBytes(session.sessionFilePath), "VARO last-session file\r\n\r\n" +
                                                      TodayShortDate() +
                                                      "\r\n\r\n"
                                                      "Frequency: 7100000\r\n"
                                                      "Plate impedance: 1500\r\n"
                                                      "Intermediate impedance: 300\r\n"
                                                      "Load impedance: 50\r\n"
                                                      "PI-section Q: 12\r\n"
                                                      "Peak plate voltage swing: 2500\r\n"
                                                      "Spare: 0\r\n"
                                                      "RF power: 1000\r\n"
                                                      "\r\n");
}

TEST_F(DesignActionsTest, PrintSeesValidatedInputsAndAFullLadder) {
    form.TextFields<DesignForm>::SetText(DesignField::Q, "1");
    bool printed = false;
    PrintDesign(state, form, dialogs, reporter, [&] {
        printed = true;
        EXPECT_EQ(state.piQ, 3.0f);  // raised to 1.001, then by the calculation
        EXPECT_EQ(state.elementCount, 4);
    });
    EXPECT_TRUE(printed);
    ASSERT_GE(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages().front(),
              "The minimum PI-net Q value to be entered is 1.001 and has been changed to that "
              "value");
}

TEST_F(DesignActionsTest, LeavingRestoresTheFullLadderWithoutValidating) {
    state.elementCount = 2;
    PrepareToLeaveDesign(state, reporter);
    EXPECT_EQ(state.elementCount, 4);
    EXPECT_GT(state.L2, 0.0f);
    EXPECT_TRUE(form.log.empty());
}

}  // namespace
}  // namespace varo
