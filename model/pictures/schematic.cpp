#include "model/pictures/schematic.h"

#include <algorithm>
#include <numbers>
#include <string>
#include <utility>

#include "core/numtext.h"

namespace varo {

namespace {

constexpr double kHalfTurn = std::numbers::pi;  // equals 4 * atan(1) in double precision
constexpr double kFullTurn = 2 * std::numbers::pi;

// Capacitor plates and leads (design-screen measures; both screens share them).
constexpr float kPlateHalfWidth = 120;
constexpr float kUpperPlateDrop = 480;
constexpr float kLowerPlateDrop = 540;

// Inductor: humps above the line between two leads of 80; the coil and its first lead are 560.
constexpr float kInductorLead = 80;
constexpr float kCoilLength = 560;

// Generator circle and the zigzags of the terminations.
constexpr float kGeneratorRadius = 150;
constexpr float kWaveRadius = 50;
constexpr float kZigzagAmplitude = 70;
constexpr int kSourceZigzagStrokes = 8;

// Load: a resistor to the rail, its value to its right.
constexpr float kLoadWidth = 160;

struct LabelBox {
    float left, top, right, bottom;
};

// White behind a sensible value, red behind an impossible one; the text starts at a white
// point, the position the value is printed from.
void DrawValueLabel(Surface& surface, const LabelBox& box, float textX, float textY, float value,
                    std::string text) {
    surface.FillBox(box.left, box.top, box.right, box.bottom,
                    value <= 0 ? kImpossibleValue : kWhite);
    surface.Point(textX, textY, 1, kWhite);
    surface.Text(textX, textY, std::move(text));
}

void DrawVerticalZigzag(Surface& surface, float x, float top, float bottom, int strokes) {
    const float stroke = (bottom - top) / static_cast<float>(strokes);
    float fromX = x;
    float fromY = top;
    for (int i = 1; i <= strokes; ++i) {
        const float toY = i == strokes ? bottom : top + stroke * static_cast<float>(i);
        const float toX = i == strokes ? x : x + (i % 2 == 1 ? 1.0f : -1.0f) * kZigzagAmplitude;
        surface.Line(fromX, fromY, toX, toY, kBlack);
        fromX = toX;
        fromY = toY;
    }
}

// A circle with one full sine wave inside it.
void DrawGenerator(Surface& surface, float x, float y) {
    surface.Arc(x, y, kGeneratorRadius, 0, kFullTurn, kBlack);
    surface.Arc(x - kWaveRadius, y, kWaveRadius, 0, kHalfTurn, kBlack);
    surface.Arc(x + kWaveRadius, y, kWaveRadius, kHalfTurn, kFullTurn, kBlack);
}

// The tinted box behind a row's components, from the source's right end to `right` past the pen.
void DrawSectionBox(Surface& surface, const Pen& pen, float right) {
    const float left = pen.x + kSourceWidth;
    const float top = pen.y - 150;
    const float bottom = pen.y + 1100;
    surface.FillBox(left, top, pen.x + right, bottom, kSchematicFill);
    surface.OutlineBox(left, top, pen.x + right, bottom, kSchematicOutline);
}

void DrawRowCaption(Surface& surface, float rowY, const char* caption) {
    surface.Text(2300, rowY + 440, caption);
}

}  // namespace

void DrawWireStep(Surface& surface, Pen& pen) {
    surface.Line(pen.x, pen.y, pen.x + kWireStep, pen.y, kBlack);
    surface.Line(pen.x, pen.y + kRailDrop, pen.x + kWireStep, pen.y + kRailDrop, kBlack);
    pen.x += kWireStep;
}

void DrawWireSpan(Surface& surface, Pen& pen) {
    for (int i = 0; i < kWireSpanSteps; ++i)
        DrawWireStep(surface, pen);
}

void DrawSource(Surface& surface, Pen& pen, float ohms, const SymbolDimensions& dimensions) {
    const SourceDimensions& d = dimensions.source;
    const float x = pen.x;
    const float y = pen.y;
    const float branch = x + d.branchX;
    surface.Line(branch, y, x + kSourceWidth, y, kBlack);
    surface.Line(branch, y + kRailDrop, x + kSourceWidth, y + kRailDrop, kBlack);
    surface.Line(branch, y, branch, y + d.generatorY - kGeneratorRadius, kBlack);
    DrawGenerator(surface, branch, y + d.generatorY);
    surface.Line(branch, y + d.generatorY + kGeneratorRadius, branch, y + d.resistorTop, kBlack);
    DrawVerticalZigzag(surface, branch, y + d.resistorTop, y + d.resistorBottom,
                       kSourceZigzagStrokes);
    surface.Line(branch, y + d.resistorBottom, branch, y + kRailDrop, kBlack);
    // Above the line, and clear of the top edge of the section box beside the source.
    const LabelBox box{x + d.labelBoxLeft, y - d.labelBoxTop, x + d.labelBoxRight, y - 170};
    DrawValueLabel(surface, box, x + d.labelX, y - d.labelY, ohms, FormatNumber(ohms));
    pen.x = x + kSourceWidth;
}

void DrawSeriesInductor(Surface& surface, Pen& pen, float henry,
                        const SymbolDimensions& dimensions) {
    DrawWireStep(surface, pen);
    surface.Line(pen.x, pen.y, pen.x + kInductorLead, pen.y, kBlack);
    const int turns = std::max(1, dimensions.inductorTurns);
    const float radius = (kCoilLength - kInductorLead) / static_cast<float>(2 * turns);
    for (int k = 1; k <= turns; ++k)
        surface.Arc(pen.x + kInductorLead + radius * static_cast<float>(2 * k - 1), pen.y, radius,
                    0, kHalfTurn, kBlack);
    pen.x += kCoilLength;
    surface.Line(pen.x, pen.y, pen.x + kInductorLead, pen.y, kBlack);
    pen.x += kInductorLead;
    surface.Line(pen.x - kCoilLength - kInductorLead, pen.y + kRailDrop, pen.x, pen.y + kRailDrop,
                 kBlack);
    DrawWireStep(surface, pen);
    const LabelBox box{pen.x - 1120, pen.y - 480, pen.x + 240, pen.y - 100};
    DrawValueLabel(surface, box, pen.x - 900, pen.y - 450, henry, FormatHenry(henry));
}

void DrawShuntCapacitor(Surface& surface, Pen& pen, float farad,
                        const SymbolDimensions& dimensions) {
    DrawWireStep(surface, pen);
    DrawWireStep(surface, pen);
    const float x = pen.x;
    const float y = pen.y;
    surface.Line(x, y, x, y + kUpperPlateDrop, kBlack);
    surface.Line(x - kPlateHalfWidth, y + kUpperPlateDrop, x + kPlateHalfWidth, y + kUpperPlateDrop,
                 kBlack);
    surface.Line(x - kPlateHalfWidth, y + kLowerPlateDrop, x + kPlateHalfWidth, y + kLowerPlateDrop,
                 kBlack);
    surface.Line(x, y + kLowerPlateDrop, x, y + kRailDrop, kBlack);
    DrawWireStep(surface, pen);
    DrawWireStep(surface, pen);
    const LabelBox box{pen.x - 900, y + 1155, pen.x + dimensions.capacitorLabelRight,
                       y + dimensions.capacitorLabelBottom};
    DrawValueLabel(surface, box, pen.x - 700, y + 1200, farad, FormatFarad(farad));
}

void DrawLoad(Surface& surface, Pen& pen, float ohms, const SymbolDimensions& dimensions) {
    const LoadDimensions& d = dimensions.load;
    DrawWireStep(surface, pen);
    DrawWireStep(surface, pen);
    const float x = pen.x;
    const float y = pen.y;
    surface.Line(x, y, x, y + d.resistorTop, kBlack);
    DrawVerticalZigzag(surface, x, y + d.resistorTop, y + d.resistorBottom,
                       std::max(1, d.zigzagStrokes));
    surface.Line(x, y + d.resistorBottom, x, y + kRailDrop, kBlack);
    // To the right of the resistor, where nothing else is drawn; kept clear of the edge of a
    // section box drawn past the load (the L section shown as a wire) and of the small plot.
    const LabelBox box{x + 100, y + 400, x + 540, y + 640};
    DrawValueLabel(surface, box, x + 150, y + 440, ohms, FormatNumber(ohms));
    pen.x = x + kLoadWidth;
}

void DrawPiSectionRow(Surface& surface, Pen& pen, const DesignState& state,
                      const SymbolDimensions& dimensions) {
    DrawSource(surface, pen, state.plateR, dimensions);
    DrawShuntCapacitor(surface, pen, state.C1, dimensions);
    DrawSeriesInductor(surface, pen, state.L1, dimensions);
    DrawShuntCapacitor(surface, pen, state.C2, dimensions);
    DrawLoad(surface, pen, state.intermediateR, dimensions);
}

// Shown as a plain wire unless the intermediate resistance is above the load, even when it is
// below: that row stands for the step down only.
void DrawLSectionRow(Surface& surface, Pen& pen, const DesignState& state,
                     const SymbolDimensions& dimensions) {
    DrawSource(surface, pen, state.intermediateR, dimensions);
    if (state.intermediateR > state.loadR) {
        DrawShuntCapacitor(surface, pen, state.C3, dimensions);
        DrawSeriesInductor(surface, pen, state.L2, dimensions);
        DrawWireStep(surface, pen);
    } else {
        DrawWireSpan(surface, pen);
    }
    DrawWireStep(surface, pen);
    DrawLoad(surface, pen, state.loadR, dimensions);
}

void DrawNetworkRow(Surface& surface, Pen& pen, const DesignState& state,
                    const SymbolDimensions& dimensions) {
    DrawSource(surface, pen, state.plateR, dimensions);
    DrawShuntCapacitor(surface, pen, state.C1, dimensions);
    DrawSeriesInductor(surface, pen, state.L1, dimensions);
    if (state.intermediateR > state.loadR) {
        // C2 and C3 are in parallel at the midpoint.
        const float midpointC = state.C2 + state.C3;
        DrawShuntCapacitor(surface, pen, midpointC, dimensions);
        DrawSeriesInductor(surface, pen, state.L2, dimensions);
    } else if (state.intermediateR < state.loadR) {
        DrawShuntCapacitor(surface, pen, state.C2, dimensions);
        DrawSeriesInductor(surface, pen, state.L2, dimensions);
        DrawShuntCapacitor(surface, pen, state.C3, dimensions);
    } else {
        DrawShuntCapacitor(surface, pen, state.C2, dimensions);
    }
    DrawLoad(surface, pen, state.loadR, dimensions);
}

void DrawSchematic(Surface& surface, const DesignState& state) {
    surface.FillBox(100, 600, 11900, 8500, kWhite);
    surface.SetFont("Arial", 8);
    surface.FillBox(2200, 1250, 3500, 6250, kSchematicFill);
    surface.OutlineBox(2200, 1250, 3500, 6250, kSchematicOutline);
    DrawRowCaption(surface, kPiSectionRowY, "Pi section");
    DrawRowCaption(surface, kLSectionRowY, "L section");
    DrawRowCaption(surface, kNetworkRowY, "Pi-L network");
    surface.SetLineWidth(1);
    const bool noLSection = state.intermediateR == state.loadR;
    Pen pen{kSchematicLeft, kPiSectionRowY};
    DrawSectionBox(surface, pen, 3300);
    DrawPiSectionRow(surface, pen, state);
    pen = {kSchematicLeft, kLSectionRowY};
    DrawSectionBox(surface, pen, noLSection ? 2100 : 3000);
    DrawLSectionRow(surface, pen, state);
    pen = {kSchematicLeft, kNetworkRowY};
    DrawSectionBox(surface, pen, noLSection ? 3300 : 4300);
    DrawNetworkRow(surface, pen, state);
}

}  // namespace varo
