#include "model/pictures/smith_chart.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace varo {
namespace {

constexpr double kPi = std::numbers::pi;

// The box leaves 4000 units above the caption's 300: the rim's radius is 4000 / 2 - 60 = 1940,
// its centre (2000, 2000).
constexpr ChartBox kBox{0, 0, 4000, 4300};
constexpr float kCentre = 2000, kRadius = 1940;

LoadCase Load(double r, double x, bool solvable = true) {
    LoadCase load;
    load.zLoad = {r, x};
    load.tuning.solvable = solvable;
    return load;
}

// Made by hand, so the picture is tried on its own: the chart reads, never works out.
LoadRangeResult FourLoads() {
    LoadRangeResult result;
    result.request.kind = LoadRangeRequest::Kind::SwrCircle;
    result.request.swr = 3;
    result.range.loads = {Load(50, 0), Load(100, 0), Load(40, 30), Load(12.5, 0, false)};
    result.range.worst[static_cast<int>(LoadStress::C1Volts)] = {1, 2121};
    result.range.worst[static_cast<int>(LoadStress::L1Amperes)] = {1, 9};
    result.range.worst[static_cast<int>(LoadStress::LossWatts)] = {2, 40};
    return result;
}

std::vector<DrawOp> OpsOf(const Surface& surface, DrawOp::Kind kind, Colour colour) {
    std::vector<DrawOp> found;
    std::ranges::copy_if(surface.ops(), std::back_inserter(found),
                         [&](const DrawOp& op) { return op.kind == kind && op.colour == colour; });
    return found;
}

const DrawOp* TextOp(const Surface& surface, const std::string& text) {
    const auto found = std::ranges::find_if(surface.ops(), [&](const DrawOp& op) {
        return op.kind == DrawOp::Kind::Text && op.text == text;
    });
    return found == surface.ops().end() ? nullptr : &*found;
}

// With R0 = 50: 50 ohms is z = 1, the centre; 100 ohms gives Γ = (2 - 1) / (2 + 1) = 1/3, a
// third of the radius right of the centre; 40 + j30 is z = 0.8 + j0.6 and
// Γ = (-0.2 + j0.6) / (1.8 + j0.6) = (j1.2) / 3.6 = j/3, a third of the radius above it.
// 12.5 ohms, unmatched, is Γ = (0.25 - 1) / 1.25 = -0.6: a red cross 1164 left of the centre.
TEST(SmithChart, PlacesEachLoadByItsReflection) {
    Surface surface(4000, 4300);
    DrawSmithChart(surface, kBox, FourLoads(), 50);
    const auto discs = OpsOf(surface, DrawOp::Kind::Disc, kMatchedLoadColour);
    ASSERT_EQ(discs.size(), 3u);
    const float third = kRadius / 3;
    const std::pair<float, float> expected[] = {
        {kCentre, kCentre}, {kCentre + third, kCentre}, {kCentre, kCentre - third}};
    for (std::size_t k = 0; k < 3; ++k) {
        EXPECT_NEAR(discs[k].x1, expected[k].first, 0.5) << k;
        EXPECT_NEAR(discs[k].y1, expected[k].second, 0.5) << k;
    }
    const auto cross = OpsOf(surface, DrawOp::Kind::Line, kUnmatchedLoadColour);
    ASSERT_EQ(cross.size(), 2u);
    for (const DrawOp& stroke : cross) {
        EXPECT_NEAR((stroke.x1 + stroke.x2) / 2, kCentre - 0.6f * kRadius, 0.5);
        EXPECT_NEAR((stroke.y1 + stroke.y2) / 2, kCentre, 0.5);
    }
}

// The SWR circle of 3 has the radius (3 - 1) / (3 + 1) = 1/2; the worst cases that share a load
// share a label, set beside it towards the middle; the caption names R0.
TEST(SmithChart, DrawsTheSwrCircleTheWorstCasesAndTheCaption) {
    Surface surface(4000, 4300);
    DrawSmithChart(surface, kBox, FourLoads(), 50);
    const auto circle = OpsOf(surface, DrawOp::Kind::Arc, kSwrCircleColour);
    ASSERT_EQ(circle.size(), 1u);
    EXPECT_NEAR(circle[0].radius, kRadius / 2, 0.5);
    EXPECT_EQ(circle[0].x1, kCentre);

    const DrawOp* shared = TextOp(surface, "C1 V, L1 A");
    ASSERT_NE(shared, nullptr);
    EXPECT_LT(shared->x1, kCentre + kRadius / 3);  // left of the 100-ohm point, right-aligned
    EXPECT_EQ(shared->align.horizontal, HorizontalAlign::Right);
    const DrawOp* loss = TextOp(surface, "loss");
    ASSERT_NE(loss, nullptr);
    EXPECT_NEAR(loss->y1, kCentre - kRadius / 3, 0.5);
    EXPECT_EQ(TextOp(surface, "Cload V"), nullptr);  // no worst case for it was found
    const DrawOp* caption = TextOp(surface, "normalised to 50 ohms");
    ASSERT_NE(caption, nullptr);
    EXPECT_TRUE(caption->y1 > kCentre + kRadius && caption->y1 < kBox.bottom) << caption->y1;
}

// The grid: the rim, five resistance circles and ten reactance arcs. The x = +1 circle has its
// centre at Γ = 1 + j (3940, 60 on the surface) and radius 1; inside the rim it runs from its
// left point (Γ = j, angle π) down to its bottom (Γ = 1, angle 3π/2). x = -1 is its mirror image,
// from π/2 to π about 1 - j. The r = 1 circle is centred at Γ = 1/2 with radius 1/2, drawn from
// its leftmost point.
TEST(SmithChart, TheGridIsClippedToTheRim) {
    Surface surface(4000, 4300);
    DrawSmithChart(surface, kBox, LoadRangeResult{}, 50);
    const auto grid = OpsOf(surface, DrawOp::Kind::Arc, kSmithGridColour);
    EXPECT_EQ(grid.size(), 16u);
    const auto has = [&](float x, float y, float radius, double start, double end) {
        return std::ranges::any_of(grid, [&](const DrawOp& op) {
            return std::fabs(op.x1 - x) < 0.5 && std::fabs(op.y1 - y) < 0.5 &&
                   std::fabs(op.radius - radius) < 0.5 && std::fabs(op.startAngle - start) < 1e-6 &&
                   std::fabs(op.endAngle - end) < 1e-6;
        });
    };
    EXPECT_TRUE(has(kCentre + kRadius, kCentre - kRadius, kRadius, kPi, 1.5 * kPi));
    EXPECT_TRUE(has(kCentre + kRadius, kCentre + kRadius, kRadius, kPi / 2, kPi));
    EXPECT_TRUE(has(kCentre + kRadius / 2, kCentre, kRadius / 2, kPi, 3 * kPi));
    // Every arc's middle lies inside the rim (an arc swept the wrong way runs outside it).
    for (const DrawOp& arc : grid) {
        const double middle = (arc.startAngle + arc.endAngle) / 2;
        const double x = arc.x1 + arc.radius * std::cos(middle) - kCentre;
        const double y = arc.y1 - arc.radius * std::sin(middle) - kCentre;
        EXPECT_LE(std::hypot(x, y), kRadius + 0.5) << arc.radius << " " << arc.startAngle;
    }
    EXPECT_TRUE(OpsOf(surface, DrawOp::Kind::Disc, kMatchedLoadColour).empty());
}

// What the tube sees, made by hand: three swept points, the operating point at Γ = 0.2, two
// harmonics and one load; the cursor on the middle swept point.
InputView HandMadeView() {
    InputView view;
    view.referenceOhms = 1500;
    view.c3AcrossLoad = true;
    view.sweepGamma = {{-0.5, 0}, {0, 0.5}, {0.5, 0}, {NAN, NAN}};
    view.operating = {3.9e6, {}, {0.2, 0}};
    view.harmonics = {{7.8e6, {}, {0, -0.6}}, {11.7e6, {}, {-0.9, 0}}};
    view.loads = {{0, {}, {0, 0.3}}};
    return view;
}

// The trace joins the swept points it can (not the one without a figure); the VSWR circle runs
// through the operating point; harmonics are ringed and numbered from 2; the cursor's point is
// a cross; the caption names the plate load and the C3 the analysis leaves out.
TEST(InputSmithChart, MarksTheTraceTheOperatingPointTheHarmonicsAndTheCursor) {
    Surface surface(4000, 4300);
    DrawInputSmithChart(surface, kBox, HandMadeView(), 1);
    const auto trace = OpsOf(surface, DrawOp::Kind::Line, kInputTraceColour);
    ASSERT_EQ(trace.size(), 2u);
    EXPECT_NEAR(trace[0].x1, kCentre - kRadius / 2, 0.5);
    EXPECT_NEAR(trace[0].y2, kCentre - kRadius / 2, 0.5);
    EXPECT_NEAR(trace[1].x2, kCentre + kRadius / 2, 0.5);
    const auto circle = OpsOf(surface, DrawOp::Kind::Arc, kSwrCircleColour);
    ASSERT_EQ(circle.size(), 1u);
    EXPECT_NEAR(circle[0].radius, 0.2 * kRadius, 0.5);
    const auto operating = OpsOf(surface, DrawOp::Kind::Disc, kOperatingPointColour);
    ASSERT_EQ(operating.size(), 1u);
    EXPECT_NEAR(operating[0].x1, kCentre + 0.2f * kRadius, 0.5);
    const auto rings = OpsOf(surface, DrawOp::Kind::Arc, kHarmonicPointColour);
    ASSERT_EQ(rings.size(), 2u);
    EXPECT_NEAR(rings[0].y1, kCentre + 0.6f * kRadius, 0.5);
    EXPECT_NEAR(rings[1].x1, kCentre - 0.9f * kRadius, 0.5);
    ASSERT_NE(TextOp(surface, "2"), nullptr);
    ASSERT_NE(TextOp(surface, "3"), nullptr);
    const auto loads = OpsOf(surface, DrawOp::Kind::Disc, kMatchedLoadColour);
    ASSERT_EQ(loads.size(), 1u);
    EXPECT_NEAR(loads[0].y1, kCentre - 0.3f * kRadius, 0.5);
    const auto cursor = OpsOf(surface, DrawOp::Kind::Line, kCursorPointColour);
    ASSERT_EQ(cursor.size(), 2u);
    EXPECT_NEAR((cursor[0].x1 + cursor[0].x2) / 2, kCentre, 0.5);
    EXPECT_NEAR(cursor[0].y1, kCentre - kRadius / 2, 0.5);
    EXPECT_NE(TextOp(surface, "normalised to 1500 ohms, C3 across the load included"), nullptr);

    Surface without(4000, 4300);
    DrawInputSmithChart(without, kBox, HandMadeView(), std::nullopt);
    EXPECT_TRUE(OpsOf(without, DrawOp::Kind::Line, kCursorPointColour).empty());
}

// A pointer finds the swept point nearest to it on the chart, none well off the rim.
TEST(InputSmithChart, APointerFindsTheNearestSweptPoint) {
    const InputView view = HandMadeView();
    EXPECT_EQ(NearestSweptPoint(kBox, view, kCentre + 0.45f * kRadius, kCentre), 2u);
    EXPECT_EQ(NearestSweptPoint(kBox, view, kCentre + 0.1f * kRadius, kCentre - 0.9f * kRadius),
              1u);
    EXPECT_EQ(NearestSweptPoint(kBox, view, kCentre, kCentre + 1.2f * kRadius), std::nullopt);
}

}  // namespace
}  // namespace varo
