#include "tools/inductor/qt/frm_inductor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "core/fault.h"
#include "core/numtext.h"
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
    FrmInductorTest() {
        state.plateR = 1500;
        state.C1 = 190e-12f;
        state.L1 = 10e-6f;
        state.C2 = 960e-12f;
        state.L2 = 2e-6f;
        state.C3 = 1200e-12f;
        state.intermediateR = 50;  // no L section unless a test says otherwise
        state.loadR = 50;
    }
    FrmInductor& Open() {
        screen = std::make_unique<FrmInductor>(state, coil, dialogs, [this] { ++returns; });
        return *screen;
    }
    DesignState state;
    CoilState coil;
    test::PdfDialogs dialogs;
    testing::TempFolder folder;
    int returns = 0;
    std::unique_ptr<FrmInductor> screen;
};

// The unit chosen is relabelled at once, without converting the entries, and outlives the
// screen.
TEST_F(FrmInductorTest, OpensInTheKeptUnitWithNothingToPrint) {
    coil.unitSystem = kInches;
    for (const std::string u : {"in", "cm"}) {
        FrmInductor& form = Open();
        EXPECT_EQ(form.windowTitle().toStdString(), ScreenCaption("Inductor Design screen"));
        const std::pair<const char*, std::string> captions[] = {
            {"lblFormDiameter", "Median diameter (" + u + "): "},
            {"lblFormLength", "Length (" + u + "): "},
            {"Label6", "Turns per " + u + ": "},
            {"Label8", "Wire length (" + u + "): "},
            {"Label14", "Wire diameter (" + u + "): "}};
        for (const auto& [name, caption] : captions)
            EXPECT_EQ(TextOf(form, name), caption) << name;
        EXPECT_TRUE(Find<QRadioButton>(form, u == "in" ? "Option1" : "Option2")->isChecked());
        EXPECT_FALSE(Enabled(form, "cmdPrint"));
        EXPECT_FALSE(Shown(form, "txtActualGauge"));
        EXPECT_FALSE(Shown(form, "Label17"));
        // Without an L section only L1 is offered, and it is the one wound.
        EXPECT_FALSE(Enabled(form, "Option3"));
        EXPECT_TRUE(Find<QRadioButton>(form, "Option4")->isChecked());
        EXPECT_EQ(coil.targetInductance, state.L1);
        Type(form, "txtFormDiameter", "2");
        Click(form, "Option2");
        EXPECT_EQ(TextOf(form, "lblFormDiameter"), "Median diameter (cm): ");
        EXPECT_EQ(TextOf(form, "txtFormDiameter"), "2");
        EXPECT_FLOAT_EQ(coil.coilDiameter, u == "in" ? 2.0f : 2 / 2.54f);  // held in inches
    }
}

TEST_F(FrmInductorTest, WorkedExampleShowsTheWindingAndItsWire) {
    FrmInductor& form = Open();
    Type(form, "txtFormDiameter", "2");
    Type(form, "txtFormLength", "4");
    Click(form, "cmdCompute");
    ASSERT_TRUE(Shown(form, "txtActualGauge"));
    Type(form, "txtActualGauge", "14");
    testing::Key(Find<QLineEdit>(form, "txtActualGauge"),
                 Qt::Key_Return);  // Enter computes

    EXPECT_TRUE(dialogs.messages().empty());
    const std::pair<const char*, const char*> results[] = {
        {"txtTurns", "  22.136 "}, {"Label7", "  5.534 "},    {"Label9", "  139.14 "},
        {"Label11", "  6"},        {"Label15", "  0.06435 "}, {"Label17", "  35.609 "}};
    for (const auto& [name, text] : results)
        EXPECT_EQ(TextOf(form, name), text) << name;
    EXPECT_EQ(Find<QLabel>(form, "Label17")->palette().color(QPalette::Window),
              QColor(0xEE, 0xEE, 0xEE));
    EXPECT_FALSE(Enabled(form, "Option1"));  // the unit is fixed until the screen closes
    EXPECT_FALSE(Enabled(form, "Option2"));
    EXPECT_TRUE(Enabled(form, "cmdPrint"));
    EXPECT_EQ(TextOf(form, "lblShape"), "");
    testing::CheckLayoutAtSizes(form);

    // Three wires of 35.61 % of the pitch, and the caption under them.
    std::vector<DrawOp> discs;
    bool caption = false;
    for (const DrawOp& op : form.surface().ops()) {
        if (op.kind == DrawOp::Kind::Disc) discs.push_back(op);
        if (op.kind == DrawOp::Kind::Text && op.text == "Cross-section detail")
            caption = op.x1 == 8000 && op.y1 == 7600;
    }
    ASSERT_EQ(discs.size(), 3u);
    for (const DrawOp& disc : discs)
        EXPECT_NEAR(disc.radius, 250 * 0.3561, 0.05);
    EXPECT_EQ(discs[1].x1 - discs[0].x1, discs[2].x1 - discs[1].x1);
    EXPECT_TRUE(caption);

    // Printed as a PDF: one page for the one inductor of the design.
    dialogs.pdfPath = folder.File("winding.pdf");
    Click(form, "cmdPrint");
    const auto [pages, text] = test::PagesAndText(*dialogs.pdfPath);
    EXPECT_EQ(pages, "1\n");
    for (const char* part : {"Winding data for L1 inductor:", "22.136", "35.609 %", kPrintFooter})
        EXPECT_NE(text.find(part), std::string::npos) << part << " not in " << text;
    EXPECT_EQ(text.find("L2 inductor"), std::string::npos);
}

TEST_F(FrmInductorTest, EachStopShowsOneMessageAndNoResults) {
    const std::string twoEntries =
        "We need exactly two entries; enter only two "
        "of these:\r\n   Diameter\r\n   Length\r\n"
        "   Number of turns";
    struct Stop {
        const char *diameter, *length, *turns;
        std::string message;
        std::string lengthShown;
    };
    const Stop stops[] = {
        {"2", "", "", twoEntries, ""},  // one measure is not enough
        {"1", "", "2", "For that diameter and turn specification,\r\nthe length is negative.",
         "-0.44 "},
        {"", "100", "1000.5", "Turns = 1000.5\r\nWe cannot accommodate greater than 1000 turns",
         "100"}};
    for (const Stop& stop : stops) {
        FrmInductor& form = Open();
        dialogs.clear();
        Type(form, "txtFormDiameter", stop.diameter);
        Type(form, "txtFormLength", stop.length);
        Type(form, "txtTurns", stop.turns);
        Click(form, "cmdCompute");
        EXPECT_EQ(dialogs.messages(), std::vector<std::string>{stop.message}) << stop.message;
        EXPECT_EQ(TextOf(form, "txtFormLength"), stop.lengthShown);
        EXPECT_FALSE(Shown(form, "Label7"));
        EXPECT_FALSE(Enabled(form, "Option1"));
    }
}

// Finds the gauge whose wire is exactly `diameter` inches in single precision.
float GaugeForDiameter(float diameter) {
    float gauge = static_cast<float>(20.0 * std::log(0.327 / diameter) / std::log(10.2));
    for (int step = 0; step < 1000; ++step) {
        const float wire = StoreSingle(0.327 / std::pow(10.2, gauge / 20.0));
        if (wire == diameter) return gauge;
        gauge = std::nextafter(gauge, wire > diameter ? 1000.0f : -1000.0f);
    }
    ADD_FAILURE() << "no gauge gives " << diameter;
    return 0;
}

TEST_F(FrmInductorTest, AFullPitchIsMarkedRedAndTheGaugeTakesTheFocus) {
    // 16 turns on 4 in is 4 turns per inch; a 0.25 in wire fills exactly 100 %.
    FrmInductor& form = Open();
    form.show();
    Type(form, "txtFormLength", "4");
    Type(form, "txtTurns", "16");
    Click(form, "cmdCompute");
    // The shown diameter is rounded: solved from it, the turns would not be 16
    // again.
    Type(form, "txtFormDiameter", "");
    Type(form, "txtActualGauge", PlainText(GaugeForDiameter(0.25f)));
    Click(form, "cmdCompute");
    EXPECT_EQ(coil.percentFill, 100.0f);
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
