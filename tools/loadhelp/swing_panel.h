#pragma once

#include "platform/surface.h"

namespace varo {

// The helper screen's logical size (twips); the panel's title font follows its width.
inline constexpr float kLoadHelpWidth = 11700;
inline constexpr float kLoadHelpHeight = 5600;

// The waveform panel's levels: twice the supply at the top of the swing, the supply at its
// centre, zero volts at its bottom.
inline constexpr float kTwiceSupplyY = 2200;
inline constexpr float kSupplyY = 3000;
inline constexpr float kZeroVoltY = 3800;

// The waveform panel: a light box with the instantaneous plate voltage swinging about the
// supply level, the supply and zero lines, and the two arrows between which the peak swing is
// measured.
void DrawSwingPanel(Surface& surface);

}  // namespace varo
