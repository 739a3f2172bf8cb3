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

// 3.5, 7 and 10.5 MHz; the matched fundamental's ring sits on the 0 dB edge.
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

// Headers, then a row per harmonic 160 lower each: name, frequency, transmission and Zin.
TEST_F(SmallPlotTest, HarmonicTablePrintsHeadersAndFiveRows) {
    Draw();
    const auto text = [&](float x, float y) {
        const DrawOp* op = TextAt(surface, x, y);
        return op ? op->text : std::string("(none)");
    };
    EXPECT_EQ((std::vector{text(8800, 4470), text(10000, 4470), text(10900, 4470)}),
              (std::vector<std::string>{"Frequency:", "Trans.:", "Zin:"}));
    const char* rows[][2] = {{"Fund", " 3.5M "},
                             {"2nd", " 7M "},
                             {"3rd", " 10.5M "},
                             {"4th", " 14M "},
                             {"5th", " 17.5M "}};
    for (int n = 1; n <= 5; ++n) {
        const float y = 4470 + 160.0f * n;
        EXPECT_EQ((std::vector{text(8700, y), text(9100, y)}),
                  (std::vector<std::string>{rows[n - 1][0], rows[n - 1][1]}));
        EXPECT_TRUE(text(9900, y).ends_with(" dB")) << n;
        EXPECT_NE(text(10800, y), "(none)") << n;
    }
}

}  // namespace
}  // namespace varo
