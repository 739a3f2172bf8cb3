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
bool IsText(const DrawOp& op) {
    return op.kind == Kind::Text;
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

// The design a first run starts with (3.9 MHz, 1500 / 300 / 50 ohms, Q 12), swept from 1.95 to
// 15.6 MHz: three octaves, so X = 2000 + 9000 ln(f / 1.95M) / ln 8 on the large plot.
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
        EXPECT_EQ(op.x1, 2000);
        EXPECT_EQ(op.x2, 11000);
        ys.push_back(op.y1);
    }
    EXPECT_EQ(ys, (std::vector<float>{1000, 1999, 2998, 3997, 4996, 5995, 6994}));

    // 2 to 9, 10 and 15 MHz.
    const std::vector<float> expectedX = {2109.58f, 3864.47f, 5109.58f, 6075.36f, 6864.47f,
                                          7531.64f, 8109.58f, 8619.35f, 9075.36f, 10830.25f};
    const std::vector<DrawOp> verticals = Select(surface, IsVerticalGridLine);
    ASSERT_EQ(verticals.size(), expectedX.size());
    for (std::size_t i = 0; i < verticals.size(); ++i)
        EXPECT_EQ(Rounded(verticals[i]),
                  Rounded(Shape(Kind::Line, expectedX[i], 1000, expectedX[i], 7000, kPlotGrid)))
            << i;

    // The dB grid comes before the frequency grid. Then each curve: a one-pixel blue dot at its
    // first point and 2000 lines on from it, transmission red and return blue.
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

TEST_F(LargePlotTest, HarmonicMarkersAreThinRingsHeldOnTheChart) {
    struct Case {
        float frequency, db;
        float x, y;
    };
    // The fundamental at the centre of the sweep's first octave, the 2nd a third of the way
    // across; a point below the floor or past the sweep sits on the edge.
    for (const Case& c : {Case{3.9e6f, 0, 5000, 1000}, Case{7.8e6f, -30, 8000, 4000},
                          Case{19.5e6f, -80, 11000, 7000}, Case{1e6f, 3, 2000, 1000}}) {
        Surface marks(12000, 9000);
        MarkLargePlotHarmonic(marks, *state, c.frequency, c.db);
        ASSERT_EQ(marks.ops().size(), 3u);
        const DrawOp& ring = marks.ops()[0];
        const DrawOp& centre = marks.ops()[1];
        EXPECT_NEAR(ring.x1, c.x, 0.01f) << c.frequency;
        EXPECT_NEAR(ring.y1, c.y, 0.01f) << c.frequency;
        EXPECT_EQ((std::vector{ring.width, centre.width}), (std::vector<float>{23, 20}));
        EXPECT_EQ((std::vector{ring.colour, centre.colour}),
                  (std::vector<Colour>{kBlue, 0xFFFFEE}));
        EXPECT_EQ(marks.ops()[2], (DrawOp{.kind = Kind::LineWidth, .width = 1}));
    }
}

// Curves of the large plot keep X as mapped; markers and overlays are held inside.
TEST_F(LargePlotTest, OnlyCurvesMayLeaveTheAreaSideways) {
    state->sweepFrequency[state->sweepIntervals] = 2 * state->sweepStop;
    state->sweepTransmission[0] = -200;
    DrawLargePlotChart(surface, *state, grid);
    const auto red = Select(surface, [](const DrawOp& op) { return op.colour == kRed; });
    ASSERT_EQ(red.size(), 2000u);
    EXPECT_NEAR(red.back().x2, 14000, 0.5f);
    EXPECT_EQ(Select(surface, [](const DrawOp& op) { return op.kind == Kind::Point; })[0].y1, 7000);
}

TEST_F(LargePlotTest, OverlayIsAWideLightCurveHeldInsideTheChart) {
    struct Case {
        int curve;
        Colour colour;
    };
    std::array<float, kSweepPoints> values{};
    // 3.9 MHz at -30 dB, a frequency past the sweep above the top, one below it under the floor.
    state->sweepFrequency[0] = 3.9e6f;
    state->sweepFrequency[1] = 40e6f;
    state->sweepFrequency[2] = 1e6f;
    values[0] = -30;
    values[1] = 10;
    values[2] = -90;
    for (const Case& c :
         {Case{0, RgbColour(0x99, 0x99, 0xFF)}, Case{1, RgbColour(0xFF, 0x66, 0x11)}}) {
        Surface overlay(12000, 9000);
        DrawOverlay(overlay, kLargePlotFrame, *state, values, 2, 0, -60, c.curve);
        const std::vector<DrawOp> expected = {
            DrawOp{.kind = Kind::LineWidth, .width = 2},
            Shape(Kind::Line, 5000, 4000, 5000, 4000, c.colour),
            Shape(Kind::Line, 5000, 4000, 11000, 1000, c.colour),
            Shape(Kind::Line, 11000, 1000, 2000, 7000, c.colour),
            DrawOp{.kind = Kind::LineWidth, .width = 1},
        };
        std::vector<DrawOp> drawn;
        std::transform(overlay.ops().begin(), overlay.ops().end(), std::back_inserter(drawn),
                       Rounded);
        EXPECT_EQ(drawn, expected) << c.curve;
    }
    // A floor of -30 puts the -30 dB point on the bottom edge.
    Surface rescaled(12000, 9000);
    DrawOverlay(rescaled, kLargePlotFrame, *state, values, 0, 0, -30, 0);
    EXPECT_EQ(rescaled.ops()[1].y1, 7000);
}

// Labels every line; room permitting centred on it, crowded ones smaller and moved just apart.
TEST_F(LargePlotTest, FrequencyLabelsNeverRunTogether) {
    for (float width : {9000.0f, 2500.0f}) {
        PlotFrame narrow = kLargePlotFrame;
        narrow.area.right = narrow.area.left + width;
        Surface labelled(12000, 9000);
        const auto scale = PlotScale::From(narrow.area, *state);
        ASSERT_TRUE(scale);
        DrawFrequencyGrid(labelled, narrow, *scale, grid);
        std::vector<TextBox> boxes = TextBoxes(labelled, AverageGlyphMeasure());
        std::vector<std::string> texts;
        for (const TextBox& box : boxes)
            texts.push_back(box.text);
        EXPECT_EQ(texts, (std::vector<std::string>{"2M", "3M", "4M", "5M", "6M", "7M", "8M", "9M",
                                                   "10M", "15M"}))
            << width;
        for (std::size_t i = 1; i < boxes.size(); ++i)
            EXPECT_LE(boxes[i - 1].right + narrow.labels.gap, boxes[i].left + 0.01f)
                << width << " " << boxes[i].text;
        // Under the plot, each on a white strip as wide as itself.
        const std::vector<DrawOp> labels = Select(labelled, IsText);
        const std::vector<DrawOp> strips = Select(labelled, [](const DrawOp& op) {
            return op.kind == Kind::Line && op.colour == kWhite;
        });
        ASSERT_EQ(strips.size(), labels.size());
        for (std::size_t i = 0; i < labels.size(); ++i) {
            EXPECT_EQ(labels[i].y1, labels[0].y1);  // one baseline, whatever the size
            EXPECT_EQ(labels[i].align, kAlignBaselineCentre);
            EXPECT_EQ(strips[i].y1, 7060);
            EXPECT_NEAR(strips[i].x1, boxes[i].left, 0.01f);
            EXPECT_NEAR(strips[i].x2, boxes[i].right, 0.01f);
        }
        EXPECT_NEAR(boxes[0].top, 7060, 0.01f);
    }
}

TEST_F(LargePlotTest, DbLabelsSitRightAlignedBesideTheirLines) {
    struct Case {
        float floorDb;
        std::vector<std::string> texts;
    };
    for (const Case& c : {Case{-60, {"0", "-10", "-20", "-30", "-40", "-50", "-60"}},
                          Case{-30, {"0", "-5", "-10", "-15", "-20", "-25", "-30"}}}) {
        Surface labelled(12000, 9000);
        DrawDbGrid(labelled, kLargePlotFrame, 6, c.floorDb);
        const std::vector<DrawOp> lines = Select(labelled, IsHorizontalGridLine);
        const std::vector<DrawOp> labels = Select(labelled, IsText);
        ASSERT_EQ(labels.size(), c.texts.size());
        for (std::size_t i = 0; i < labels.size(); ++i)
            EXPECT_EQ(labels[i], (DrawOp{.kind = Kind::Text,
                                         .x1 = 1960,
                                         .y1 = lines.at(i).y1,
                                         .text = c.texts[i],
                                         .align = kAlignMiddleRight}));
    }
}

// 0 dB on the top edge, the floor on the bottom; a broken (NaN) value sits on the bottom edge
// like any value below the floor.
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

TEST(PlotScale, UnusableLimitsGiveNoScaleAndNoGridStep) {
    const PlotArea area = kLargePlotFrame.area;
    EXPECT_FALSE(PlotScale::From(area, 0, 1e6f, -60));
    EXPECT_FALSE(PlotScale::From(area, 1e6f, 1e6f, -60));
    EXPECT_FALSE(PlotScale::From(area, 1e6f, 8e6f, 0));
    EXPECT_FALSE(PlotScale::From(area, 1e6f, 8e6f, -60, -60));
    for (int divisions : {0, -6, 5999, 6000, 32767}) {
        Surface grid(12000, 9000);
        DrawDbGrid(grid, kLargePlotFrame, divisions, -60);
        EXPECT_TRUE(grid.ops().empty()) << divisions;
    }
}

}  // namespace
}  // namespace varo
