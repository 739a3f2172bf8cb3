#pragma once

#include <array>

#include "core/design_state.h"
#include "platform/surface.h"

namespace varo {

// The shared scratch coordinates of a schematic: x is the left end of the next symbol, y the
// level of the signal line. Every symbol leaves x at its own right end.
struct Pen {
    float x = 0;
    float y = 0;
};

// The ground rail of every schematic runs this far below the signal line.
inline constexpr float kRailDrop = 1040;
inline constexpr float kWireStep = 160;
inline constexpr int kWireSpanSteps = 6;
inline constexpr float kSourceWidth = 1000;

// Where the strokes and labels of the two terminations go, in the order they are used. The
// source is a generator in series with its resistance, standing in a branch from the signal
// line down to the rail; its value is written above the line.
struct SourceDimensions {
    float branchX;      // the branch, from the pen x; line and rail run on to kSourceWidth
    float generatorY;   // centre of the generator circle, below the signal line
    float resistorTop;  // the resistance's zigzag, below the generator
    float resistorBottom;
    float labelBoxRight;  // label background: right edge, from the pen x
    float labelBoxTop;    //   top edge, above the signal line
    float labelBoxLeft;   //   left edge, from the pen x
    float labelY;         // the value's text, above the signal line
    float labelX;         //   and from the pen x
};

// The load: a resistor from the signal line down to the rail, drawn as a zigzag.
struct LoadDimensions {
    float resistorTop;  // below the signal line
    float resistorBottom;
    int zigzagStrokes;
};

// The measures in which the design screen and the inductor screen draw the same symbols.
struct SymbolDimensions {
    float capacitorLabelBottom;  // below the signal line
    float capacitorLabelRight;   // from the pen x after the capacitor
    SourceDimensions source;
    int inductorTurns;  // humps of the coil, which is 480 long whatever their number
    LoadDimensions load;
};

inline constexpr SymbolDimensions kDesignScreenSymbols{
    1400, 420, {850, 400, 625, 790, 1200, 500, 440, 450, 500}, 3, {300, 740, 8}};
// The inductor screen is about the coil: more, smaller turns, and a longer load resistor.
inline constexpr SymbolDimensions kInductorScreenSymbols{
    1500, 500, {650, 200, 425, 590, 900, 600, 140, 525, 200}, 4, {240, 800, 10}};

// Colours of the schematic (0xBBGGRR).
inline constexpr Colour kSchematicFill = 0xFFFFEE;
inline constexpr Colour kSchematicOutline = 0x663333;
// Behind the label of a component whose value is 0 or negative: an impossible part.
inline constexpr Colour kImpossibleValue = kRed;

// Symbol primitives: each draws at the pen in black and moves the pen x past itself.
void DrawWireStep(Surface& surface, Pen& pen);
void DrawWireSpan(Surface& surface, Pen& pen);
void DrawSource(Surface& surface, Pen& pen, float ohms,
                const SymbolDimensions& dimensions = kDesignScreenSymbols);
void DrawSeriesInductor(Surface& surface, Pen& pen, float henry,
                        const SymbolDimensions& dimensions = kDesignScreenSymbols);
void DrawShuntCapacitor(Surface& surface, Pen& pen, float farad,
                        const SymbolDimensions& dimensions = kDesignScreenSymbols);
void DrawLoad(Surface& surface, Pen& pen, float ohms,
              const SymbolDimensions& dimensions = kDesignScreenSymbols);

// The rows of a schematic, each drawn from the pen (the source's left end, on the signal line)
// in either symbol set; the pen ends past the load.
// The pi section from the plate load to the intermediate resistance.
void DrawPiSectionRow(Surface& surface, Pen& pen, const DesignState& state,
                      const SymbolDimensions& dimensions = kDesignScreenSymbols);
// The L section, shown as a plain wire unless the intermediate resistance is above the load.
void DrawLSectionRow(Surface& surface, Pen& pen, const DesignState& state,
                     const SymbolDimensions& dimensions = kDesignScreenSymbols);
// The whole network; the midpoint's capacitors are one when they stand in parallel.
void DrawNetworkRow(Surface& surface, Pen& pen, const DesignState& state,
                    const SymbolDimensions& dimensions = kDesignScreenSymbols);

// Rows of the design screen's schematic: signal line levels and row captions.
inline constexpr float kPiSectionRowY = 1400;
inline constexpr float kLSectionRowY = 3400;
inline constexpr float kNetworkRowY = 5600;
inline constexpr float kSchematicLeft = 3600;

// The pi section, the L section and the whole network, one under the other, with values.
void DrawSchematic(Surface& surface, const DesignState& state);

}  // namespace varo
