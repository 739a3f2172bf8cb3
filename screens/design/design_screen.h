#pragma once

#include <string>

#include "core/design_state.h"
#include "core/network.h"
#include "platform/surface.h"
#include "screens/design/design_results.h"

namespace varo {

// The logical size of the design screen's drawing, in twips.
inline constexpr float kDesignScreenWidth = 12000;
inline constexpr float kDesignScreenHeight = 9000;

// The explanatory block beside the small plot, one line every kNoteLineStep; the generator
// entry stands to the right of its last line.
inline constexpr float kNoteX = 8450;
inline constexpr float kNoteTopY = 5700;
inline constexpr float kNoteLineStep = 200;
inline constexpr float kGeneratorEntryY = kNoteTopY + kGeneratorNoteLine * kNoteLineStep;

struct ScreenPoint {
    float x = 0;
    float y = 0;
    bool operator==(const ScreenPoint&) const = default;
};

// Where a stress text stands: voltages and capacitor currents under their capacitors, the
// inductor currents beside L1 and L2 of the whole network, the total phase below it.
ScreenPoint StressTextPlace(const StressText& text);

// The whole picture behind the design screen's controls, afresh: schematic, component table,
// stress texts, small plot with its harmonic table.
void DrawDesignScreen(Surface& surface, const DesignState& state, const DesignResults& results);

// The phase readout: "Pi phase: ...deg." and "L phase: ...deg." on two lines; empty without
// phases.
std::string PhaseReadout(const DesignResults& results);

}  // namespace varo
