#include "model/pictures/small_plot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "core/numtext.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

using Kind = DrawOp::Kind;

const DrawOp* TextAt(const Surface& surface, float x, float y) {
    for (const auto& op : surface.ops())
        if (op.kind == Kind::Text && op.x1 == x && op.y1 == y) return &op;
    return nullptr;
}

// A 3.5 MHz design (1500 / 300 / 50 ohms, Q 12), swept from 1.75 to 14 MHz: three octaves, so
// X = 8000 + 3500 ln(f / 1.75M) / ln 8.
class SmallPlotTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(test::Recalculate(*state, reporter)); }

    void Draw() {
        results.gridFrequencies = BuildGridFrequencies(*state);
        results.harmonics = AnalyzeHarmonics(*state, reporter);
        DrawSmallPlot(surface, *state, results);
    }

    std::unique_ptr<DesignState> state = test::MakeDesign({3.5e6f, 1500, 300, 50, 12});
    test::RecordingReporter reporter;
    DesignResults results;
    Surface surface{12000, 9000};
};

TEST_F(SmallPlotTest, FrameFrequencyGridDbGridCurvesThenTable) {
    Draw();
    const auto& ops = surface.ops();
    ASSERT_GE(ops.size(), 2u);
    const auto frameBox = [](Kind kind, Colour colour) {
        return DrawOp{
            .kind = kind, .x1 = 8000, .y1 = 1185, .x2 = 11500, .y2 = 4215, .colour = colour};
    };
    EXPECT_EQ(ops[0], frameBox(Kind::FillBox, 0xFFFFEE));
    EXPECT_EQ(ops[1], frameBox(Kind::OutlineBox, 0x663333));
    // Which part of the plot each operation belongs to, in order of first appearance.
    std::vector<std::string> parts;
    for (const DrawOp& op : ops) {
        const bool grid = op.kind == Kind::Line && op.colour == kPlotGrid;
        const std::string part = grid ? (op.x1 == op.x2 ? "frequency grid" : "dB grid")
                                 : op.colour == kRed       ? "transmission"
                                 : op.colour == kBlue      ? "return"
                                 : op.text == "Frequency:" ? "table"
                                                           : "";
        if (!part.empty() && std::find(parts.begin(), parts.end(), part) == parts.end())
            parts.push_back(part);
    }
    EXPECT_EQ(parts, (std::vector<std::string>{"frequency grid", "dB grid", "transmission",
                                               "return", "table"}));
}

// 3.5, 7 and 10.5 MHz, ln(n * 2) / ln 8 of the way across; a matched fundamental is all but
// lossless, so its ring sits on the 0 dB edge.
TEST_F(SmallPlotTest, FirstThreeHarmonicsGetBlueRingsWithWhiteCentres) {
    Draw();
    std::vector<DrawOp> points;
    for (const auto& op : surface.ops())
        if (op.kind == Kind::Point) points.push_back(op);
    ASSERT_EQ(points.size(), 6u);
    const float expectedX[] = {9166.67f, 10333.33f, 11015.79f};
    for (size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i].width, i % 2 == 0 ? 8 : 6);
        EXPECT_EQ(points[i].colour, i % 2 == 0 ? kBlue : kWhite);
        EXPECT_NEAR(points[i].x1, expectedX[i / 2], 0.05f) << i;
        EXPECT_EQ(points[i].y1, points[i - i % 2].y1);
    }
    EXPECT_NEAR(points[0].y1, 1200, 1);
    EXPECT_EQ(surface.ops().back(), (DrawOp{.kind = Kind::LineWidth, .width = 1}));
}

TEST_F(SmallPlotTest, HarmonicTablePrintsHeadersAndFiveRows) {
    Draw();
    for (const auto& [x, text] : std::vector<std::pair<float, std::string>>{
             {8800, "Frequency:"}, {10000, "Trans.:"}, {10900, "Zin:"}}) {
        const DrawOp* header = TextAt(surface, x, 4470);
        ASSERT_NE(header, nullptr) << text;
        EXPECT_EQ(header->text, text);
    }
    const std::vector<std::string> names = {"Fund", "2nd", "3rd", "4th", "5th"};
    const std::vector<std::string> frequencies = {"3.5M", "7M", "10.5M", "14M", "17.5M"};
    for (int n = 1; n <= 5; ++n) {
        const float y = 4470 + 160.0f * n;
        const DrawOp* name = TextAt(surface, 8700, y);
        const DrawOp* frequency = TextAt(surface, 9100, y);
        const DrawOp* transmission = TextAt(surface, 9900, y);
        ASSERT_TRUE(name && frequency && transmission && TextAt(surface, 10800, y)) << n;
        EXPECT_EQ(name->text, names[n - 1]);
        EXPECT_EQ(frequency->text, " " + frequencies[n - 1] + " ");
        EXPECT_EQ(transmission->text.substr(transmission->text.size() - 3), " dB");
    }
}

// A floor of 0 dB gives no scale: the frame, grid and table are drawn, the curves are not.
TEST_F(SmallPlotTest, UnusableScaleDrawsNoCurvesAndNeverThrows) {
    results.harmonics = AnalyzeHarmonics(*state, reporter);
    state->plotFloorDb = 0;
    EXPECT_NO_THROW(DrawSmallPlot(surface, *state, results));
    EXPECT_EQ(surface.ops()[0].kind, Kind::FillBox);
    EXPECT_TRUE(std::none_of(surface.ops().begin(), surface.ops().end(),
                             [](const DrawOp& op) { return op.colour == kRed; }));
    EXPECT_NE(TextAt(surface, 8800, 4470), nullptr);
}

}  // namespace
}  // namespace varo
