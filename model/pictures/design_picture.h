#pragma once

#include <string>

#include "core/design_state.h"
#include "core/network.h"
#include "model/design_results.h"
#include "platform/surface.h"

namespace varo {

// The logical size of the design screen's drawing, in twips.
inline constexpr float kDesignScreenWidth = 12000;
inline constexpr float kDesignScreenHeight = 9000;

// The explanatory block in the lower right corner, under the harmonic table and right of the
// stress texts, where no schematic row reaches (a step-up network ends before X 8700 and above
// Y 7000); one line every kNoteLineStep, the generator entry right of its last line.
inline constexpr float kNoteX = 8800;
inline constexpr float kNoteTopY = 7000;
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

// The tank-loss entries stand in the left column under the loss figures.
inline constexpr float kLossEntriesY = 8180;

// The whole picture behind the design screen's controls, afresh: schematic, component table
// with each part's loss, tank-loss summary, stress texts, small plot with its legend and
// harmonic table.
void DrawDesignScreen(Surface& surface, const DesignState& state, const DesignResults& results);

// The phase readout: "Pi phase: ... deg." and "L phase: ... deg." on two lines; empty without
// phases.
std::string PhaseReadout(const DesignResults& results);

// A figure with its unit, spaced alike for every magnitude: "813.019k ohms", "442.5 ohms".
std::string WithUnit(float value, const char* unit);

}  // namespace varo
