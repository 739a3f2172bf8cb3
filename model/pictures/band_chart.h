#pragma once

#include "model/band_plan.h"
#include "platform/surface.h"

namespace varo {

// Where the chart goes on its surface, in the surface's logical units.
struct ChartBox {
    float left = 0, top = 0, right = 0, bottom = 0;
};

// The band plan at a glance, a row per band: in each of two panels, the tuning capacitor and the
// loading capacitance, the capacitor's available range as a grey bar on a logarithmic pF scale,
// and over it the range the band needs from edge to edge, blue where the capacitor reaches, red
// where it does not; at the right the band's coils (the L1 tap and L2) and its working Q where
// it was raised.
void DrawBandChart(Surface& surface, const ChartBox& box, const BandPlan& plan);

// The chart's colours, for readers of the drawing.
inline constexpr Colour kAvailableRangeColour = RgbColour(0xD8, 0xD8, 0xD8);
inline constexpr Colour kReachedColour = RgbColour(0x20, 0x60, 0xC0);
inline constexpr Colour kShortColour = RgbColour(0xD0, 0x10, 0x10);

}  // namespace varo
