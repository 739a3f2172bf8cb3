#include "screens/plot/qt/frm_plot.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleValueInterface>
#include <QApplication>
#include <QDate>
#include <QDial>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSvgRenderer>
#include <QWheelEvent>
#include <filesystem>
#include <memory>

#include "core/design_fixture.h"
#include "core/numtext.h"
#include "model/pictures/response_plot.h"
#include "model/pictures/smith_chart.h"
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

void Key(QWidget* target, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
}

void WheelUp(QWidget* target) {
    const QPointF middle(target->width() / 2.0, target->height() / 2.0);
    QWheelEvent wheel(middle, target->mapToGlobal(middle), {}, QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &wheel);
}

// Every way of turning a knob tunes the part from its design value in 0.2 % steps (a wheel
// notch is the desktop's three lines, Page Up 3 %, Home the design value); the value shown, the
// curves and what the tube sees follow each step, the cursor stays and reads the new curves, a
// nudge moves its knob too, and "Back to design values" puts every part back.
TEST_F(FrmPlotTest, KnobsTuneLiveAndComeBackToTheDesignValues) {
    auto* c1 = form->findChild<QDial*>("dialC1");
    auto* back = form->findChild<QPushButton*>("cmdDesignValues");
    ASSERT_TRUE(c1 && back);
    EXPECT_FALSE(back->isEnabled());
    const float designC1 = state->C1;
    form->MoveCursorTo(6000);
    const QString cursorBefore = Caption("lblCursor");
    const QString tubeBefore = Caption("lblTubeImpedance");
    const int wheelSteps = QApplication::wheelScrollLines();  // one notch
    const struct {
        std::function<void()> turn;
        int position;
    } steps[] = {
        {[&] { Key(c1, Qt::Key_Up); }, 1},
        {[&] { Key(c1, Qt::Key_PageUp); }, 16},
        {[&] { WheelUp(c1); }, 16 + wheelSteps},
        {[&] { Key(c1, Qt::Key_Home); }, 0},
        {[&] { QAccessible::queryAccessibleInterface(c1)->valueInterface()->setCurrentValue(-10); },
         -10},
    };
    for (const auto& step : steps) {
        step.turn();
        EXPECT_EQ(c1->value(), step.position);
        EXPECT_EQ(state->C1, static_cast<float>(designC1 * std::pow(1.002, step.position)));
        EXPECT_EQ(Caption("lblC1Value").toStdString(),
                  KnobValueText(*state, TankPart::C1, design.TuningFactor(TankPart::C1)));
    }
    EXPECT_TRUE(back->isEnabled());
    EXPECT_NE(Caption("lblTubeImpedance"), tubeBefore);
    EXPECT_NE(Caption("lblCursor"), cursorBefore);
    EXPECT_EQ(Caption("lblCursor").toStdString(),
              CursorReadoutTextAt(design.results().sweep, {},
                                  *CursorFrequency(design.results().sweep, 6000)));
    Press("cmdLLup");
    EXPECT_EQ(form->findChild<QDial*>("dialL2")->value(), 15);  // 3 % in 0.2 % steps
    Press("cmdDesignValues");
    EXPECT_EQ(state->C1, designC1);
    EXPECT_EQ(c1->value(), 0);
    EXPECT_EQ(form->findChild<QDial*>("dialL2")->value(), 0);
    EXPECT_FALSE(back->isEnabled());
    EXPECT_EQ(Caption("lblTubeImpedance"), tubeBefore);
    EXPECT_TRUE(dialogs.events().empty());
}

// The Smith chart takes the dB plot's place and back; a pointer on it puts the cursor on the
// nearest swept point, and Export writes the chart while it is shown.
TEST_F(FrmPlotTest, TheSmithChartStandsInForTheDbPlot) {
    auto* smith = form->findChild<QWidget*>("picSmith");
    EXPECT_FALSE(smith->isVisible());
    Press("cmdSmith");
    EXPECT_TRUE(smith->isVisible());
    EXPECT_EQ(form->findChild<QPushButton*>("cmdSmith")->text(), "dB plot");
    const auto traced = [&] {
        return std::ranges::count_if(form->smithSurface().ops(), [](const DrawOp& op) {
            return op.kind == Kind::Line && op.colour == kInputTraceColour;
        });
    };
    EXPECT_GT(traced(), 1000);
    form->MoveSmithCursorTo(4850, 3120);  // the chart middle: the swept point nearest 3.9 MHz
    EXPECT_NEAR(Caption("lblCursor").section(' ', 0, 0).toDouble(), 3.9, 0.01)
        << Caption("lblCursor").toStdString();
    dialogs.AnswerNextSave(folder.File("smith.svg"));
    Press("cmdExportPlot");
    EXPECT_NE(ReadBytes(folder.File("smith.svg")).find("normalised to 1500 ohms"),
              std::string::npos);
    Press("cmdSmith");
    EXPECT_FALSE(smith->isVisible());
}

}  // namespace
}  // namespace varo
