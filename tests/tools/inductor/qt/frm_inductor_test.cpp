#include "tools/inductor/qt/frm_inductor.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "model/pictures/page_parts.h"
#include "session/program_text.h"
#include "support/pdf_reading.h"
#include "support/temp_folder.h"
#include "tools/screen_driving.h"

namespace varo {
namespace {

using testing::Click;
using testing::Find;
using testing::TextOf;
using testing::Type;

bool Enabled(const QWidget& screen, const char* name) {
    return Find<QWidget>(screen, name)->isEnabled();
}
bool Shown(const QWidget& screen, const char* name) {
    return !Find<QWidget>(screen, name)->isHidden();
}

struct FrmInductorTest : ::testing::Test {
    FrmInductor& Open() {
        screen = std::make_unique<FrmInductor>(
            state, coil, dialogs, [this] { ++returns; },
            [this](std::int16_t inductor, const CoilState&) { woundFor.push_back(inductor); });
        screen->show();  // a hidden screen does nothing
        return *screen;
    }
    // No L section unless a test says otherwise.
    DesignState state{.plateR = 1500,
                      .intermediateR = 50,
                      .loadR = 50,
                      .C1 = 190e-12f,
                      .C2 = 960e-12f,
                      .C3 = 1200e-12f,
                      .L1 = 10e-6f,
                      .L2 = 2e-6f};
    CoilState coil;
    test::PdfDialogs dialogs;
    testing::TempFolder folder;
    int returns = 0;
    std::vector<std::int16_t> woundFor;  // each coil handed to the design
    std::unique_ptr<FrmInductor> screen;
};

// The unit chosen is relabelled at once, without converting the entries, and outlives the
// screen. Without an L section only L1 is offered, and it is the one wound.
TEST_F(FrmInductorTest, OpensInTheKeptUnitWithNothingToPrint) {
    coil.unitSystem = kInches;
    for (const std::string u : {"in", "cm"}) {
        FrmInductor& form = Open();
        EXPECT_EQ(form.windowTitle().toStdString(), ScreenCaption("Inductor Design screen"));
        for (const auto& [name, caption] : {std::pair{"lblFormDiameter", "Median diameter ("},
                                            {"Label6", "Turns per "},
                                            {"Label8", "Wire length ("}})
            EXPECT_EQ(TextOf(form, name).rfind(caption + u, 0), 0u) << name;
        EXPECT_TRUE(Find<QRadioButton>(form, u == "in" ? "Option1" : "Option2")->isChecked());
        EXPECT_FALSE(Enabled(form, "cmdPrint") || Enabled(form, "Option3"));
        EXPECT_FALSE(Shown(form, "txtActualGauge") || Shown(form, "Label17"));
        EXPECT_TRUE(Find<QRadioButton>(form, "Option4")->isChecked());
        EXPECT_EQ(coil.targetInductance, state.L1);
        Type(form, "txtFormDiameter", "2");
        Click(form, "Option2");
        EXPECT_EQ(TextOf(form, "lblFormDiameter"), "Median diameter (cm): ");
        EXPECT_EQ(TextOf(form, "txtFormDiameter"), "2");
        EXPECT_FLOAT_EQ(coil.coilDiameter, u == "in" ? 2.0f : 2 / 2.54f);  // held in inches
    }
}

// Assistive technology picks an option with Toggle, which is no click: it chooses all the same.
TEST_F(FrmInductorTest, AnOptionPickedThroughTheAccessibilityInterfaceChooses) {
    state.intermediateR = 300;  // an L section: neither inductor is chosen yet
    FrmInductor& form = Open();
    testing::ActAccessibly(form, "Option3");
    EXPECT_EQ(coil.inductorChoice, 2);
    EXPECT_EQ(coil.targetInductance, state.L2);
    testing::ActAccessibly(form, "Option2");
    EXPECT_EQ(coil.unitSystem, kCentimetres);
    // Picking the inductor already picked starts it afresh, as a click always has.
    testing::Type(form, "txtFormDiameter", "2");
    testing::Click(form, "Option3");
    EXPECT_EQ(testing::TextOf(form, "txtFormDiameter"), "");
}

TEST_F(FrmInductorTest, WorkedExampleShowsTheWindingAndItsWire) {
    state.frequency = 7.15e6f;
    FrmInductor& form = Open();
    Type(form, "txtFormDiameter", "2");
    Type(form, "txtFormLength", "4");
    Click(form, "cmdCompute");
    ASSERT_TRUE(Shown(form, "txtActualGauge"));
    Type(form, "txtActualGauge", "14");
    testing::Key(Find<QLineEdit>(form, "txtActualGauge"), Qt::Key_Return);  // Enter computes

    EXPECT_TRUE(dialogs.messages().empty());
    // Each computed coil goes to the design, here L1 twice (without, then with its wire).
    EXPECT_EQ(woundFor, (std::vector<std::int16_t>{1, 1}));
    const std::pair<const char*, const char*> results[] = {
        {"txtTurns", "  22.136 "},
        {"Label7", "  5.534 "},
        {"Label9", "  139.14 "},
        {"Label11", "  6"},
        {"Label15", "  0.06435 "},
        {"Label17", "  35.609 "},
        // The coil as built at the design's frequency (worked by hand in the varo-cli tests).
        {"lblAsBuilt", "As built, at 7.15MHz:"},
        {"lblUnloadedQ", "668"},
        {"lblAsBuiltNote", "Within 10 % of the self-resonance: the 4th harmonic (28.6MHz)."}};
    for (const auto& [name, text] : results)
        EXPECT_EQ(TextOf(form, name), text) << name;
    EXPECT_EQ(Find<QLabel>(form, "Label17")->palette().color(QPalette::Window),
              QColor(0xEE, 0xEE, 0xEE));
    // The unit is fixed until the screen closes.
    EXPECT_FALSE(Enabled(form, "Option1") || Enabled(form, "Option2"));
    EXPECT_TRUE(Enabled(form, "cmdPrint"));
    testing::CheckLayoutAtSizes(form);

    // Three wires of 35.61 % of the pitch, evenly spaced.
    std::vector<DrawOp> discs;
    for (const DrawOp& op : form.surface().ops())
        if (op.kind == DrawOp::Kind::Disc) discs.push_back(op);
    ASSERT_EQ(discs.size(), 3u);
    for (const DrawOp& disc : discs)
        EXPECT_NEAR(disc.radius, 250 * 0.3561, 0.05);
    EXPECT_EQ(discs[1].x1 - discs[0].x1, discs[2].x1 - discs[1].x1);

    // Printed as a PDF: one page for the one inductor of the design.
    dialogs.pdfPath = folder.File("winding.pdf");
    Click(form, "cmdPrint");
    const auto [pages, text] = test::PagesAndText(*dialogs.pdfPath);
    EXPECT_EQ(pages, "1\n");
    for (const char* part : {"Winding data for L1 inductor:", "22.136", "35.609 %", kPrintFooter})
        EXPECT_NE(text.find(part), std::string::npos) << part << " not in " << text;
    EXPECT_EQ(text.find("L2 inductor"), std::string::npos);
}

// Each stop shows its one message and no results; an overfull pitch is marked red and the gauge
// takes the focus.
TEST_F(FrmInductorTest, StopsAndAnOverfullPitch) {
    const std::pair<std::array<const char*, 3>, std::string> stops[] = {
        {{"1", "", "2"}, "For that diameter and turn specification,\r\nthe length is negative."},
        {{"", "100", "1000.5"}, "Turns = 1000.5\r\nWe cannot accommodate greater than 1000 turns"}};
    for (const auto& [entries, message] : stops) {
        FrmInductor& form = Open();
        dialogs.clear();
        for (int i = 0; i < 3; ++i)
            Type(form, std::array{"txtFormDiameter", "txtFormLength", "txtTurns"}[i], entries[i]);
        Click(form, "cmdCompute");
        EXPECT_EQ(dialogs.messages(), std::vector<std::string>{message});
        EXPECT_FALSE(Shown(form, "Label7") || Enabled(form, "Option1"));
    }
    // 16 turns on 4 in leave a 0.25 in pitch for a 0.327 in wire.
    FrmInductor& form = Open();
    Type(form, "txtFormLength", "4");
    Type(form, "txtTurns", "16");
    Click(form, "cmdCompute");
    Type(form, "txtFormDiameter", "");
    Type(form, "txtActualGauge", "0");
    Click(form, "cmdCompute");
    EXPECT_EQ(Find<QLabel>(form, "Label17")->palette().color(QPalette::Window),
              QColor(0xFF, 0x66, 0x66));
    EXPECT_EQ(form.focusWidget(), Find<QWidget>(form, "txtActualGauge"));
}

TEST_F(FrmInductorTest, PrintWaitsForEveryInductorOfTheDesign) {
    state.intermediateR = 300;
    FrmInductor& form = Open();
    EXPECT_TRUE(Enabled(form, "Option3"));
    Click(form, "cmdCompute");  // neither inductor chosen yet
    EXPECT_EQ(dialogs.messages(),
              std::vector<std::string>{"Choose the inductor to wind first: L1 or L2."});
    for (const char* inductor : {"Option4", "Option3"}) {
        EXPECT_FALSE(Enabled(form, "cmdPrint")) << inductor;
        Click(form, inductor);
        Type(form, "txtFormDiameter", "1");
        Type(form, "txtFormLength", "2");
        Click(form, "cmdCompute");
    }
    EXPECT_TRUE(Enabled(form, "cmdPrint"));
    EXPECT_EQ(form.windings()[1]->targetInductance, state.L2);
    dialogs.pdfPath = folder.str();  // a folder cannot be written as a file
    Click(form, "cmdPrint");
    EXPECT_EQ(dialogs.messages().back(), "We had a problem printing the inductor design data");
    testing::Key(&form, Qt::Key_Escape);
    EXPECT_EQ(returns, 1);
}

}  // namespace
}  // namespace varo
