#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/coil_physics.h"
#include "tools/inductor/coil.h"

namespace varo {

// The computed winding in metres; the wire is the entered gauge's (none without a gauge).
Winding WindingOf(const CoilState& coil);

// What the computed coil will really be at `frequency` hertz; empty before a calculation.
std::optional<CoilAsBuilt> CoilAsBuiltOf(const CoilState& coil, double frequency);

// The as-built figures as the inductor screen and varo-cli show them; a figure that cannot be
// known is empty and the note says why. Each value is the text after its caption.
struct AsBuiltTexts {
    std::string heading;  // "As built, at 7.15MHz:"
    std::string sheet;    // "10.0498uH (Nagaoka 0.8181)"
    std::string wound;    // "10.1742uH, +1.74 % against the formula"
    std::string acResistance;
    std::string q;
    std::string selfCapacitance;
    std::string selfResonance;
    std::string note;
};
AsBuiltTexts AsBuiltTextsOf(const CoilState& coil, double frequency);

// The figures in the order they are shown, with their captions and the screen's label names.
struct AsBuiltRow {
    const char* captionLabel;
    const char* caption;
    const char* valueLabel;
    std::string AsBuiltTexts::*text;
};
inline const std::array<AsBuiltRow, 6> kAsBuiltRows{{
    {"lblSheetCaption", "Current sheet (exact):", "lblSheet", &AsBuiltTexts::sheet},
    {"lblWoundCaption", "As wound (round wire):", "lblWound", &AsBuiltTexts::wound},
    {"lblAcResistanceCaption", "AC resistance:", "lblAcResistance", &AsBuiltTexts::acResistance},
    {"lblUnloadedQCaption", "Unloaded Q:", "lblUnloadedQ", &AsBuiltTexts::q},
    {"lblSelfCapacitanceCaption", "Self-capacitance:", "lblSelfCapacitance",
     &AsBuiltTexts::selfCapacitance},
    {"lblSelfResonanceCaption", "Self-resonance:", "lblSelfResonance",
     &AsBuiltTexts::selfResonance},
}};

}  // namespace varo
