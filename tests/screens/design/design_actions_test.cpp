#include "screens/design/design_actions.h"

#include <gtest/gtest.h>

#include "core/design_fixture.h"

#include <filesystem>
#include <string>

#include "model/design_reporter.h"
#include "support/design_fakes.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

namespace fs = std::filesystem;
using testing::ReadBytes;

class DesignActionsTest : public ::testing::Test {
  public:
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
        design.Accept(form, dialogs, reporter);
        form.log.clear();
    }

    Design design;
    DesignState& state = design.state();
    test::RecordingDesignForm form;
    ScriptedDialogs dialogs;
    DesignReporter reporter;
    DesignSession session;
    testing::TempFolder temp;
    fs::path folder{temp.str()};
};

// Cancelled, an export writes and validates nothing; answered, it writes from the full ladder.
// Only the Quarn export reads the entries again.
TEST_F(DesignActionsTest, ExportsAskFirstThenWriteFromTheFullLadder) {
    const auto run = [this](const std::string& file) {
        if (file.ends_with(".asc")) return ExportLTspice(design, dialogs, reporter, session);
        if (file.ends_with(".cir")) return ExportSpiceNetlist(design, dialogs, reporter, session);
        return ExportQuarn(design, form, dialogs, reporter, session);
    };
    const struct {
        const char* file;
        std::string DesignSession::*chosen;
        const char* start;
        bool validates;
    } cases[] = {
        {"net.asc", &DesignSession::spiceFilePath, "Version 4\r\nSHEET 1  1000 \r\n", false},
        {"net.cir", &DesignSession::netlistFilePath, "* VARO pi-L network: ", false},
        {"net.KVF", &DesignSession::quarnFilePath, "Quarn circuit file by VARO\r\nUntitled\r\n",
         true},
    };
    std::ptrdiff_t written = 0;
    for (const auto& c : cases) {
        EXPECT_EQ(run(c.file), FileOutcome::Cancelled) << c.file;
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), written) << c.file;
        EXPECT_TRUE(form.log.empty()) << c.file;
        const std::string path = temp.File(c.file);
        dialogs.AnswerNextSave(path);
        state.elementCount = 2;
        EXPECT_EQ(run(c.file), FileOutcome::Written) << c.file;
        ++written;
        EXPECT_EQ(session.*c.chosen, path);
        EXPECT_EQ(state.elementCount, 4) << c.file;
        EXPECT_EQ(ReadBytes(path).rfind(c.start, 0), 0u) << c.file;
        EXPECT_EQ(form.log.empty(), !c.validates) << c.file;
    }
    EXPECT_EQ(form.Text(DesignField::Plate), "1.5k");
    EXPECT_EQ(session.spiceDefaultName, "Default.ASC");
    EXPECT_EQ(dialogs.events().at(4).request,
              (SaveDialogRequest{"Write Quarn File", "Quarn files (*.KVF)|*.KVF", 1, "", true}));
}

}  // namespace
}  // namespace varo
