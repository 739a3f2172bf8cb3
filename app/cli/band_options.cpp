#include "app/cli/band_options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>

namespace varo::cli {

namespace {

constexpr double kPico = 1e-12;

double Number(const Arguments& args, const std::string& option, const char* what) {
    const auto value = PlainNumber(args.Required(option));
    if (!value) throw UsageError(option + " needs " + what);
    return *value;
}

CapacitorRange Range(const Arguments& args, const std::string& option) {
    const std::string text = args.Required(option);
    const std::size_t colon = text.find(':');
    const auto min = PlainNumber(std::string_view(text).substr(0, colon));
    const auto max = colon == std::string::npos
                         ? std::nullopt
                         : PlainNumber(std::string_view(text).substr(colon + 1));
    if (!min || !max) throw UsageError(option + " needs MIN:MAX in pF, such as 10:500");
    return {*min * kPico, *max * kPico};
}

std::string BandNumber(const Band& band) {
    return band.name.substr(0, band.name.find(' '));
}

std::vector<Band> ChosenBands(const std::optional<std::string>& list) {
    const std::vector<Band> known = DefaultBands();
    if (!list) return known;
    std::vector<Band> chosen;
    std::istringstream items(*list);
    for (std::string item; std::getline(items, item, ',');) {
        const auto band = std::find_if(known.begin(), known.end(),
                                       [&](const Band& b) { return BandNumber(b) == item; });
        if (band == known.end()) {
            std::string names;
            for (const Band& b : known) {
                if (!names.empty()) names += ',';
                names += BandNumber(b);
            }
            throw UsageError("unknown band '" + item + "' (the bands: " + names + ")");
        }
        chosen.push_back(*band);
    }
    return chosen;
}

double LimitDbc(const std::optional<std::string>& text, double watts) {
    if (!text || *text == "fcc") return kFixedHarmonicLimitDbc;
    if (*text == "itu") return PowerScaledHarmonicLimitDbc(watts);
    const auto db = PlainNumber(*text);
    // "60" and "-60" both mean 60 dB below the carrier.
    if (!db || *db == 0) throw UsageError("--limit needs fcc, itu or a number of dB");
    return -std::fabs(*db);
}

double Conduction(const std::optional<std::string>& text) {
    if (!text) return kClassBConduction;
    const auto degrees = PlainNumber(*text);
    if (!degrees) throw UsageError("--conduction needs a number of degrees");
    return *degrees;
}

}  // namespace

const std::set<std::string> kBandPlanOptions{"--cout",     "--stray",  "--tune",
                                             "--load-cap", "--bands",  "--conduction",
                                             "--limit",    "--coil-q", "--capacitor-q"};

std::optional<double> PlainNumber(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

BandPlanInputs ReadBandInputs(const Arguments& args, const DesignState& design) {
    BandPlanInputs inputs;
    inputs.tubeCapacitance = Number(args, "--cout", "a capacitance in pF") * kPico;
    inputs.strayCapacitance = Number(args, "--stray", "a capacitance in pF") * kPico;
    inputs.tune = Range(args, "--tune");
    inputs.load = Range(args, "--load-cap");
    inputs.bands = ChosenBands(args.Value("--bands"));
    inputs.conductionDegrees = Conduction(args.Value("--conduction"));
    inputs.limitDbc = LimitDbc(args.Value("--limit"), design.rfPower);
    inputs.q = ReadTankQ(args);
    return inputs;
}

// A Q that is no number is kept as 0, which the checks of the plan and the losses refuse by name.
TankQ ReadTankQ(const Arguments& args) {
    TankQ q;
    if (auto text = args.Value("--coil-q")) q.coil = PlainNumber(*text).value_or(0);
    if (auto text = args.Value("--capacitor-q")) q.capacitor = PlainNumber(*text).value_or(0);
    return q;
}

}  // namespace varo::cli
