#include "tools/inductor/inductor_texts.h"

#include "core/numtext.h"

namespace varo {

namespace {

constexpr float kCentimetresPerInch = 2.54f;
// Wheeler's formula is at its best for windings of this shape.
constexpr float kShortestUsualShape = 0.4f;
constexpr float kLongestUsualShape = 3.0f;

std::string Shown(float value) {
    return "  " + FormatNumber(value);
}

std::string ShapeNote(const CoilState& coil) {
    const float ratio = coil.coilLength / coil.coilDiameter;
    if (ratio >= kShortestUsualShape && ratio <= kLongestUsualShape) return {};
    return "Note: the length is " + PlainText(ratio) +
           " times the diameter, outside the usual 0.4 to 3; the inductance may be less exact.";
}

}  // namespace

std::array<std::string, 5> UnitCaptions(std::int16_t unitSystem) {
    if (unitSystem == kCentimetres) {
        return {"Median diameter (cm): ", "Length (cm): ", "Turns per cm: ", "Wire length (cm): ",
                "Wire diameter (cm): "};
    }
    return {"Median diameter (in): ", "Length (in): ", "Turns per in: ", "Wire length (in): ",
            "Wire diameter (in): "};
}

CoilResultTexts ResultTexts(const CoilState& coil) {
    const bool centimetres = IsCentimetreMode(coil);
    const float perUnit = centimetres ? 1 / kCentimetresPerInch : 1;
    const float unitLength = centimetres ? kCentimetresPerInch : 1;
    CoilResultTexts texts;
    texts.turns = Shown(coil.coilTurns);
    texts.turnsPerUnit = Shown(coil.turnsPerInch * perUnit);
    texts.wireLength = Shown(coil.wireLengthInches * unitLength);
    texts.criticalGauge = "  " + PlainText(coil.criticalGauge);
    texts.wireDiameter = Shown(coil.wireDiameter * unitLength);
    texts.percentFill = Shown(coil.percentFill);
    if (coil.actualGauge != kNoGauge) texts.resistance = Shown(coil.wireResistance);
    texts.quarterWave = Shown(coil.quarterWaveKHz * 1000) + "Hz";
    texts.shapeNote = ShapeNote(coil);
    return texts;
}

bool PrintAllowed(const WindingSlots& windings, bool designHasLSection) {
    return windings[0].has_value() && (!designHasLSection || windings[1].has_value());
}

}  // namespace varo
