#include "screens/bands/band_form.h"

#include <charconv>
#include <cmath>

namespace varo {

namespace {

constexpr double kPico = 1e-12;

std::optional<double> Number(const std::string& text) {
    std::string_view view(text);
    while (!view.empty() && view.front() == ' ')
        view.remove_prefix(1);
    while (!view.empty() && view.back() == ' ')
        view.remove_suffix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(view.data(), view.data() + view.size(), value);
    if (view.empty() || error != std::errc() || end != view.data() + view.size()) return {};
    return value;
}

// Reads one entry in `scale` units; names it among the problems where it is no number.
double Read(const std::string& text, double scale, const std::string& what,
            std::vector<std::string>& problems) {
    const auto value = Number(text);
    if (!value) {
        problems.push_back(what + " \"" + text + "\" is not a number.");
        return 0;
    }
    return *value * scale;
}

std::string RowName(const BandRowText& row) {
    return "Band " + (row.name.empty() ? std::string("(unnamed)") : row.name);
}

}  // namespace

std::vector<BandRowText> DefaultBandRows() {
    std::vector<BandRowText> rows;
    for (const Band& band : DefaultBands()) {
        char low[32], high[32];
        const auto lowEnd = std::to_chars(low, low + sizeof low, band.low / 1e6).ptr;
        const auto highEnd = std::to_chars(high, high + sizeof high, band.high / 1e6).ptr;
        rows.push_back(
            {true, band.name, std::string(low, lowEnd), std::string(high, highEnd), "0", "0"});
    }
    return rows;
}

std::optional<double> PresetConduction(ConductionChoice choice) {
    switch (choice) {
        case ConductionChoice::ClassA:
            return kClassAConduction;
        case ConductionChoice::ClassAB:
            return kClassABConduction;
        case ConductionChoice::ClassB:
            return kClassBConduction;
        case ConductionChoice::ClassC:
            return kClassCConduction;
        case ConductionChoice::Other:
            break;
    }
    return std::nullopt;
}

std::variant<BandPlanInputs, std::vector<std::string>> ReadBandForm(const BandFormText& form,
                                                                    const DesignState& design) {
    std::vector<std::string> problems;
    BandPlanInputs inputs;
    inputs.tubeCapacitance =
        Read(form.tubeCapacitance, kPico, "The tube's output capacitance", problems);
    inputs.strayCapacitance = Read(form.strayCapacitance, kPico, "The stray capacitance", problems);
    inputs.tune = {Read(form.tuneMin, kPico, "The tuning capacitor's minimum", problems),
                   Read(form.tuneMax, kPico, "The tuning capacitor's maximum", problems)};
    inputs.load = {Read(form.loadMin, kPico, "The loading capacitor's minimum", problems),
                   Read(form.loadMax, kPico, "The loading capacitor's maximum", problems)};
    const auto preset = PresetConduction(form.conduction);
    inputs.conductionDegrees =
        preset ? *preset : Read(form.conductionDegrees, 1, "The conduction angle", problems);
    switch (form.limit) {
        case LimitChoice::Fixed:
            inputs.limitDbc = kFixedHarmonicLimitDbc;
            break;
        case LimitChoice::PowerScaled:
            inputs.limitDbc = PowerScaledHarmonicLimitDbc(design.rfPower);
            break;
        case LimitChoice::Typed:
            // "60" and "-60" alike mean 60 dB below the carrier.
            inputs.limitDbc = -std::fabs(Read(form.limitDb, 1, "The harmonic limit", problems));
            break;
    }
    inputs.bands.clear();
    for (const BandRowText& row : form.bands) {
        if (!row.used) continue;
        const std::string name = RowName(row);
        inputs.bands.push_back(
            {row.name, Read(row.low, 1e6, name + ": the low edge", problems),
             Read(row.high, 1e6, name + ": the high edge", problems),
             Read(row.tunePadder, kPico, name + ": the tuning padder", problems),
             Read(row.loadPadder, kPico, name + ": the loading padder", problems)});
    }
    if (!problems.empty()) return problems;
    std::vector<std::string> rejected = BandPlanInputProblems(design, inputs);
    if (!rejected.empty()) return rejected;
    return inputs;
}

}  // namespace varo
