#include "screens/bands/qt/frm_bands.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QSettings>
#include <QTableWidget>

#include "core/design_fixture.h"
#include "platform/dialogs.h"
#include "tools/screen_driving.h"

namespace varo {
namespace {

using testing::Click;
using testing::Find;
using testing::Type;

class FrmBandsTest : public ::testing::Test {
  protected:
    FrmBandsTest() {
        QSettings("VARO", "VARO").remove("bandPlan");
        test::SetDesign(design.state(), test::kReferenceDesign);
        design.state().rfPower = 1500;
    }
    ~FrmBandsTest() override { QSettings("VARO", "VARO").remove("bandPlan"); }

    std::unique_ptr<FrmBands> Open() {
        auto screen = std::make_unique<FrmBands>(design, dialogs, [this] { ++returns; });
        screen->show();
        return screen;
    }
    int ResultRows(const FrmBands& screen) {
        return Find<QTableWidget>(screen, "tblResults")->rowCount();
    }

    Design design;
    ScriptedDialogs dialogs;
    int returns = 0;
};

// The screen plans as it opens and again at every edit; what cannot be planned with is said in
// the notes and leaves no plan (so the report has no band plan page).
TEST_F(FrmBandsTest, EveryEditPlansAgain) {
    auto screen = Open();
    EXPECT_EQ(ResultRows(*screen), 9);
    ASSERT_TRUE(design.results().bandPlan);
    Find<QTableWidget>(*screen, "tblBands")->item(0, 0)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(ResultRows(*screen), 8);
    Type(*screen, "txtTuneMax", "5");
    EXPECT_FALSE(design.results().bandPlan);
    EXPECT_EQ(Find<QPlainTextEdit>(*screen, "txtNotes")->toPlainText().toStdString(),
              "The tuning capacitor's minimum (10 pF) is above its maximum (5 pF).\n");
    testing::Key(Find<QWidget>(*screen, "txtTuneMax"), Qt::Key_Return);  // Enter plans
    EXPECT_EQ(dialogs.messages(),
              std::vector<std::string>{
                  "The tuning capacitor's minimum (10 pF) is above its maximum (5 pF).\n"});
    Type(*screen, "txtTuneMax", "500");
    EXPECT_TRUE(design.results().bandPlan);
}

// The entries and the band table are kept for the next opening; Return goes back.
TEST_F(FrmBandsTest, EntriesAreKeptAndReturnGoesBack) {
    {
        auto screen = Open();
        Type(*screen, "txtTubeC", "12");
        Click(*screen, "cmdRemoveBand");  // nothing chosen: nothing removed
        auto* bands = Find<QTableWidget>(*screen, "tblBands");
        bands->setCurrentCell(8, 1);
        Click(*screen, "cmdRemoveBand");
        Click(*screen, "cmdExit");
        EXPECT_EQ(returns, 1);
    }
    auto again = Open();
    EXPECT_EQ(testing::TextOf(*again, "txtTubeC"), "12");
    EXPECT_EQ(Find<QTableWidget>(*again, "tblBands")->rowCount(), 8);
    EXPECT_EQ(design.results().bandPlan->inputs.tubeCapacitance, 12e-12);
}

// Tab walks the screen as it is laid out: the entries, the bands, the plan, the buttons; the
// tables are left with Tab (the arrows move between their cells). The typed conduction angle
// and limit are skipped while a preset is chosen.
TEST_F(FrmBandsTest, TabFollowsTheLayout) {
    auto screen = Open();
    QWidget* focus = Find<QWidget>(*screen, "txtTubeC");
    focus->setFocus();
    std::vector<std::string> order{focus->objectName().toStdString()};
    for (int step = 0; step < 14; ++step) {
        testing::Key(focus, Qt::Key_Tab);
        focus = screen->focusWidget();
        order.push_back(focus ? focus->objectName().toStdString() : "(none)");
    }
    EXPECT_EQ(order, (std::vector<std::string>{
                         "txtTubeC", "txtStrayC", "txtTuneMin", "txtTuneMax", "txtLoadMin",
                         "txtLoadMax", "cboConduction", "cboLimit", "tblBands", "tblResults",
                         "txtNotes", "cmdAddBand", "cmdRemoveBand", "cmdPlan", "cmdExit"}));
}

}  // namespace
}  // namespace varo
