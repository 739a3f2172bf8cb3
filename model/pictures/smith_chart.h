#pragma once

#include <cstddef>
#include <optional>

#include "model/input_view.h"
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

// What the tube sees over the sweep, normalised to the plate load: the grid, the swept input's
// trace, the VSWR circle through the operating point, the operating point, the 2nd to 5th
// harmonics ringed and numbered, the load range's loads where the view holds them, and the
// cursor's point (an index into the sweep) where there is one.
void DrawInputSmithChart(Surface& surface, const ChartBox& box, const InputView& view,
                         std::optional<std::size_t> cursorIndex);

// The swept point nearest to a point of the surface, on the chart drawn into `box`; none off
// the chart or without a swept point.
std::optional<std::size_t> NearestSweptPoint(const ChartBox& box, const InputView& view, float x,
                                             float y);

// The chart's colours, for readers of the drawing.
inline constexpr Colour kSmithGridColour = RgbColour(0xC8, 0xC8, 0xC8);
inline constexpr Colour kSwrCircleColour = RgbColour(0x40, 0x40, 0x40);
inline constexpr Colour kMatchedLoadColour = RgbColour(0x20, 0x60, 0xC0);
inline constexpr Colour kUnmatchedLoadColour = RgbColour(0xD0, 0x10, 0x10);
inline constexpr Colour kInputTraceColour = RgbColour(0x00, 0x80, 0x00);
inline constexpr Colour kOperatingPointColour = RgbColour(0xD0, 0x10, 0x10);
inline constexpr Colour kHarmonicPointColour = RgbColour(0x00, 0x00, 0xC0);
inline constexpr Colour kCursorPointColour = RgbColour(0x33, 0x33, 0x66);

}  // namespace varo
