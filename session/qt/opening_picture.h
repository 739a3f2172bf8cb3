#pragma once

#include "platform/surface.h"

namespace varo {

// The welcome screen's logical space, in twips.
inline constexpr float kOpeningWidth = 12000;
inline constexpr float kOpeningHeight = 9000;

// Image1's own logical space.
inline constexpr float kTitleImageWidth = 3000;
inline constexpr float kTitleImageHeight = 1000;

inline constexpr Colour kOpeningPanelOutline = RgbColour(0x33, 0x33, 0x66);

// The two framed panels behind the pi section and the L section of the picture.
void DrawOpeningPanels(Surface& surface);

// The decorative output network, drawn with line width 2 from (2400, 3000): tube, capacitor,
// inductor, capacitor, wire, wire, capacitor, inductor, end symbol. Leaves the width at 2.
void DrawNetworkPicture(Surface& surface);

// Image1: the program's name beside a carrier wave.
void DrawTitleImage(Surface& surface);

}  // namespace varo
