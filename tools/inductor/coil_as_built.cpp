#include "tools/inductor/coil_as_built.h"

#include "core/numtext.h"
#include "model/fixed_text.h"

namespace varo {

namespace {

constexpr double kMetresPerInch = 0.0254;

std::string Hertz(double frequency) {
    return FormatNumber(static_cast<float>(frequency)) + "Hz";
}

std::string Ordinal(int n) {
    static const char* const kSuffix[] = {"th", "st", "nd", "rd", "th", "th"};
    return std::to_string(n) + kSuffix[n];
}

// "Within 10 % of the self-resonance: the operating frequency (7.15MHz), the 4th harmonic
// (28.6MHz)."; empty when none is.
std::string ResonanceNote(const CoilAsBuilt& coil, double frequency) {
    std::string list;
    for (int n = 1; n <= kHighestHarmonicChecked; ++n) {
        if (!coil.nearResonance[n]) continue;
        list += list.empty() ? "Within 10 % of the self-resonance: the " : ", the ";
        list += n == 1 ? "operating frequency" : Ordinal(n) + " harmonic";
        list += " (";
        list += Hertz(n * frequency);
        list += ")";
    }
    return list.empty() ? list : list + ".";
}

std::string MissingWireNote(const CoilState& coil) {
    if (coil.actualGauge == kNoGauge)
        return "Enter the wire gauge for the inductance as wound, its AC resistance and Q.";
    return "The wire is thicker than the pitch: no figures as wound.";
}

}  // namespace

Winding WindingOf(const CoilState& coil) {
    const double wire = coil.actualGauge == kNoGauge ? 0.0 : coil.wireDiameter;
    return {coil.coilDiameter * kMetresPerInch, coil.coilLength * kMetresPerInch, coil.coilTurns,
            wire * kMetresPerInch};
}

std::optional<CoilAsBuilt> CoilAsBuiltOf(const CoilState& coil, double frequency) {
    return AnalyzeCoil(WindingOf(coil), frequency);
}

AsBuiltTexts AsBuiltTextsOf(const CoilState& coil, double frequency) {
    AsBuiltTexts texts;
    const auto built = CoilAsBuiltOf(coil, frequency);
    if (!built) return texts;
    texts.heading = "As built";
    if (frequency > 0) {
        texts.heading += ", at ";
        texts.heading += Hertz(frequency);
    }
    texts.heading += ":";
    texts.sheet = FormatHenry(static_cast<float>(built->inductanceSheet)) + " (Nagaoka " +
                  FixedText(built->nagaoka, 4) + ")";
    if (built->inductanceWound) {
        const double wound = *built->inductanceWound;
        const double percent = (wound / coil.targetInductance - 1) * 100;
        texts.wound = FormatHenry(static_cast<float>(wound)) + ", " + (percent < 0 ? "" : "+") +
                      FixedText(percent, 2) + " % against the formula";
    }
    if (built->acResistance) {
        texts.acResistance = TrimmedText(*built->acResistance, 4) + " ohm";
        texts.q = FixedText(*built->q, 0);
    }
    texts.selfCapacitance = FormatFarad(static_cast<float>(built->selfCapacitance));
    texts.selfResonance = Hertz(built->selfResonance);
    // Without the wire the self-resonance still stands, on the sheet's inductance.
    texts.note = built->inductanceWound ? std::string() : MissingWireNote(coil);
    const std::string resonance = ResonanceNote(*built, frequency);
    if (!texts.note.empty() && !resonance.empty()) texts.note += " ";
    texts.note += resonance;
    return texts;
}

}  // namespace varo
