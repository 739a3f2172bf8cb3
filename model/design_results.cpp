#include "model/design_results.h"

#include <algorithm>
#include <string>

#include "core/fault.h"
#include "core/numtext.h"
#include "model/fixed_text.h"

namespace varo {

namespace {

constexpr int kHarmonicCount = 5;

class QuietReporter final : public Reporter {
  public:
    void ShowMessage(std::string_view, std::string_view, MessageIcon) override {}
};

template <std::size_t N>
std::vector<float> Span(const std::array<float, N>& values, int last) {
    return {values.begin(), values.begin() + (last + 1)};
}

void Quietly(const std::function<void()>& step) {
    try {
        step();
    } catch (const ArithmeticFault&) {
        // Left out of the first view; the next recalculation reports it.
    }
}

SectionPhases PhasesOf(const DesignState& state) {
    return {state.piPhase, state.lPhase};
}

}  // namespace

Reporter& SilentReporter() {
    static QuietReporter silent;
    return silent;
}

DesignInputs DesignInputs::Of(const DesignState& s) {
    return {s.frequency, s.plateR,    s.intermediateR, s.loadR,
            s.piQ,       s.peakSwing, s.rfPower,       s.genMultiplier};
}

ComponentValues ComponentValues::Of(const DesignState& s) {
    ComponentValues values{s.omega, s.inputQ, s.outputQ, s.C1, s.L1, s.C2, s.xC1, s.xL1, s.xC2, {}};
    if (s.intermediateR != s.loadR) values.lSection = LSectionValues{s.L2, s.C3, s.xL2, s.xC3};
    return values;
}

SweepTable SweepTable::Of(const DesignState& s) {
    const int last = std::clamp<int>(s.sweepIntervals, -1, kSweepPoints - 1);
    return {Span(s.sweepFrequency, last),
            Span(s.sweepTransmission, last),
            Span(s.sweepPhase, last),
            Span(s.sweepReturn, last),
            Span(s.sweepVswr, last),
            Span(s.sweepZMagnitude, last),
            Span(s.sweepZAngle, last),
            s.sweepStart,
            s.sweepStop,
            s.sourceR};
}

float UsualZAngle(const LadderResult& result) {
    return 0.0f - result.zAngle;
}

bool RunGuarded(Reporter& reporter, const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const ArithmeticFault& fault) {
        reporter.ShowMessage(std::string("The network could not be analysed: ") + fault.what() +
                             ". Please check the entries.");
        return false;
    }
}

bool RecomputeNetwork(DesignState& state, Reporter& reporter) {
    bool calculated = true;
    const bool ranThrough = RunGuarded(reporter, [&] {
        calculated = ComponentCalculations(state, reporter);
        SetupLadder(state);
    });
    return calculated && ranThrough;
}

std::vector<HarmonicRow> AnalyzeHarmonics(DesignState& state, Reporter& reporter) {
    RecomputeNetwork(state, reporter);
    return AnalyzeHarmonicsAsLaidOut(state);
}

std::vector<HarmonicRow> AnalyzeHarmonicsAsLaidOut(DesignState& state) {
    std::vector<HarmonicRow> rows;
    LadderResult result;
    Quietly([&] {
        for (int harmonic = 1; harmonic <= kHarmonicCount; ++harmonic) {
            state.analysisFrequency = StoreSingle(harmonic * static_cast<double>(state.frequency));
            AnalyzeLadder(state, 0, 0, state.analysisFrequency, result);
            rows.push_back({harmonic, state.analysisFrequency, result});
        }
    });
    return rows;
}

std::vector<float> BuildGridFrequencies(DesignState& state) {
    try {
        BuildLogGrid(state);
    } catch (const ArithmeticFault&) {
        // A grid too dense to list: the plot goes on without frequency lines.
        return {};
    }
    const int last = std::min<int>(state.gridLastIndex, kGridEntries - 1);
    return {state.gridFrequencies.begin(), state.gridFrequencies.begin() + (last + 1)};
}

bool CalculateDesign(DesignState& state, Reporter& reporter, DesignResults& results) {
    bool succeeded = RecomputeNetwork(state, reporter);
    bool swept = true;
    succeeded &= RunGuarded(reporter, [&] {
        swept = SweepRoutine(state, reporter);
        ComputeSectionPhases(state);
        results.phases = PhasesOf(state);
    });
    succeeded &= RunGuarded(reporter, [&] { results.stresses = ShowStresses(state, reporter); });
    results.gridFrequencies = BuildGridFrequencies(state);
    results.harmonics = AnalyzeHarmonics(state, reporter);
    results.components = ComponentValues::Of(state);
    results.inputs = DesignInputs::Of(state);
    results.sweep = SweepTable::Of(state);
    return succeeded && swept;
}

std::optional<TankLosses> TankLossesOf(const DesignState& state, TankQ q) {
    try {
        return AnalyzeTankLosses(state, q);
    } catch (const ArithmeticFault&) {
        return std::nullopt;
    }
}

std::string WoundQNote(const TankQ& q) {
    std::string note;
    const char* const names[2] = {"L1", "L2"};
    for (int i = 0; i < 2; ++i) {
        if (!q.wound[i]) continue;
        if (!note.empty()) note += "; ";
        note += names[i];
        note += " as wound, Q ";
        note += FixedText(*q.wound[i], 0);
    }
    return note;
}

DesignResults LoadDesignResults(DesignState& state, Reporter& reporter) {
    DesignResults results;
    AnalyzeHarmonics(state, reporter);
    Quietly([&] {
        SweepRoutine(state, SilentReporter());
        ComputeSectionPhases(state);
        results.phases = PhasesOf(state);
    });
    Quietly([&] { results.stresses = ShowStresses(state, SilentReporter()); });
    results.gridFrequencies = BuildGridFrequencies(state);
    results.harmonics = AnalyzeHarmonics(state, reporter);
    results.components = ComponentValues::Of(state);
    results.inputs = DesignInputs::Of(state);
    results.sweep = SweepTable::Of(state);
    return results;
}

}  // namespace varo
