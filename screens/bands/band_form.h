#pragma once

#include <string>
#include <variant>
#include <vector>

#include "model/band_plan.h"

namespace varo {

// A row of the screen's band table, as typed: MHz for the edges, pF for the padders.
struct BandRowText {
    bool used = true;
    std::string name, low, high, tunePadder, loadPadder;
};

// The class presets, with "Other" for an angle typed.
enum class ConductionChoice { ClassA, ClassAB, ClassB, ClassC, Other };
// The harmonic limit: -43 dBc, the power-scaled limit, or a number typed.
enum class LimitChoice { Fixed, PowerScaled, Typed };

// The screen's entries as texts (pF, degrees, dB).
struct BandFormText {
    std::string tubeCapacitance = "5", strayCapacitance = "10";
    std::string tuneMin = "10", tuneMax = "500", loadMin = "30", loadMax = "3000";
    ConductionChoice conduction = ConductionChoice::ClassB;
    std::string conductionDegrees = "180";
    LimitChoice limit = LimitChoice::Fixed;
    std::string limitDb = "-43";
    std::vector<BandRowText> bands;
};

// The default bands, 160 to 10 m, as rows.
std::vector<BandRowText> DefaultBandRows();

// The angle a choice stands for; none for Other.
std::optional<double> PresetConduction(ConductionChoice choice);

// The plan's inputs the texts describe, or the sentences naming what is wrong with them (a text
// that is no number included). `watts` is the design's power, for the power-scaled limit.
std::variant<BandPlanInputs, std::vector<std::string>> ReadBandForm(const BandFormText& form,
                                                                    const DesignState& design);

}  // namespace varo
