#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>

#include "core/design_fixture.h"
#include "core/numtext.h"
#include "model/design.h"
#include "model/pictures/design_picture.h"
#include "model/pictures/page_parts.h"
#include "model/pictures/report_pages.h"
#include "platform/qt/qt_print.h"
#include "platform/qt/replay.h"
#include "support/pdf_reading.h"
#include "support/recording_reporter.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using test::PagesAndText;
using test::PdfDialogs;
using test::RecordingReporter;
using testing::TempFolder;

class ReportTest : public ::testing::Test {
  protected:
    void SetUp() override {
        test::SetDesign(*state, test::kReferenceDesign);
        state->peakSwing = 2500;
        state->rfPower = 1000;
        ASSERT_TRUE(design.Load(form, reporter));
    }
    // Whether the report's text layer holds `text` as one of its texts.
    bool Shows(const std::string& text) {
        const PrintDocument document = DesignReportDocument(*state, results, "1/2/2026");
        const auto& texts = document.pages.at(0).placements.at(0).drawing.ops();
        return std::any_of(texts.begin(), texts.end(),
                           [&](const DrawOp& op) { return op.text == text; });
    }
    Design design;
    DesignState* state = &design.state();
    const DesignResults& results = design.results();
    TextFields<DesignForm> form;
    RecordingReporter reporter;
    TempFolder folder;
};

TEST_F(ReportTest, DesignReportPdfHoldsValuesStressesAndFooterOnOnePage) {
    PdfDialogs dialogs;
    dialogs.pdfPath = folder.File("report.pdf");
    ASSERT_TRUE(PrintDesignReport(*state, results, dialogs));
    EXPECT_TRUE(dialogs.messages().empty());
    const auto [pages, text] = PagesAndText(*dialogs.pdfPath);
    EXPECT_EQ(pages, "1\n");
    std::vector<std::string> wanted{kPrintFooter, "227.626pF", "10.3456uH",  "494.23pF",
                                    "4.56258uH",  "304.172pF", "Page 1 of 1"};
    for (const StressText& stress : results.stresses.texts)
        if (stress.part != StressPart::Note) wanted.push_back(stress.text);
    for (const std::string& part : wanted)
        EXPECT_NE(text.find(part), std::string::npos) << part << " not in " << text;
}

// The losses say which Q they took: the coil Q, and a coil wound for the design's L1 by its own.
TEST_F(ReportTest, TheLossesNameTheWoundCoilsQ) {
    design.SetLossQ(TankQ{});
    EXPECT_TRUE(Shows("With coils of unloaded Q 300 and capacitors of Q 2k:"));
    design.SetWoundCoil(TankPart::L1, WoundCoil{{0.0508, 0.1016, 20, 0.0016}, state->L1});
    design.UseWoundCoilQ(true);
    const double q = *design.results().losses->q.wound[0];
    EXPECT_TRUE(Shows("but with L1 as wound, Q " + std::to_string(std::lround(q)) + ":")) << q;
}

// In the page's own fonts no text of the report runs into another: the stress columns of the
// component table, the plot's frequency labels, the harmonic table's "(ohms)" inside the plot's
// window (each placement measured in its own units: the print scales it whole).
TEST_F(ReportTest, NoTextRunsIntoAnother) {
    design.SetLossQ(TankQ{});
    state->frequency = 7.15e6f;
    ASSERT_TRUE(design.Load(form, reporter));
    const PrintDocument document = DesignReportDocument(*state, results, "1/2/2026");
    for (const PagePlacement& placement : document.pages.at(0).placements) {
        const LogicalRect& window = placement.source;
        std::vector<TextBox> boxes;
        for (const TextBox& box : TextBoxes(placement.drawing, QtTextMeasure()))
            if (box.left < window.left + window.width && box.right > window.left &&
                box.top < window.top + window.height && box.bottom > window.top)
                boxes.push_back(box);
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            EXPECT_LE(boxes[i].right, window.left + window.width) << boxes[i].text;
            for (std::size_t j = i + 1; j < boxes.size(); ++j)
                EXPECT_FALSE(boxes[i].Overlaps(boxes[j]))
                    << boxes[i].text << " / " << boxes[j].text;
        }
    }
}

// Once a band plan is made, the report prints it on a second page, read back from the PDF.
TEST_F(ReportTest, ABandPlanIsTheReportsSecondPage) {
    BandPlanInputs amp;
    amp.tubeCapacitance = 5e-12;
    amp.strayCapacitance = 10e-12;
    amp.tune = {10e-12, 150e-12};
    amp.load = {30e-12, 3000e-12};
    amp.bands = {{"160 m", 1.8e6, 2.0e6}, {"40 m", 7.0e6, 7.3e6}};
    design.SetBandPlanInputs(amp);
    PdfDialogs dialogs;
    dialogs.pdfPath = folder.File("report.pdf");
    ASSERT_TRUE(PrintDesignReport(*state, results, dialogs));
    const auto [pages, text] = PagesAndText(*dialogs.pdfPath);
    EXPECT_EQ(pages, "2\n");
    for (const std::string part :
         {"Page 1 of 2", "Page 2 of 2", "VARO - Band plan", "160 m: NOT feasible",
          "the tuning capacitor needs", "40 m: feasible", "Tuning capacitor, pF"})
        EXPECT_NE(text.find(part), std::string::npos) << part << " not in " << text;
}

// A large-plot nudge stays until the next recalculation: the report shows it and its stresses.
TEST_F(ReportTest, ReportShowsTheValuesTheDesignHoldsAfterANudge) {
    const float before = state->C3;
    const std::vector<StressText> stressesBefore = results.stresses.texts;
    ASSERT_TRUE(design.NudgePart(Nudge::CapacitorUp, reporter));
    EXPECT_TRUE(Shows(FormatFarad(state->C3)));
    EXPECT_FALSE(Shows(FormatFarad(before)));
    EXPECT_NE(results.stresses.texts, stressesBefore);
}

// Without an L section its rows stand blank, whatever the state kept of the design before.
TEST_F(ReportTest, AnAbsentLSectionPrintsNoValues) {
    const std::string staleReactance = WithUnit(state->xL2, "ohms");
    ASSERT_TRUE(Shows(staleReactance));
    for (const auto& [field, text] : {std::pair{DesignField::Frequency, "3.9M"},
                                      {DesignField::Plate, "1500"},
                                      {DesignField::Intermediate, "50"},
                                      {DesignField::NominalLoad, "50"},
                                      {DesignField::Q, "12"}})
        form.SetText(field, text);
    ScriptedDialogs dialogs;
    design.Accept(form, dialogs, reporter);
    EXPECT_FALSE(results.components.lSection.has_value());
    EXPECT_FALSE(Shows(staleReactance));
}

}  // namespace
}  // namespace varo
