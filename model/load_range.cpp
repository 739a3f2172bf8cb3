#include "model/load_range.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

#include "core/fault.h"
#include "core/network.h"
#include "core/tank_network.h"
#include "model/design_results.h"

namespace varo {

namespace {

// A decimal number, the whole text, with an optional "k" for kilohms.
std::optional<double> Ohms(std::string_view text) {
    double scale = 1;
    if (!text.empty() && (text.back() == 'k' || text.back() == 'K')) {
        scale = 1e3;
        text.remove_suffix(1);
    }
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return {};
    value *= scale;
    return std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

// Where the reactance's sign starts: the last + or - that is no exponent's sign.
std::size_t ReactanceStart(std::string_view text) {
    for (std::size_t k = text.size(); k-- > 1;)
        if ((text[k] == '+' || text[k] == '-') && text[k - 1] != 'e' && text[k - 1] != 'E')
            return k;
    return std::string_view::npos;
}

// "-j22" or "-22j" -> -22.
std::optional<double> Reactance(std::string_view text) {
    const char sign = text.front();
    text.remove_prefix(1);
    if (!text.empty() && (text.front() == 'j' || text.front() == 'J'))
        text.remove_prefix(1);
    else if (!text.empty() && (text.back() == 'j' || text.back() == 'J'))
        text.remove_suffix(1);
    else
        return {};
    if (text.empty() || text.front() == '+' || text.front() == '-') return {};
    const auto value = Ohms(text);
    if (!value) return {};
    return sign == '-' ? -*value : *value;
}

// ---- One load -------------------------------------------------------------------------------

// The design's network with C1 and the loading capacitance as re-tuned.
TankNetwork RetunedNetwork(const DesignState& design, const Tuning& tuning) {
    TankNetwork network = BuildTankNetwork(design);
    for (int k = 0; k < network.count; ++k) {
        TankElement& element = network.elements[k];
        if (element.part == TankPart::C1) element.value = tuning.c1;
        if (element.part == TankPart::C2) {
            element.value = tuning.load;
            if (element.c3Share > 0) element.c3Share = design.C3 / tuning.load;
        }
    }
    return network;
}

std::optional<double> LossWatts(const TankNetwork& network, double omega, const LoadCase& load,
                                double watts, TankQ q) {
    try {
        const TankLosses losses = AnalyzeNetworkLosses(network, omega, load.zLoad, watts, q);
        return losses.inputWatts - losses.loadWatts;
    } catch (const ArithmeticFault&) {
        return std::nullopt;
    }
}

LoadCase MatchOneLoad(const DesignState& design, bool branch, Complex zLoad, double frequency,
                      TankQ q) {
    LoadCase load;
    load.zLoad = zLoad;
    load.frequency = frequency;
    load.tuning = RetuneFor(design, frequency, branch, zLoad);
    if (!load.tuning.solvable) return load;
    const double omega = 2 * std::numbers::pi * frequency;
    const TankNetwork network = RetunedNetwork(design, load.tuning);
    const double watts = std::fmax(design.rfPower, 0.0f);
    const NetworkStresses stresses = WalkFromLoad(network, omega, zLoad, watts);
    load.c1PeakVolts = stresses.c1PeakVolts;
    load.loadPeakVolts = stresses.midPeakVolts;
    load.l1Amperes = stresses.l1Amperes;
    load.l2Amperes = stresses.l2Amperes;
    load.lossWatts = LossWatts(network, omega, load, watts, q);
    return load;
}

void FindWorstAndCover(LoadRange& range) {
    for (int k = 0; k < static_cast<int>(range.loads.size()); ++k) {
        const LoadCase& load = range.loads[k];
        if (!load.tuning.solvable) {
            ++range.unmatched;
            continue;
        }
        for (int s = 0; s < (range.withPower ? kLoadStresses : 0); ++s) {
            const auto stress = static_cast<LoadStress>(s);
            if (stress == LoadStress::LossWatts && !load.lossWatts) continue;
            // Rounding alone does not make a later load the worst: the plate's swing is the
            // same for every matched load.
            WorstCase& worst = range.worst[s];
            if (worst.index < 0 || StressOf(load, stress) > worst.value * (1 + 1e-9))
                worst = {k, StressOf(load, stress)};
        }
        const auto widen = [](std::optional<CapacitanceSpan>& span, double c) {
            span = span ? CapacitanceSpan{std::min(span->min, c), std::max(span->max, c)}
                        : CapacitanceSpan{c, c};
        };
        widen(range.c1Cover, load.tuning.c1);
        widen(range.loadCover, load.tuning.load);
    }
}

// The design as the plan made it at a band's centre: its coils and working Q.
std::optional<DesignState> BandDesign(const DesignState& design, const BandResult& band) {
    DesignState state = design;
    state.frequency = StoreSingle(band.centre);
    state.piQ = StoreSingle(band.q);
    try {
        if (ComponentCalculations(state, SilentReporter())) return state;
    } catch (const ArithmeticFault&) {
    }
    return std::nullopt;
}

std::vector<std::string> CoverShortfalls(const LoadRange& range, const BandPlanInputs& inputs,
                                         const Band& band) {
    std::vector<std::string> shortfalls;
    if (!range.c1Cover || !range.loadCover) return shortfalls;
    const double fixed = inputs.tubeCapacitance + inputs.strayCapacitance + band.tunePadder;
    const auto check = [&](double needed, const CapacitorRange& capacitor, const char* what) {
        if (auto shortfall = RangeShortfall(needed, capacitor, what))
            shortfalls.push_back(*shortfall);
    };
    check(range.c1Cover->min - fixed, inputs.tune, "the tuning capacitor");
    check(range.c1Cover->max - fixed, inputs.tune, "the tuning capacitor");
    check(range.loadCover->min - band.loadPadder, inputs.load, "the loading capacitor");
    check(range.loadCover->max - band.loadPadder, inputs.load, "the loading capacitor");
    return shortfalls;
}

}  // namespace

std::optional<Complex> ParseLoadImpedance(std::string_view text) {
    std::string compact;
    for (const char c : text)
        if (c != ' ' && c != '\t') compact += c;
    const std::string_view all = compact;
    const std::size_t split = all.find_first_of("jJ") == std::string_view::npos
                                  ? std::string_view::npos
                                  : ReactanceStart(all);
    if (all.find_first_of("jJ") != std::string_view::npos && split == std::string_view::npos)
        return {};
    const auto r = Ohms(all.substr(0, split));
    const auto x =
        split == std::string_view::npos ? std::optional<double>(0) : Reactance(all.substr(split));
    if (!r || !x || !(*r > 0)) return {};
    return Complex{*r, *x};
}

std::vector<Complex> SwrCircle(double r0, double swr, int phases) {
    const double rho = (swr - 1) / (swr + 1);
    std::vector<Complex> loads;
    for (int k = 0; k < phases; ++k) {
        const double phase = 2 * std::numbers::pi * k / phases;
        const Complex gamma{rho * std::cos(phase), rho * std::sin(phase)};
        Complex z = r0 * ((Complex{1, 0} + gamma) / (Complex{1, 0} - gamma));
        if (std::fabs(z.im) < 1e-12 * r0) z.im = 0;  // what is left of sin(pi)
        loads.push_back(z);
    }
    return loads;
}

double StressOf(const LoadCase& load, LoadStress stress) {
    switch (stress) {
        case LoadStress::C1Volts:
            return load.c1PeakVolts;
        case LoadStress::LoadVolts:
            return load.loadPeakVolts;
        case LoadStress::L1Amperes:
            return load.l1Amperes;
        case LoadStress::L2Amperes:
            return load.l2Amperes;
        case LoadStress::LossWatts:
            return load.lossWatts.value_or(0);
    }
    return 0;
}

LoadRange AnalyzeLoadRange(const DesignState& design, const LoadRangeInputs& inputs) {
    LoadRange range;
    range.withPower = design.rfPower > 0;
    const bool branch = CentreBranch(design);
    for (std::size_t k = 0; k < inputs.loads.size(); ++k) {
        const double frequency =
            k < inputs.frequencies.size() ? inputs.frequencies[k] : design.frequency;
        LoadCase load = MatchOneLoad(design, branch, inputs.loads[k], frequency, inputs.q);
        if (k < inputs.phases.size()) load.phaseDegrees = inputs.phases[k];
        range.loads.push_back(std::move(load));
    }
    FindWorstAndCover(range);
    return range;
}

LoadRangeInputs SwrCircleInputs(const DesignState& design, double swr, int phases, TankQ q) {
    LoadRangeInputs inputs;
    inputs.loads = SwrCircle(design.loadR, swr, phases);
    for (int k = 0; k < phases; ++k)
        inputs.phases.push_back(360.0 * k / phases);
    inputs.q = q;
    return inputs;
}

std::vector<BandLoadRange> AnalyzeBandLoadRanges(const DesignState& design, const BandPlan& plan,
                                                 double swr, int phases) {
    std::vector<BandLoadRange> ranges;
    for (const BandResult& band : plan.bands) {
        if (!band.designed) continue;
        const auto state = BandDesign(design, band);
        if (!state) continue;
        BandLoadRange result;
        result.band = band.band.name;
        result.centre = band.centre;
        LoadRangeInputs inputs = SwrCircleInputs(*state, swr, phases, plan.inputs.q);
        inputs.frequencies.assign(inputs.loads.size(), band.centre);
        result.range = AnalyzeLoadRange(*state, inputs);
        result.shortfalls = CoverShortfalls(result.range, plan.inputs, band.band);
        ranges.push_back(std::move(result));
    }
    return ranges;
}

std::vector<std::string> LoadRangeProblems(const DesignState& design,
                                           const LoadRangeRequest& request) {
    std::vector<std::string> problems;
    if (!(design.plateR > 0) || !(design.loadR > 0) || !(design.L1 > 0) || !(design.C1 > 0))
        problems.push_back("The design needs its components worked out first.");
    using Kind = LoadRangeRequest::Kind;
    if (request.kind == Kind::SwrCircle && !(request.swr >= 1 && std::isfinite(request.swr)))
        problems.push_back("The SWR must be 1 or more.");
    if (request.kind == Kind::SwrCircle && !(request.phases >= 1 && request.phases <= kMostPhases))
        problems.push_back("The number of phases must be 1 to " + std::to_string(kMostPhases) +
                           ".");
    if (request.kind == Kind::Impedance &&
        !(request.impedance.re > 0 && std::isfinite(request.impedance.re) &&
          std::isfinite(request.impedance.im)))
        problems.push_back("The load needs a resistance above 0 ohms.");
    if (request.kind == Kind::Measured &&
        (request.measuredLoads.empty() ||
         request.measuredLoads.size() != request.measuredFrequencies.size()))
        problems.push_back("The measured load holds no points.");
    return problems;
}

LoadRangeResult AnalyzeLoadRequest(const DesignState& design, const LoadRangeRequest& request,
                                   TankQ q, const BandPlan* plan) {
    LoadRangeResult result;
    result.request = request;
    LoadRangeInputs inputs;
    switch (request.kind) {
        case LoadRangeRequest::Kind::SwrCircle:
            inputs = SwrCircleInputs(design, request.swr, request.phases, q);
            if (plan)
                result.bands = AnalyzeBandLoadRanges(design, *plan, request.swr, request.phases);
            break;
        case LoadRangeRequest::Kind::Impedance:
            inputs.loads = {request.impedance};
            break;
        case LoadRangeRequest::Kind::Measured:
            inputs.loads = request.measuredLoads;
            inputs.frequencies = request.measuredFrequencies;
            break;
    }
    inputs.q = q;
    result.range = AnalyzeLoadRange(design, inputs);
    return result;
}

}  // namespace varo
