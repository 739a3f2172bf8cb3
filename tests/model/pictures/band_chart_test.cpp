#include "model/pictures/band_chart.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "core/design_fixture.h"

namespace varo {
namespace {

constexpr double kPico = 1e-12;

// The fills of one colour whose vertical middle lies between top and bottom.
long FillsIn(const Surface& surface, Colour colour, float top, float bottom) {
    return std::count_if(surface.ops().begin(), surface.ops().end(), [&](const DrawOp& op) {
        const float middle = (op.y1 + op.y2) / 2;
        return op.kind == DrawOp::Kind::FillBox && op.colour == colour && middle > top &&
               middle < bottom;
    });
}

// A tuning capacitor of 150 pF at most is short on 160 m and reaches on 40 m: the first row shows
// red, the second only blue, over the grey of the capacitor's range; no text covers another.
TEST(BandChart, ShowsWhereACapacitorFallsShortBandByBand) {
    DesignState design;
    test::SetDesign(design, {3.9e6f, 1500, 300, 50, 12});
    design.rfPower = 1500;
    BandPlanInputs inputs;
    inputs.tubeCapacitance = 5 * kPico;
    inputs.strayCapacitance = 10 * kPico;
    inputs.tune = {10 * kPico, 150 * kPico};
    inputs.load = {30 * kPico, 3000 * kPico};
    inputs.bands = {{"160 m", 1.8e6, 2.0e6}, {"40 m", 7.0e6, 7.3e6}};
    const BandPlan plan = PlanBands(design, inputs);
    Surface surface(10000, 4000);
    const ChartBox box{0, 0, 10000, 4000};
    DrawBandChart(surface, box, plan);
    // Rows between the header (300) and the axis (300 from the bottom).
    const float rowHeight = (4000 - 300 - 300) / 2.0f;
    const float firstTop = 300, secondTop = 300 + rowHeight;
    EXPECT_GE(FillsIn(surface, kShortColour, firstTop, secondTop), 1);
    EXPECT_EQ(FillsIn(surface, kShortColour, secondTop, secondTop + rowHeight), 0);
    EXPECT_EQ(FillsIn(surface, kReachedColour, secondTop, secondTop + rowHeight), 2);
    EXPECT_EQ(FillsIn(surface, kAvailableRangeColour, firstTop, secondTop + rowHeight), 4);
    const AverageGlyphMeasure measure;
    const std::vector<TextBox> texts = TextBoxes(surface, measure);
    for (std::size_t i = 0; i < texts.size(); ++i)
        for (std::size_t j = i + 1; j < texts.size(); ++j)
            EXPECT_FALSE(texts[i].Overlaps(texts[j])) << texts[i].text << " / " << texts[j].text;
    EXPECT_TRUE(std::ranges::any_of(texts, [](const TextBox& t) { return t.text == "160 m"; }));
}

}  // namespace
}  // namespace varo
