#include "screens/design/small_plot.h"

#include <gtest/gtest.h>

#include "core/design_fixture.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/network.h"
#include "core/numtext.h"

namespace varo {
namespace {

class RecordingReporter : public Reporter {
  public:
    void ShowMessage(std::string_view text, std::string_view, MessageIcon) override {
        messages.emplace_back(text);
    }
    std::vector<std::string> messages;
};

using Kind = DrawOp::Kind;

bool IsGridLine(const DrawOp& op) {
    return op.kind == Kind::Line && op.colour == kPlotGrid;
}
bool IsHorizontalGridLine(const DrawOp& op) {
    return IsGridLine(op) && op.y1 == op.y2;
}
bool IsVerticalGridLine(const DrawOp& op) {
    return IsGridLine(op) && op.x1 == op.x2;
}

std::vector<DrawOp> OpsWhere(const Surface& surface, bool (*keep)(const DrawOp&)) {
    std::vector<DrawOp> kept;
    std::copy_if(surface.ops().begin(), surface.ops().end(), std::back_inserter(kept), keep);
    return kept;
}

std::vector<DrawOp> LinesIn(const Surface& surface, Colour colour) {
    std::vector<DrawOp> lines;
    for (const auto& op : surface.ops()) {
        if (op.kind == Kind::Line && op.colour == colour) lines.push_back(op);
    }
    return lines;
}

const DrawOp* TextAt(const Surface& surface, float x, float y) {
    for (const auto& op : surface.ops()) {
        if (op.kind == Kind::Text && op.x1 == x && op.y1 == y) return &op;
    }
    return nullptr;
}

// The 3.5 MHz design the program starts with (1500 / 300 / 50 ohms, Q 12), swept.
class SmallPlotTest : public ::testing::Test {
  protected:
    void SetUp() override {
        test::SetDesign(state, {3.5e6f, 1500, 300, 50, 12});
        ASSERT_TRUE(ComponentCalculations(state, reporter));
        SetupLadder(state);
        ASSERT_TRUE(SweepRoutine(state, reporter));
        ComputeSectionPhases(state);
    }

    void Draw() {
        results.gridFrequencies = BuildGridFrequencies(state);
        results.harmonics = AnalyzeHarmonics(state, reporter);
        DrawSmallPlot(surface, state, results);
    }

    DesignState state;
    RecordingReporter reporter;
    DesignResults results;
    Surface surface{12000, 9000};
};

TEST_F(SmallPlotTest, FrameComesFirstAndReachesJustBeyondThePlotArea) {
    Draw();
    ASSERT_GE(surface.ops().size(), 2u);
    EXPECT_EQ(surface.ops()[0], (DrawOp{.kind = Kind::FillBox,
                                        .x1 = 8000,
                                        .y1 = 1185,
                                        .x2 = 11500,
                                        .y2 = 4215,
                                        .colour = 0xFFFFEE}));
    EXPECT_EQ(surface.ops()[1], (DrawOp{.kind = Kind::OutlineBox,
                                        .x1 = 8000,
                                        .y1 = 1185,
                                        .x2 = 11500,
                                        .y2 = 4215,
                                        .colour = 0x663333}));
}

TEST_F(SmallPlotTest, DbGridStepsOneUnitShortOfAnExactDivision) {
    Draw();
    std::vector<float> ys;
    for (const auto& op : OpsWhere(surface, IsHorizontalGridLine)) {
        EXPECT_EQ(op.x1, 8000);
        EXPECT_EQ(op.x2, 11500);
        ys.push_back(op.y1);
    }
    EXPECT_EQ(ys, (std::vector<float>{1200, 1699, 2198, 2697, 3196, 3695, 4194}));
}

TEST_F(SmallPlotTest, DbGridLabelsFollowTheFloor) {
    for (float floorDb : {-60.0f, -30.0f}) {
        Surface grid(12000, 9000);
        state.plotFloorDb = floorDb;
        DrawPlotGridDb(grid, state);
        std::vector<std::string> labels;
        for (const auto& op : grid.ops()) {
            if (op.kind == Kind::Text) {
                labels.push_back(op.text);
                EXPECT_LT(op.x1, 8000) << op.text;
            }
        }
        std::vector<std::string> expected;
        for (int k = 0; k <= 6; ++k) {
            std::string text = FormatEng(k / 6.0f * floorDb);
            text.erase(text.find_last_not_of(' ') + 1);
            text.erase(0, text.find_first_not_of(' '));
            expected.push_back(text);
        }
        EXPECT_EQ(labels, expected) << floorDb;
    }
}

TEST_F(SmallPlotTest, FrequencyGridFallsOnTheLogScale) {
    Draw();
    const auto lines = OpsWhere(surface, IsVerticalGridLine);
    // 2, 3 ... 10 MHz between 1.75 and 14 MHz.
    ASSERT_EQ(lines.size(), 9u);
    // X = (ln f - ln 1.75M) * 3500 / ln 8 + 8000, worked out by hand.
    const std::vector<float> expected = {8224.75f,  8907.21f,  9391.42f,  9767.00f, 10073.88f,
                                         10333.33f, 10558.09f, 10756.33f, 10933.67f};
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_NEAR(lines[i].x1, expected[i], 0.05f) << i;
        EXPECT_EQ(lines[i].y1, 1200);
        EXPECT_EQ(lines[i].y2, 4200);
    }
}

TEST_F(SmallPlotTest, EveryGridLineGetsALabelWithoutRunningTogether) {
    Draw();
    struct Label {
        std::string text;
        float left;
        float right;
    };
    std::vector<Label> labels;
    float pointSize = 0;
    for (const auto& op : surface.ops()) {
        if (op.kind == Kind::Font) pointSize = op.pointSize;
        if (op.kind == Kind::Text && op.y1 == kFrequencyLabelY)
            labels.push_back({op.text, op.x1,
                              op.x1 + static_cast<float>(op.text.size()) * 0.6f * 20 * pointSize});
    }
    std::vector<std::string> texts;
    for (const auto& label : labels)
        texts.push_back(label.text);
    EXPECT_EQ(texts,
              (std::vector<std::string>{"2M", "3M", "4M", "5M", "6M", "7M", "8M", "9M", "10M"}));
    // Centred under its line: 2 MHz lies at X 8224.75.
    EXPECT_NEAR((labels.front().left + labels.front().right) / 2, 8224.75f, 0.05f);
    // The crowded labels at the top of the decade are printed smaller, not run together.
    for (size_t i = 1; i < labels.size(); ++i)
        EXPECT_LT(labels[i - 1].right, labels[i].left);
}

TEST_F(SmallPlotTest, CurvesSpanThePlotTransmissionFirst) {
    Draw();
    const auto transmission = LinesIn(surface, kRed);
    const auto returnLoss = LinesIn(surface, kBlue);
    ASSERT_EQ(transmission.size(), 2000u);
    ASSERT_EQ(returnLoss.size(), 2000u);
    for (const auto* curve : {&transmission, &returnLoss}) {
        EXPECT_EQ(curve->front().x1, 8000);
        EXPECT_EQ(curve->back().x2, 11500);
    }
    const auto firstRed = std::find_if(surface.ops().begin(), surface.ops().end(),
                                       [](const DrawOp& op) { return op.colour == kRed; });
    const auto firstBlue = std::find_if(surface.ops().begin(), surface.ops().end(),
                                        [](const DrawOp& op) { return op.colour == kBlue; });
    EXPECT_LT(firstRed, firstBlue);
}

TEST_F(SmallPlotTest, ValuesOutsideTheScaleAreClampedToTheFrame) {
    struct Case {
        float db;
        float floorDb;
        float y;
    };
    for (const Case& c : {Case{-100, -60, 4200}, Case{-60, -60, 4200}, Case{5, -60, 1200},
                          Case{-30, -60, 2700}, Case{-15, -30, 2700}, Case{-45, -30, 4200}}) {
        state.plotFloorDb = c.floorDb;
        const auto scale = SmallPlotScale::From(state);
        ASSERT_TRUE(scale);
        EXPECT_EQ(scale->Y(c.db), c.y) << c.db << " on " << c.floorDb;
    }
    state.sweepTransmission.fill(-100);
    Draw();
    for (const auto& op : LinesIn(surface, kRed))
        EXPECT_EQ(op.y2, 4200);
}

TEST_F(SmallPlotTest, FirstThreeHarmonicsGetBlueRingsWithWhiteCentres) {
    Draw();
    std::vector<DrawOp> points;
    for (const auto& op : surface.ops()) {
        if (op.kind == Kind::Point) points.push_back(op);
    }
    ASSERT_EQ(points.size(), 6u);
    // 3.5, 7 and 10.5 MHz: ln(n * 2) / ln 8 of the way across.
    const std::vector<float> expectedX = {9166.67f, 10333.33f, 11015.79f};
    for (size_t n = 0; n < 3; ++n) {
        const DrawOp& ring = points[2 * n];
        const DrawOp& centre = points[2 * n + 1];
        EXPECT_EQ(ring.width, 8);
        EXPECT_EQ(ring.colour, 0xFF0000u);
        EXPECT_EQ(centre.width, 6);
        EXPECT_EQ(centre.colour, 0xFFFFFFu);
        EXPECT_EQ(ring.x1, centre.x1);
        EXPECT_EQ(ring.y1, centre.y1);
        EXPECT_NEAR(ring.x1, expectedX[n], 0.05f) << n;
        EXPECT_GE(ring.y1, 1200);
        EXPECT_LE(ring.y1, 4200);
    }
    // A matched fundamental is all but lossless: its ring sits on the 0 dB edge.
    EXPECT_NEAR(points[0].y1, 1200, 1);
    EXPECT_EQ(surface.ops().back().kind, Kind::LineWidth);
    EXPECT_EQ(surface.ops().back().width, 1);
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
    for (int n = 1; n <= 5; ++n) {
        const float y = 4470 + 160.0f * n;
        const DrawOp* name = TextAt(surface, 8700, y);
        const DrawOp* frequency = TextAt(surface, 9100, y);
        const DrawOp* transmission = TextAt(surface, 9900, y);
        const DrawOp* impedance = TextAt(surface, 10800, y);
        ASSERT_TRUE(name && frequency && transmission && impedance) << n;
        EXPECT_EQ(name->text, names[n - 1]);
        EXPECT_EQ(frequency->text, FormatHz(n * 3.5e6f));
        EXPECT_EQ(transmission->text.substr(transmission->text.size() - 3), " dB");
        EXPECT_EQ(impedance->text.front(), ' ');
        EXPECT_EQ(impedance->text.back(), ' ');
    }
    // The matched network shows the plate load at the fundamental.
    EXPECT_NEAR(std::stof(TextAt(surface, 10800, 4630)->text), 1500, 15);
    EXPECT_EQ(state.analysisFrequency, 5 * 3.5e6f);
}

TEST_F(SmallPlotTest, CurvesFollowTheFloorTheyAreDrawnWith) {
    state.plotFloorDb = -30;
    const auto scale = SmallPlotScale::From(state);
    ASSERT_TRUE(scale);
    EXPECT_EQ(scale->Y(-15), 2700);
    EXPECT_EQ(scale->Y(-30), 4200);
    EXPECT_EQ(scale->X(state.sweepStart), 8000);
    EXPECT_EQ(scale->X(state.sweepStop), 11500);
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
        DesignState state;
        InitialiseConstants(state);
        RecordingReporter reporter;
        state.sweepStart = c.sweepStart;
        state.sweepStop = c.sweepStop;
        state.plotFloorDb = c.floorDb;
        state.graphDivisions = 6;
        state.sweepIntervals = 2000;
        EXPECT_FALSE(SmallPlotScale::From(state)) << c.name;
        Surface surface(12000, 9000);
        // The table then recomputes an empty design; whatever it reports, drawing goes on.
        DesignResults results;
        results.harmonics = AnalyzeHarmonics(state, reporter);
        EXPECT_NO_THROW(DrawSmallPlot(surface, state, results)) << c.name;
        EXPECT_EQ(surface.ops()[0].kind, Kind::FillBox) << c.name;
        EXPECT_TRUE(LinesIn(surface, kRed).empty()) << c.name;
    }
}

TEST(SmallPlotDegenerate, DivisionsWithoutAUsableStepDrawNoDbGrid) {
    for (std::int16_t divisions : {0, -6, 2999, 3000, 32767}) {
        DesignState state;
        state.plotFloorDb = -60;
        state.graphDivisions = divisions;
        Surface grid(12000, 9000);
        DrawPlotGridDb(grid, state);
        EXPECT_TRUE(grid.ops().empty()) << divisions;
    }
}

}  // namespace
}  // namespace varo
