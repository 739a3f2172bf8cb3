#include "screens/loadrange/qt/frm_load_range.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTableWidget>

#include "core/design_fixture.h"
#include "model/design_results.h"
#include "support/temp_folder.h"
#include "tools/screen_driving.h"

namespace varo {
namespace {

using testing::Click;
using testing::Find;
using testing::Type;

// Three points of an antenna, normalised to 50 ohms: 30-j10, 50 and 70+j25 ohms.
constexpr const char* kAntenna = "! dipole\n# MHz Z RI R 50\n3.5 0.6 -0.2\n3.8 1 0\n4.0 1.4 0.5\n";

class FrmLoadRangeTest : public ::testing::Test {
  protected:
    FrmLoadRangeTest() {
        QSettings("VARO", "VARO").remove("loadRange");
        test::SetDesign(design.state(), test::kReferenceDesign);
        design.state().rfPower = 1500;
        design.RecomputeNetwork(SilentReporter());
    }
    ~FrmLoadRangeTest() override { QSettings("VARO", "VARO").remove("loadRange"); }

    std::unique_ptr<FrmLoadRange> Open() {
        auto screen = std::make_unique<FrmLoadRange>(design, dialogs, [this] { ++returns; });
        screen->show();
        return screen;
    }
    static QTableWidget& Loads(const FrmLoadRange& screen) {
        return *Find<QTableWidget>(screen, "tblLoads");
    }
    static std::string Cell(const FrmLoadRange& screen, int row, int column) {
        const QTableWidgetItem* item = Loads(screen).item(row, column);
        return item ? item->text().toStdString() : "(none)";
    }
    static std::string Worst(const FrmLoadRange& screen) {
        return Find<QPlainTextEdit>(screen, "txtWorst")->toPlainText().toStdString();
    }
    static void Choose(const FrmLoadRange& screen, const char* box, int index) {
        Find<QComboBox>(screen, box)->setCurrentIndex(index);
    }

    testing::TempFolder folder;
    Design design;
    ScriptedDialogs dialogs;
    int returns = 0;
};

// The screen works the range out as it opens and again at every edit; what cannot be worked out
// with is said in the worst-case box, and Enter says it in a message.
TEST_F(FrmLoadRangeTest, EveryEditWorksTheRangeOutAgain) {
    auto screen = Open();
    EXPECT_EQ(Loads(*screen).rowCount(), 36);
    EXPECT_EQ(Loads(*screen).horizontalHeaderItem(0)->text(), "Phase");
    EXPECT_NE(Worst(*screen).find("Worst C1 voltage: "), std::string::npos) << Worst(*screen);
    EXPECT_NE(Worst(*screen).find(" Vpeak at "), std::string::npos);
    Type(*screen, "txtPhases", "4");
    EXPECT_EQ(Loads(*screen).rowCount(), 4);
    EXPECT_EQ(Cell(*screen, 1, 0), "90");  // 360 / 4
    Choose(*screen, "cboSwr", 2);
    ASSERT_TRUE(design.results().loadRange);
    EXPECT_EQ(design.results().loadRange->request.swr, 3);
    // On the circle of 3 at 0 deg the load is 3 x 50 = 150 ohms.
    EXPECT_EQ(Cell(*screen, 0, 1), "150.00");

    Type(*screen, "txtPhases", "0");
    EXPECT_FALSE(design.results().loadRange);
    const std::string problem =
        "The number of phases \"0\" must be a whole number from 1 to 3600.\n";
    EXPECT_EQ(Worst(*screen), problem);
    testing::Key(Find<QWidget>(*screen, "txtPhases"), Qt::Key_Return);  // Enter works out
    EXPECT_EQ(dialogs.messages(), std::vector<std::string>{problem});

    Choose(*screen, "cboKind", 1);
    Type(*screen, "txtLoadZ", "37-j22");
    EXPECT_EQ(Loads(*screen).horizontalHeaderItem(0)->text(), "Point");
    EXPECT_EQ(
        (std::vector<std::string>{Cell(*screen, 0, 0), Cell(*screen, 0, 1), Cell(*screen, 0, 2)}),
        (std::vector<std::string>{"1", "37.00", "-22.00"}));
}

// An antenna file opened fills the table with its points; one that cannot be read is named
// with the line at fault, and the points read before stay.
TEST_F(FrmLoadRangeTest, AnAntennaFileFillsTheTableAndABadOneKeepsThePreviousLoad) {
    testing::WriteBytes(folder.File("dipole.s1p"), kAntenna);
    testing::WriteBytes(folder.File("bad.s1p"), "# MHz Z RI R 50\n3.5 0.6 -0.2\n3.8 oops\n");
    auto screen = Open();
    dialogs.AnswerNextOpen(folder.File("dipole.s1p"));
    Click(*screen, "cmdOpenLoad");
    EXPECT_EQ(Find<QComboBox>(*screen, "cboKind")->currentText(), "Measured antenna");
    ASSERT_EQ(Loads(*screen).rowCount(), 3);
    EXPECT_EQ(Cell(*screen, 2, 0), "4.000 MHz");
    EXPECT_EQ(Cell(*screen, 2, 1), "70.00");
    EXPECT_EQ(Cell(*screen, 0, 2), "-10.00");
    EXPECT_EQ(testing::TextOf(*screen, "lblLoadFile"), "dipole.s1p: 3 points, 3.500 to 4.000 MHz");

    dialogs.AnswerNextOpen(folder.File("bad.s1p"));
    Click(*screen, "cmdOpenLoad");
    ASSERT_EQ(dialogs.messages().size(), 1u);
    const std::string message = dialogs.messages()[0];
    EXPECT_EQ(message.rfind(
                  "We could not read the antenna file " + folder.File("bad.s1p") + ": line 3: ", 0),
              0u)
        << message;
    EXPECT_EQ(Loads(*screen).rowCount(), 3);
    EXPECT_EQ(design.results().loadRange->request.measuredLoads.size(), 3u);

    dialogs.AnswerNextOpen(folder.File("missing.s1p"));
    Click(*screen, "cmdOpenLoad");
    ASSERT_EQ(dialogs.messages().size(), 2u);
    EXPECT_EQ(dialogs.messages()[1].rfind(
                  "We could not read the antenna file " + folder.File("missing.s1p") + ": ", 0),
              0u);
    EXPECT_EQ(testing::TextOf(*screen, "lblLoadFile"), "dipole.s1p: 3 points, 3.500 to 4.000 MHz");
}

// The entries and the file are kept for the next opening; Escape presses Return.
TEST_F(FrmLoadRangeTest, EntriesAreKeptAndEscapeReturns) {
    testing::WriteBytes(folder.File("dipole.s1p"), kAntenna);
    {
        auto screen = Open();
        Type(*screen, "txtPhases", "8");
        Choose(*screen, "cboSwr", 0);
        Choose(*screen, "cboKind", 1);
        Type(*screen, "txtLoadZ", "1.2k+j300");
        dialogs.AnswerNextOpen(folder.File("dipole.s1p"));
        Click(*screen, "cmdOpenLoad");
        testing::Key(Find<QWidget>(*screen, "txtWorst"), Qt::Key_Escape);
        EXPECT_EQ(returns, 1);
    }
    auto again = Open();
    const LoadRangeFormText form = again->FormText();
    EXPECT_EQ(form.kind, LoadKindChoice::Measured);
    EXPECT_EQ((std::vector<std::string>{form.swr, form.phases, form.load}),
              (std::vector<std::string>{"1.5", "8", "1.2k+j300"}));
    EXPECT_EQ(Loads(*again).rowCount(), 3);
}

// Tab walks the screen as it is laid out; entries the kind does not use are skipped, and the
// table and the worst-case box are left with Tab.
TEST_F(FrmLoadRangeTest, TabFollowsTheLayout) {
    auto screen = Open();
    QWidget* focus = Find<QWidget>(*screen, "cboKind");
    focus->setFocus();
    std::vector<std::string> order{focus->objectName().toStdString()};
    for (int step = 0; step < 7; ++step) {
        testing::Key(focus, Qt::Key_Tab);
        focus = screen->focusWidget();
        order.push_back(focus ? focus->objectName().toStdString() : "(none)");
    }
    EXPECT_EQ(order, (std::vector<std::string>{"cboKind", "cboSwr", "txtPhases", "cmdOpenLoad",
                                               "tblLoads", "txtWorst", "cmdWorkOut", "cmdExit"}));
    testing::CheckLayoutAtSizes(*screen);
}

}  // namespace
}  // namespace varo
