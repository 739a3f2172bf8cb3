#pragma once

#include "core/design_state.h"
#include "platform/surface.h"
#include "tools/inductor/coil.h"

namespace varo {

// The inductor screen's logical size (twips).
inline constexpr float kInductorScreenWidth = 12000;
inline constexpr float kInductorScreenHeight = 11300;

// The cross-section's three wires stand this far apart: one winding pitch on the drawing.
inline constexpr float kCrossSectionPitch = 500;
inline constexpr float kCrossSectionY = 7100;
inline constexpr float kCrossSectionFirstX = 8400;

// The network with this screen's symbols, from the source's left end at (3000, 1500).
void DrawInductorSchematic(Surface& surface, const DesignState& state);

// The winding seen from the side, its length, diameter and turns written in the display unit.
void DrawWindingSideView(Surface& surface, const CoilState& winding);

// Three turns of wire cut across, one pitch apart, each as wide as the percent fill makes it,
// with the caption under them. Without a wire gauge there are no wires to draw.
void DrawCrossSection(Surface& surface, float percentFill);

// The whole picture: cleared, the schematic, and the winding's views when one is computed.
void DrawInductorScreen(Surface& surface, const DesignState& state, const CoilState* winding);

}  // namespace varo
