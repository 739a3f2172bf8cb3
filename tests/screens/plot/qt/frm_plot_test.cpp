#include "screens/plot/qt/frm_plot.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSvgRenderer>
#include <filesystem>
#include <memory>

#include "core/design_fixture.h"
#include "core/numtext.h"
#include "model/pictures/response_plot.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using Kind = DrawOp::Kind;
using testing::ReadBytes;

// As the design screen opens it, in a fresh current directory for the overlay files.
class FrmPlotTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::current_path(folder.str());
        test::SetDesign(*state, test::kReferenceDesign);
        ASSERT_TRUE(design.RecomputeNetwork(reporter));
        form = std::make_unique<FrmPlot>(design, dialogs, [] {});
        form->show();  // a hidden screen does nothing
    }
    void TearDown() override {
        form.reset();
        std::filesystem::current_path(startedIn);
    }
    void Press(const char* name) { form->findChild<QPushButton*>(name)->click(); }
    QString Caption(const char* name) { return form->findChild<QLabel*>(name)->text(); }

    std::filesystem::path startedIn = std::filesystem::current_path();
    testing::TempFolder folder;
    Design design;
    DesignState* state = &design.state();
    ScriptedDialogs dialogs;
    DialogReporter reporter{dialogs};
    std::unique_ptr<FrmPlot> form;
};

TEST(ReadoutRowTexts, ShowsAnglesAndOutOfRangeFiguresByTheirRules) {
    const struct {
        LadderResult result;
        std::vector<std::string> texts;  // transmission to Z angle
    } cases[] = {
        {{10, -0.5f, -20, 1.5f, 1500, 30}, {"-0.5 dB", "-350 ", "-20 dB", "1.5 ", "1.5k", "-30 "}},
        {{-90, -70, -120, INFINITY, 50, -12.5f},
         {"-70 dB", "-90 ", "< -100 dB", "> 1000", "50 ", "12.5 "}},
        {{0, 0, -100, 1000, 0, 0},
         {" 0.0000  dB", " 0.0000  ", "-100 dB", "1k", " 0.0000  ", " 0.0000  "}},
    };
    for (const auto& c : cases) {
        const std::vector<std::string> texts = ReadoutRowTexts({3, 11.7e6f, c.result});
        EXPECT_EQ(texts[0], "3rd");
        EXPECT_EQ(std::vector(texts.begin() + 2, texts.end()), c.texts);
    }
}

TEST_F(FrmPlotTest, NudgesCompoundAndStayInTheDesign) {
    const struct {
        const char* button;
        float DesignState::*part;
        double factor;
    } cases[] = {{"cmdCLup", &DesignState::C3, 1.0609},
                 {"cmdCLdown", &DesignState::C3, 1 / 1.0609},
                 {"cmdLLup", &DesignState::L2, 1.0609},
                 {"cmdLLdown", &DesignState::L2, 1 / 1.0609}};
    for (const auto& c : cases) {
        const float start = (*state).*c.part;
        Press(c.button);
        Press(c.button);
        EXPECT_NEAR((*state).*c.part / start, c.factor, 1e-6) << c.button;
    }
    // The nudged values stay in the design and are shown; the curves were drawn afresh.
    EXPECT_EQ(Caption("lblComponents").toStdString(), NudgedPartsText(*state));
    EXPECT_NE(NudgedPartsText(*state).find(FormatFarad(state->C3)), std::string::npos);
    EXPECT_EQ(form->surface().ops()[0].kind, Kind::Clear);
    EXPECT_EQ(form->surface().ops()[1].kind, Kind::FillBox);
    EXPECT_TRUE(dialogs.events().empty());
}

// Each export button writes its file (each format's own tests pin the contents); a picture
// name that is neither .png nor .svg writes nothing and says why.
// The saved curves Get draws are named in the legend with their file and its date, until the
// next redraw clears them.
TEST_F(FrmPlotTest, SavedCurvesHaveLegendEntries) {
    Press("cmdSave");
    Press("cmdGet");
    const QString today = QDate::currentDate().toString("yyyy-MM-dd");
    for (const auto& [name, file] :
         {std::pair{"lblOverlayTransmission", "Data.S21"}, {"lblOverlayReturn", "Data.S11"}}) {
        EXPECT_TRUE(form->findChild<QLabel*>(name)->isVisible()) << name;
        EXPECT_TRUE(Caption(name).startsWith(QString("Saved %1, %2 ").arg(file, today)))
            << Caption(name).toStdString();
    }
    Press("cmdLLup");
    EXPECT_FALSE(form->findChild<QLabel*>("lblOverlayReturn")->isVisible());
}

TEST_F(FrmPlotTest, ExportsWhatIsShown) {
    for (const auto& [button, name] : {std::pair{"cmdExportPlot", "plot.png"},
                                       {"cmdExportPlot", "plot.svg"},
                                       {"cmdExportPlot", "plot.bmp"},
                                       {"cmdExportCsv", "sweep.csv"},
                                       {"cmdExportTouchstone", "plot.s1p"}}) {
        dialogs.AnswerNextSave(folder.File(name));
        Press(button);
    }
    EXPECT_EQ(QImage(folder.File("plot.png").c_str()).size(), QSize(1600, 1200));
    EXPECT_TRUE(QSvgRenderer(QString(folder.File("plot.svg").c_str())).isValid());
    EXPECT_EQ(ReadBytes(folder.File("sweep.csv")).substr(0, 1), "F");
    EXPECT_EQ(ReadBytes(folder.File("plot.s1p")).substr(0, 6), "! VARO");
    EXPECT_EQ(dialogs.messages(),
              std::vector<std::string>{"A picture file name ends in .png or .svg"});
    EXPECT_FALSE(std::filesystem::exists(folder.File("plot.bmp")));
}

}  // namespace
}  // namespace varo
