#include "screens/design/small_plot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "core/numtext.h"
#include "core/recording_reporter.h"

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
    // Where the first operation that `keep` picks lies in the list.
    std::ptrdiff_t FirstWhere(bool (*keep)(const DrawOp&)) const {
        return std::find_if(surface.ops().begin(), surface.ops().end(), keep) -
               surface.ops().begin();
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
    std::vector<float> verticalX;
    std::vector<float> horizontalY;
    for (const DrawOp& op : ops) {
        if (op.kind != Kind::Line || op.colour != kPlotGrid) continue;
        if (op.x1 == op.x2) verticalX.push_back(op.x1);
        if (op.y1 == op.y2) horizontalY.push_back(op.y1);
    }
    EXPECT_EQ(horizontalY, (std::vector<float>{1200, 1699, 2198, 2697, 3196, 3695, 4194}));
    // 2, 3 ... 10 MHz, worked out by hand.
    const std::vector<float> expectedX = {8224.75f,  8907.21f,  9391.42f,  9767.00f, 10073.88f,
                                          10333.33f, 10558.09f, 10756.33f, 10933.67f};
    ASSERT_EQ(verticalX.size(), expectedX.size());
    for (std::size_t i = 0; i < expectedX.size(); ++i)
        EXPECT_NEAR(verticalX[i], expectedX[i], 0.05f) << i;

    const auto vertical = FirstWhere([](const DrawOp& op) {
        return op.kind == Kind::Line && op.colour == kPlotGrid && op.x1 == op.x2;
    });
    const auto horizontal = FirstWhere([](const DrawOp& op) {
        return op.kind == Kind::Line && op.colour == kPlotGrid && op.y1 == op.y2;
    });
    const auto red = FirstWhere([](const DrawOp& op) { return op.colour == kRed; });
    const auto blue = FirstWhere([](const DrawOp& op) { return op.colour == kBlue; });
    const auto table = FirstWhere([](const DrawOp& op) { return op.text == "Frequency:"; });
    EXPECT_LT(vertical, horizontal);
    EXPECT_LT(horizontal, red);
    EXPECT_LT(red, blue);
    EXPECT_LT(blue, table);
    // Each curve is 2000 lines across the whole plot.
    for (Colour colour : {kRed, kBlue}) {
        std::vector<DrawOp> curve;
        std::copy_if(ops.begin(), ops.end(), std::back_inserter(curve), [colour](const DrawOp& op) {
            return op.kind == Kind::Line && op.colour == colour;
        });
        ASSERT_EQ(curve.size(), 2000u) << colour;
        EXPECT_EQ(curve.front().x1, 8000);
        EXPECT_EQ(curve.back().x2, 11500);
    }
}

TEST_F(SmallPlotTest, FloorRescalesCurvesAndMarkersAndEdgesHoldThem) {
    struct Case {
        float db, floorDb, y;
    };
    for (const Case& c : {Case{-100, -60, 4200}, Case{-60, -60, 4200}, Case{5, -60, 1200},
                          Case{-30, -60, 2700}, Case{-15, -30, 2700}, Case{-45, -30, 4200}}) {
        state->plotFloorDb = c.floorDb;
        const auto scale = SmallPlotScale::From(*state);
        ASSERT_TRUE(scale);
        EXPECT_EQ(scale->Y(c.db), c.y) << c.db << " on " << c.floorDb;
        EXPECT_EQ(scale->X(state->sweepStart / 2), 8000);
        EXPECT_EQ(scale->X(state->sweepStop * 2), 11500);
    }
}

TEST_F(SmallPlotTest, FirstThreeHarmonicsGetBlueRingsWithWhiteCentres) {
    Draw();
    std::vector<DrawOp> points;
    for (const auto& op : surface.ops())
        if (op.kind == Kind::Point) points.push_back(op);
    ASSERT_EQ(points.size(), 6u);
    // 3.5, 7 and 10.5 MHz: ln(n * 2) / ln 8 of the way across; a matched fundamental is all but
    // lossless, so its ring sits on the 0 dB edge.
    const std::vector<float> expectedX = {9166.67f, 10333.33f, 11015.79f};
    for (size_t n = 0; n < 3; ++n) {
        const DrawOp& ring = points[2 * n];
        const DrawOp& centre = points[2 * n + 1];
        EXPECT_EQ((std::vector{ring.width, centre.width}), (std::vector<float>{8, 6}));
        EXPECT_EQ((std::vector{ring.colour, centre.colour}), (std::vector<Colour>{kBlue, kWhite}));
        EXPECT_EQ(ring.x1, centre.x1);
        EXPECT_EQ(ring.y1, centre.y1);
        EXPECT_NEAR(ring.x1, expectedX[n], 0.05f) << n;
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
        const DrawOp* impedance = TextAt(surface, 10800, y);
        ASSERT_TRUE(name && frequency && transmission && impedance) << n;
        EXPECT_EQ(name->text, names[n - 1]);
        EXPECT_EQ(frequency->text, " " + frequencies[n - 1] + " ");
        EXPECT_EQ(transmission->text.substr(transmission->text.size() - 3), " dB");
        EXPECT_EQ(impedance->text.front(), ' ');
        EXPECT_EQ(impedance->text.back(), ' ');
    }
    // The matched network shows the plate load at the fundamental.
    EXPECT_NEAR(std::stof(TextAt(surface, 10800, 4630)->text), 1500, 15);
    EXPECT_EQ(state->analysisFrequency, 5 * 3.5e6f);
}

TEST(SmallPlotDegenerate, UnusableScaleDrawsNoCurvesAndNeverThrows) {
    struct Case {
        const char* name;
        float sweepStart;
        float sweepStop;
        float floorDb;
    };
    for (const Case& c : {Case{"zero start", 0, 1e6f, -60}, Case{"equal limits", 1e6f, 1e6f, -60},
                          Case{"zero floor", 1e6f, 8e6f, 0}}) {
        auto state = std::make_unique<DesignState>();
        InitialiseConstants(*state);
        test::RecordingReporter reporter;
        state->sweepStart = c.sweepStart;
        state->sweepStop = c.sweepStop;
        state->plotFloorDb = c.floorDb;
        state->graphDivisions = 6;
        state->sweepIntervals = 2000;
        EXPECT_FALSE(SmallPlotScale::From(*state)) << c.name;
        Surface surface(12000, 9000);
        // The table then recomputes an empty design; whatever it reports, drawing goes on.
        DesignResults results;
        results.harmonics = AnalyzeHarmonics(*state, reporter);
        EXPECT_NO_THROW(DrawSmallPlot(surface, *state, results)) << c.name;
        EXPECT_EQ(surface.ops()[0].kind, Kind::FillBox) << c.name;
        EXPECT_TRUE(std::none_of(surface.ops().begin(), surface.ops().end(), [](const DrawOp& op) {
            return op.colour == kRed;
        })) << c.name;
    }
}

}  // namespace
}  // namespace varo
