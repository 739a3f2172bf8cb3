#pragma once

#include <array>
#include <optional>
#include <string>

#include "tools/inductor/coil.h"

namespace varo {

// The five captions that name the display unit, in screen order: diameter, length, turns per
// unit, wire length, wire diameter.
std::array<std::string, 5> UnitCaptions(std::int16_t unitSystem);

// What the screen shows after a calculation, in the display unit; each value two blanks after
// its caption's end. Resistance is empty without a wire gauge; the shape note is empty while
// the winding is between 0.4 and 3 diameters long.
struct CoilResultTexts {
    std::string turns;
    std::string turnsPerUnit;
    std::string wireLength;
    std::string criticalGauge;
    std::string wireDiameter;
    std::string percentFill;
    std::string resistance;
    std::string quarterWave;
    std::string shapeNote;
};
CoilResultTexts ResultTexts(const CoilState& coil);

// One computed winding per inductor: slot 0 for L1, slot 1 for L2.
using WindingSlots = std::array<std::optional<CoilState>, 2>;

// The winding data can be printed once every inductor the design has is wound.
bool PrintAllowed(const WindingSlots& windings, bool designHasLSection);

}  // namespace varo
