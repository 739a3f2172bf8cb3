#include <cmath>
#include <string>

#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"

namespace varo {

namespace {

double Squared(double x) {
    return x * x;
}

// Keeps the Q-split division away from zero when the two resistances are equal.
void NudgeEqualResistances(DesignState& s) {
    if (std::fabs(s.intermediateR) == std::fabs(s.plateR)) {
        s.intermediateR = StoreSingle(static_cast<double>(s.intermediateR) * 1.000001);
    }
}

// The smaller root of: plateR/(1 + inputQ^2) = intermediateR/(1 + outputQ^2), inputQ + outputQ =
// piQ. Both halves of the pi section then see the same virtual resistance.
void SplitPiQ(DesignState& s) {
    const double q = s.piQ;
    const double rp = s.plateR;
    const double ri = s.intermediateR;
    const double root = CheckedSqrt(rp * ri * q * q - Squared(rp - ri));
    s.inputQ = StoreSingle(CheckedDivide(q * rp - root, rp - ri));
    s.outputQ = StoreSingle(q - s.inputQ);
    if (std::fabs(s.outputQ) < 1e-6f) s.outputQ = 1e-6f;
}

void ComputePiSection(DesignState& s) {
    s.xC1 = StoreSingle(CheckedDivide(s.plateR, s.inputQ));
    s.xC2 = StoreSingle(CheckedDivide(s.intermediateR, s.outputQ));
    const double inputQ = s.inputQ;
    s.xL1 = StoreSingle(CheckedDivide(static_cast<double>(s.piQ) * s.plateR, inputQ * inputQ + 1));
    s.C1 = StoreSingle(CheckedDivide(1.0, static_cast<double>(s.xC1) * s.omega));
    s.C2 = StoreSingle(CheckedDivide(1.0, static_cast<double>(s.xC2) * s.omega));
    s.L1 = StoreSingle(CheckedDivide(s.xL1, s.omega));
}

void ComputeLSection(DesignState& s) {
    const double ri = s.intermediateR;
    const double rl = s.loadR;
    if (s.intermediateR == s.loadR) {
        s.L2 = 0;
        s.C3 = 0;
        return;
    }
    // xL2 = smaller x sqrt(larger / smaller - 1), the L-section Q times the smaller resistance.
    const double smaller = s.intermediateR > s.loadR ? rl : ri;
    s.xL2 = StoreSingle(CheckedSqrt(rl * ri - smaller * smaller));
    s.xC3 = StoreSingle(CheckedDivide(rl * ri, s.xL2));
    s.L2 = StoreSingle(CheckedDivide(s.xL2, s.omega));
    s.C3 = StoreSingle(CheckedDivide(1.0, static_cast<double>(s.xC3) * s.omega));
}

void DeriveComponents(DesignState& s) {
    s.omega = StoreSingle((s.pi + s.pi) * s.frequency);
    NudgeEqualResistances(s);
    SplitPiQ(s);
    ComputePiSection(s);
    ComputeLSection(s);
}

// The smallest whole Q above the minimum that the resistance ratio allows. Left as it is when the
// ratio itself cannot be evaluated.
void RaisePiQ(DesignState& s) {
    try {
        const double ratio = CheckedDivide(s.plateR, s.intermediateR);
        s.piQ = StoreSingle(std::floor(CheckedSqrt(ratio) + 1.0));
    } catch (const ArithmeticFault&) {
    }
}

std::string ComponentFaultMessage(FaultKind kind) {
    const char* const lines[] = {"We have a ComponentCalculations error.",
                                 "   ",
                                 "This can be caused by insufficient Pi-section",
                                 "Q or unusual or unlikely inputs.  ",
                                 "",
                                 "Please recheck the entries.  Meanwhile, the",
                                 "PI-net Q has been reset to a higher value."};
    std::string text;
    for (const char* line : lines) {
        text += line;
        text += kCrLf;
    }
    return text + FaultText(kind);
}

void SetGraphSettings(DesignState& s) {
    s.sweepStart = StoreSingle(s.frequency * 0.5);
    s.sweepStop = StoreSingle(s.frequency * 4.0);
    s.sweepIntervals = 2000;
    s.graphDivisions = 6;
    s.plotFloorDb = -60;
    s.graphDbPerDiv = 10;
    s.gridLastIndex = 10;
    s.inductorQ = 1e7f;
    s.capacitorQ = 1e7f;
    s.sourceR = s.plateR;
}

void PlaceInductor(DesignState& s, int position, float inductance) {
    s.elementType[position] = kSeriesInductor;
    s.elementL[position] = inductance;
}

void PlaceCapacitor(DesignState& s, int position, float capacitance) {
    s.elementType[position] = kShuntCapacitor;
    s.elementC[position] = capacitance;
}

// Restores the inputs that the section analysis borrows, also when the analysis faults.
class SectionAnalysisGuard {
  public:
    explicit SectionAnalysisGuard(DesignState& s)
        : state_(s), plateR_(s.plateR), loadR_(s.loadR), elementCount_(s.elementCount) {}
    ~SectionAnalysisGuard() {
        state_.plateR = plateR_;
        state_.loadR = loadR_;
        state_.elementCount = elementCount_;
    }
    SectionAnalysisGuard(const SectionAnalysisGuard&) = delete;
    SectionAnalysisGuard& operator=(const SectionAnalysisGuard&) = delete;
    float loadR() const { return loadR_; }

  private:
    DesignState& state_;
    float plateR_;
    float loadR_;
    std::int16_t elementCount_;
};

float PhaseAtAnalysisFrequency(const DesignState& s) {
    LadderResult result;
    AnalyzeLadder(s, 0.0f, 0.0f, s.analysisFrequency, result);
    return result.transmissionPhase;
}

}  // namespace

bool ComponentCalculations(DesignState& state, Reporter& reporter) {
    try {
        DeriveComponents(state);
        return true;
    } catch (const ArithmeticFault& fault) {
        reporter.CloseAllFiles();
        RaisePiQ(state);
        reporter.PiQReset(SignedText(state.piQ));
        reporter.ShowMessage(ComponentFaultMessage(fault.kind()));
        return false;
    }
}

void SetupLadder(DesignState& state) {
    SetGraphSettings(state);
    PlaceCapacitor(state, 1, state.C1);
    PlaceInductor(state, 2, state.L1);
    PlaceCapacitor(state, 3, state.C2);
    PlaceInductor(state, 4, state.L2);
    if (state.intermediateR == state.loadR) {
        state.elementCount = 3;
    } else if (state.intermediateR > state.loadR) {
        state.elementC[3] = StoreSingle(static_cast<double>(state.C2) + state.C3);
        state.elementCount = 4;
    } else {
        // Only the value goes to position 5: its type stays a through connection, so C3 takes
        // no part in the analysis of such a design.
        state.elementC[5] = state.C3;
        state.elementCount = 5;
    }
}

void ComputeSectionPhases(DesignState& state) {
    SectionAnalysisGuard guard(state);
    state.analysisFrequency = state.frequency;

    PlaceCapacitor(state, 1, state.C1);
    PlaceInductor(state, 2, state.L1);
    PlaceCapacitor(state, 3, state.C2);
    state.loadR = state.intermediateR;
    state.elementCount = 3;
    state.piPhase = PhaseAtAnalysisFrequency(state);

    state.plateR = state.intermediateR;
    if (state.intermediateR > guard.loadR()) {
        PlaceCapacitor(state, 1, state.C3);
        PlaceInductor(state, 2, state.L2);
    } else {
        // A through connection: the L-section phase of such designs is taken as zero.
        state.elementType[1] = kSeriesInductor;
        state.elementL[1] = 0;
        state.elementC[1] = 0;
        state.elementType[2] = kShuntCapacitor;
        state.elementL[2] = 0;
        state.elementC[2] = 0;
    }
    state.loadR = guard.loadR();
    state.elementCount = 2;
    state.lPhase = PhaseAtAnalysisFrequency(state);
}

}  // namespace varo
