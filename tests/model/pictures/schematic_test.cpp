#include "model/pictures/schematic.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/numtext.h"

namespace varo {
namespace {

using Kind = DrawOp::Kind;

DrawOp BoxOp(Kind kind, float left, float top, float right, float bottom, Colour colour) {
    return DrawOp{.kind = kind, .x1 = left, .y1 = top, .x2 = right, .y2 = bottom, .colour = colour};
}

std::vector<DrawOp> OfKind(const Surface& surface, Kind kind) {
    std::vector<DrawOp> found;
    std::copy_if(surface.ops().begin(), surface.ops().end(), std::back_inserter(found),
                 [kind](const DrawOp& op) { return op.kind == kind; });
    return found;
}

// The value texts of one schematic row, left to right as drawn (row captions excluded).
std::vector<std::string> RowLabels(const Surface& surface, float rowY) {
    std::vector<std::string> labels;
    for (const DrawOp& op : OfKind(surface, Kind::Text))
        if (op.x1 > 3500 && op.y1 > rowY - 600 && op.y1 < rowY + 1500) labels.push_back(op.text);
    return labels;
}

DesignState NetworkWithIntermediate(float intermediateR) {
    DesignState state;
    InitialiseConstants(state);
    state.plateR = 1500;
    state.intermediateR = intermediateR;
    state.loadR = 50;
    state.C1 = 390e-12f;
    state.L1 = 4.7e-6f;
    state.C2 = 1.5e-9f;
    state.L2 = 1.2e-6f;
    state.C3 = 2.2e-9f;
    return state;
}

// Every value is printed over a box that is red when the value is impossible (0 or negative) and
// white otherwise.
TEST(Primitives, ValueBoxesAreRedForImpossibleValues) {
    using Primitive = void (*)(Surface&, Pen&, float, const SymbolDimensions&);
    for (Primitive draw : {Primitive{DrawShuntCapacitor}, Primitive{DrawSeriesInductor},
                           Primitive{DrawSource}, Primitive{DrawLoad}}) {
        for (float value : {0.0f, -1e-9f, 1e-9f}) {
            Surface surface(12000, 9000);
            Pen pen{1000, 2000};
            draw(surface, pen, value, kDesignScreenSymbols);
            const std::vector<DrawOp> boxes = OfKind(surface, Kind::FillBox);
            ASSERT_EQ(boxes.size(), 1u);
            EXPECT_EQ(boxes[0].colour, value <= 0 ? kRed : kWhite) << value;
        }
    }
}

TEST(DrawSchematic, RowsFollowTheRatioOfIntermediateToLoad) {
    struct Case {
        float intermediateR;
        float lBoxRight, networkBoxRight;
        std::vector<std::string> lRow, networkRow;
    };
    const DesignState base = NetworkWithIntermediate(300);
    const std::string source = FormatNumber(1500), c1 = FormatFarad(base.C1),
                      l1 = FormatHenry(base.L1), c2 = FormatFarad(base.C2),
                      l2 = FormatHenry(base.L2), c3 = FormatFarad(base.C3), load = FormatNumber(50);
    const Case cases[] = {
        {300,
         6600,
         7900,
         {FormatNumber(300), c3, l2, load},
         {source, c1, l1, FormatFarad(base.C2 + base.C3), l2, load}},
        {25, 6600, 7900, {FormatNumber(25), load}, {source, c1, l1, c2, l2, c3, load}},
        {50, 5700, 6900, {FormatNumber(50), load}, {source, c1, l1, c2, load}},
    };
    for (const Case& c : cases) {
        Surface surface(12000, 9000);
        DrawSchematic(surface, NetworkWithIntermediate(c.intermediateR));
        const std::vector<DrawOp> outlines = OfKind(surface, Kind::OutlineBox);
        ASSERT_EQ(outlines.size(), 4u);
        // The caption panel, then the pi section, which is the same whatever the ratio.
        EXPECT_EQ(OfKind(surface, Kind::FillBox).at(0),
                  BoxOp(Kind::FillBox, 100, 600, 11900, 8500, kWhite));
        EXPECT_EQ(outlines[0], BoxOp(Kind::OutlineBox, 2200, 1250, 3500, 6250, 0x663333));
        EXPECT_EQ(outlines[1], BoxOp(Kind::OutlineBox, 4600, 1250, 6900, 2500, 0x663333));
        EXPECT_EQ(RowLabels(surface, kPiSectionRowY),
                  (std::vector<std::string>{source, c1, l1, c2, FormatNumber(c.intermediateR)}));
        EXPECT_EQ(outlines[2], BoxOp(Kind::OutlineBox, 4600, 3250, c.lBoxRight, 4500, 0x663333));
        EXPECT_EQ(outlines[3],
                  BoxOp(Kind::OutlineBox, 4600, 5450, c.networkBoxRight, 6700, 0x663333));
        EXPECT_EQ(RowLabels(surface, kLSectionRowY), c.lRow) << c.intermediateR;
        EXPECT_EQ(RowLabels(surface, kNetworkRowY), c.networkRow) << c.intermediateR;
    }
}

}  // namespace
}  // namespace varo
