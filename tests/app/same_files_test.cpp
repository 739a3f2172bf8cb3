#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <sstream>
#include <string>

#include "app/cli/cli.h"
#include "model/design.h"
#include "screens/design/qt/frm_design.h"
#include "screens/plot/qt/frm_plot.h"
#include "session/last_session.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::ReadBytes;
using testing::TempFolder;

// The same entries typed on the desktop and given to varo-cli: the sweep CSV and Touchstone
// file from the large plot, the SPICE netlist from the design screen, byte for byte alike.
TEST(SameFiles, DesktopAndCommandLineWriteIdenticalBytes) {
    TempFolder folder;
    const std::string desktop = folder.File("desktop"), cli = folder.File("cli");
    {
        Design design;
        ReadLastSession(design.state(), "");
        ScriptedDialogs dialogs;
        DesignSession session;
        FrmDesign screen(design, dialogs, session);
        screen.show();
        screen.findChild<QLineEdit*>("txtFrequency")->setText("7.1M");
        screen.findChild<QLineEdit*>("txtPlate")->setText("2,5k");
        screen.findChild<QPushButton*>("cmdDesign")->click();
        dialogs.AnswerNextSave(desktop + ".cir");
        screen.findChild<QPushButton*>("cmdSpiceNetlist")->click();
        design.RecomputeNetwork(SilentReporter());  // "See large plot"
        FrmPlot plot(design, dialogs, {});
        plot.show();
        dialogs.AnswerNextSave(desktop + ".csv");
        plot.findChild<QPushButton*>("cmdExportCsv")->click();
        dialogs.AnswerNextSave(desktop + ".s2p");
        plot.findChild<QPushButton*>("cmdExportTouchstone")->click();
    }
    std::ostringstream out, err;
    ASSERT_EQ(cli::Run({"design", "--frequency", "7.1M", "--plate", "2,5k", "--spice", cli + ".cir",
                        "--sweep-csv", cli + ".csv", "--touchstone", cli + ".s2p"},
                       out, err),
              0)
        << err.str();
    for (const char* extension : {".csv", ".s2p", ".cir"}) {
        const std::string written = ReadBytes(desktop + extension);
        EXPECT_GT(written.size(), 100u) << extension;
        EXPECT_EQ(ReadBytes(cli + extension), written) << extension;
    }
}

}  // namespace
}  // namespace varo
