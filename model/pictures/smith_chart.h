#pragma once

#include "model/load_range.h"
#include "model/pictures/band_chart.h"
#include "platform/surface.h"

namespace varo {

// Where the chart's unit circle lies inside its box, in the surface's logical units.
struct SmithPlace {
    float centreX = 0, centreY = 0, radius = 0;
};
SmithPlace SmithChartPlace(const ChartBox& box);

// The loads of a load range on a Smith chart normalised to `r0` ohms: the grey grid of constant
// resistance and reactance, the SWR circle asked for, each matched load a blue disc and each
// unmatched one a red cross, the worst load of each stress labelled beside it, and a caption
// naming r0 below the chart.
void DrawSmithChart(Surface& surface, const ChartBox& box, const LoadRangeResult& result,
                    double r0);

// The chart's colours, for readers of the drawing.
inline constexpr Colour kSmithGridColour = RgbColour(0xC8, 0xC8, 0xC8);
inline constexpr Colour kSwrCircleColour = RgbColour(0x40, 0x40, 0x40);
inline constexpr Colour kMatchedLoadColour = RgbColour(0x20, 0x60, 0xC0);
inline constexpr Colour kUnmatchedLoadColour = RgbColour(0xD0, 0x10, 0x10);

}  // namespace varo
