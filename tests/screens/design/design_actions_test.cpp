#include "screens/design/design_actions.h"

#include <gtest/gtest.h>

#include "core/design_fixture.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "design_fakes.h"
#include "platform/system.h"
#include "screens/design/design_reporter.h"

namespace varo {
namespace {

namespace fs = std::filesystem;

std::string ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

class DesignActionsTest : public ::testing::Test {
  protected:
    DesignActionsTest() : reporter(dialogs, form) {
        // The inputs as start-up reads them, and as the screen shows them.
        test::SetDesign(state, test::kReferenceDesign);
        state.peakSwing = 2500;
        state.rfPower = 1000;
        form.fields = {{"txtFrequency", "3.9M"},
                       {"txtPlate", "1500"},
                       {"txtIntermediate", "300"},
                       {"txtNominalLoad", "50"},
                       {"txtQ", "12"}};
        folder = fs::temp_directory_path() /
                 ("varo_design_actions_" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    ~DesignActionsTest() override { fs::remove_all(folder); }

    const SaveDialogRequest& OnlyDialog() const {
        EXPECT_EQ(dialogs.events().size(), 1u);
        return dialogs.events().front().request;
    }

    DesignState state;
    MapDesignForm form;
    ScriptedDialogs dialogs;
    DesignReporter reporter;
    DesignSession session;
    fs::path folder;
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
    const fs::path path = folder / "net.asc";
    dialogs.AnswerNextSave(path.string());
    EXPECT_TRUE(ExportLTspice(state, dialogs, reporter, session));
    EXPECT_EQ(session.spiceFilePath, path.string());
    EXPECT_EQ(state.elementCount, 4);  // the full ladder, not what the phases left behind
    EXPECT_EQ(ReadBytes(path).rfind("Version 4\r\nSHEET 1  1000 \r\n", 0), 0u);
    // The LTspice export takes the entries as they were last accepted.
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
    const fs::path path = folder / "net.KVF";
    dialogs.AnswerNextSave(path.string());
    EXPECT_TRUE(ExportQuarn(state, form, dialogs, reporter, session));
    EXPECT_EQ(session.quarnFilePath, path.string());
    EXPECT_EQ(form.FieldText("txtPlate"), "1.5k");
    EXPECT_EQ(ReadBytes(path).rfind("Quarn circuit file by VARO\r\nUntitled\r\n", 0), 0u);
}

TEST_F(DesignActionsTest, ExitWritesTheSessionFile) {
    form.fields["txtFrequency"] = "7.1M";
    session.sessionFilePath = (folder / "VARO.CFG").string();
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
    form.fields["txtQ"] = "1";
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
    PrepareToLeaveDesign(state, dialogs, reporter);
    EXPECT_EQ(state.elementCount, 4);
    EXPECT_GT(state.L2, 0.0f);
    EXPECT_TRUE(form.log.empty());
}

}  // namespace
}  // namespace varo
