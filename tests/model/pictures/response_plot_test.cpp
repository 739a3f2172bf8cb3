#include "model/pictures/response_plot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "core/numtext.h"
#include "model/pictures/large_plot.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

using Kind = DrawOp::Kind;

std::vector<DrawOp> Select(const Surface& surface, bool (*keep)(const DrawOp&)) {
    std::vector<DrawOp> kept;
    std::copy_if(surface.ops().begin(), surface.ops().end(), std::back_inserter(kept), keep);
    return kept;
}
bool IsHorizontalGridLine(const DrawOp& op) {
    return op.kind == Kind::Line && op.colour == kPlotGrid && op.y1 == op.y2;
}
bool IsVerticalGridLine(const DrawOp& op) {
    return op.kind == Kind::Line && op.colour == kPlotGrid && op.x1 == op.x2;
}

DrawOp Shape(Kind kind, float x1, float y1, float x2, float y2, Colour colour) {
    return DrawOp{.kind = kind, .x1 = x1, .y1 = y1, .x2 = x2, .y2 = y2, .colour = colour};
}

// To the hundredth: single precision leaves the last digits of a coordinate uncertain.
DrawOp Rounded(DrawOp op) {
    for (float* coordinate : {&op.x1, &op.y1, &op.x2, &op.y2})
        *coordinate = std::round(*coordinate * 100) / 100;
    return op;
}

// The start-up design swept over three octaves from 1.95 MHz: X = 2000 + 9000 ln(f / 1.95M) / ln 8.
class LargePlotTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(test::Recalculate(*state, reporter));
        BuildLogGrid(*state);
        grid.assign(state->gridFrequencies.begin(),
                    state->gridFrequencies.begin() + state->gridLastIndex + 1);
    }

    std::unique_ptr<DesignState> state = test::MakeDesign(test::kReferenceDesign);
    test::RecordingReporter reporter;
    std::vector<float> grid;
    Surface surface{12000, 9000};
};

TEST_F(LargePlotTest, ChartDrawsFrameGridsAndCurvesOnItsOwnScale) {
    DrawLargePlotChart(surface, *state, grid);
    const auto& ops = surface.ops();
    ASSERT_GE(ops.size(), 2u);
    EXPECT_EQ(ops[0], Shape(Kind::FillBox, 2000, 1000, 11000, 7000, 0xFFFFEE));
    EXPECT_EQ(ops[1], Shape(Kind::OutlineBox, 2000, 985, 11000, 7015, 0x663333));

    std::vector<float> ys;
    for (const DrawOp& op : Select(surface, IsHorizontalGridLine)) {
        EXPECT_EQ(std::pair(op.x1, op.x2), std::pair(2000.0f, 11000.0f));
        ys.push_back(op.y1);
    }
    EXPECT_EQ(ys, (std::vector<float>{1000, 1999, 2998, 3997, 4996, 5995, 6994}));

    // 2 to 9, 10 and 15 MHz, each from the top edge to the bottom.
    std::vector<float> xs;
    for (const DrawOp& op : Select(surface, IsVerticalGridLine)) {
        EXPECT_EQ((std::vector{op.y1, op.y2}), (std::vector<float>{1000, 7000}));
        xs.push_back(std::round(op.x1 * 100) / 100);
    }
    EXPECT_EQ(xs, (std::vector<float>{2109.58f, 3864.47f, 5109.58f, 6075.36f, 6864.47f, 7531.64f,
                                      8109.58f, 8619.35f, 9075.36f, 10830.25f}));

    // dB grid, frequency grid, then each curve: a blue dot at its start and 2000 lines on.
    const auto firstOf = [&](auto keep) { return std::find_if(ops.begin(), ops.end(), keep); };
    EXPECT_LT(firstOf(IsHorizontalGridLine), firstOf(IsVerticalGridLine));
    auto dot = firstOf([](const DrawOp& op) { return op.kind == Kind::Point; });
    EXPECT_GT(dot, firstOf(IsVerticalGridLine));
    for (Colour line : {kRed, kBlue}) {
        ASSERT_GE(std::distance(dot, ops.end()), 2001);
        EXPECT_EQ(*dot, (DrawOp{.kind = Kind::Point, .x1 = 2000, .y1 = dot->y1, .colour = kBlue}));
        EXPECT_EQ((std::vector{dot[1].x1, dot[1].y1}), (std::vector{dot->x1, dot->y1}));
        EXPECT_TRUE(std::all_of(dot + 1, dot + 2001, [line](const DrawOp& op) {
            return op.kind == Kind::Line && op.colour == line;
        }));
        EXPECT_NEAR(dot[2000].x2, 11000, 0.01f);
        dot += 2001;
    }
    EXPECT_EQ(dot, ops.end());
}

TEST_F(LargePlotTest, OverlayIsAWideLightCurveHeldInsideTheChart) {
    std::array<float, kSweepPoints> values{};
    // 3.9 MHz at -30 dB, a frequency past the sweep above the top, one below it under the floor.
    state->sweepFrequency[0] = 3.9e6f;
    state->sweepFrequency[1] = 40e6f;
    state->sweepFrequency[2] = 1e6f;
    values[0] = -30;
    values[1] = 10;
    values[2] = -90;
    for (const auto& c :
         {std::pair{0, RgbColour(0x99, 0x99, 0xFF)}, std::pair{1, RgbColour(0xFF, 0x66, 0x11)}}) {
        Surface overlay(12000, 9000);
        DrawOverlay(overlay, kLargePlotFrame, *state, values, 2, 0, -60, c.first);
        const std::vector<DrawOp> expected = {
            DrawOp{.kind = Kind::LineWidth, .width = 2},
            Shape(Kind::Line, 5000, 4000, 5000, 4000, c.second),
            Shape(Kind::Line, 5000, 4000, 11000, 1000, c.second),
            Shape(Kind::Line, 11000, 1000, 2000, 7000, c.second),
            DrawOp{.kind = Kind::LineWidth, .width = 1},
        };
        std::vector<DrawOp> drawn;
        std::ranges::transform(overlay.ops(), std::back_inserter(drawn), Rounded);
        EXPECT_EQ(drawn, expected) << c.first;
    }
}

// 0 dB on the top edge; the floor, anything below it and NaN on the bottom.
TEST(PlotScale, DbMapsTopToFloorAndHeldInside) {
    const auto scale = PlotScale::From(kLargePlotFrame.area, 1e6f, 8e6f, -60);
    ASSERT_TRUE(scale);
    for (const auto& [db, y] : {std::pair{0.0f, 1000.0f},
                                {-30.0f, 4000.0f},
                                {-90.0f, 7000.0f},
                                {10.0f, 1000.0f},
                                {NAN, 7000.0f}})
        EXPECT_EQ(scale->Y(db), y) << db;
}

// Every glyph 10 units wide per point. On a 900-unit area from 1 to 10 MHz the lines of 1, 1.5
// and 10 MHz stand at 0, 158.5 and 900: the first two have 158.5 - 40 = 118.5 of room, so both
// drop to the smallest size (6 points), "1M" 120 wide and "1.5M" 240; "10M" keeps 9 points, 270.
TEST(DrawFrequencyGrid, ALabelCrowdedOnEitherSideIsSetSmaller) {
    struct TenPerPoint final : TextMeasure {
        TextExtent Measure(const SurfaceFont& font, std::string_view text) const override {
            const float width = 10 * font.pointSize * static_cast<float>(text.size());
            return {width, 12 * font.pointSize, 9 * font.pointSize};
        }
    } measure;
    PlotFrame frame = kLargePlotFrame;
    frame.area = {0, 0, 900, 600};
    Surface surface(12000, 9000);
    surface.SetTextMeasure(&measure);
    const auto scale = PlotScale::From(frame.area, 1e6f, 1e7f, -60);
    ASSERT_TRUE(scale);
    DrawFrequencyGrid(surface, frame, *scale, {1e6f, 1.5e6f, 1e7f});
    std::vector<float> widths;
    for (const DrawOp& strip : Select(surface, [](const DrawOp& op) {
             return op.kind == Kind::Line && op.colour == kWhite;
         }))
        widths.push_back(std::round(strip.x2 - strip.x1));
    EXPECT_EQ(widths, (std::vector<float>{120, 240, 270}));
}

}  // namespace
}  // namespace varo
