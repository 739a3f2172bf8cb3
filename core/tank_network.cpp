#include "core/tank_network.h"

#include <cmath>

#include "core/fault.h"

namespace varo {

namespace {

// For the design and for a read-only design alike.
template <class State>
auto& PartIn(State& state, TankPart part) {
    switch (part) {
        case TankPart::L1:
            return state.L1;
        case TankPart::L2:
            return state.L2;
        case TankPart::C1:
            return state.C1;
        case TankPart::C2:
            return state.C2;
        case TankPart::C3:
            break;
    }
    return state.C3;
}

}  // namespace

float& PartOf(DesignState& state, TankPart part) {
    return PartIn(state, part);
}

float PartOf(const DesignState& state, TankPart part) {
    return PartIn(state, part);
}

const char* TankPartName(TankPart part) {
    constexpr const char* kNames[kTankParts] = {"L1", "L2", "C1", "C2", "C3"};
    return kNames[static_cast<int>(part)];
}

bool LSectionStepsUp(const DesignState& state) {
    return state.intermediateR < state.loadR;
}

TankNetwork BuildTankNetwork(const DesignState& s) {
    TankNetwork network;
    auto add = [&network](TankElement element) { network.elements[network.count++] = element; };
    add({false, s.C1, TankPart::C1});
    add({true, s.L1, TankPart::L1});
    if (s.intermediateR > s.loadR) {
        const double merged = StoreSingle(static_cast<double>(s.C2) + s.C3);
        add({false, merged, TankPart::C2, CheckedDivide(s.C3, static_cast<double>(s.C2) + s.C3)});
        add({true, s.L2, TankPart::L2});
    } else if (LSectionStepsUp(s)) {
        add({false, s.C2, TankPart::C2});
        add({true, s.L2, TankPart::L2});
        add({false, s.C3, TankPart::C3});
    } else {
        add({false, s.C2, TankPart::C2});
    }
    return network;
}

ChainMatrix TankChainMatrix(const TankNetwork& network, double omega, double coilInverseQ,
                            double capacitorInverseQ) {
    ChainMatrix t;
    for (int i = 0; i < network.count; ++i) {
        const TankElement& element = network.elements[i];
        AppendElement(t, element.series, omega * element.value,
                      element.series ? coilInverseQ : capacitorInverseQ);
    }
    return t;
}

NetworkStresses WalkFromLoad(const TankNetwork& network, double omega, Complex zLoad,
                             double watts) {
    NetworkStresses stresses;
    Complex i{std::sqrt(2 * watts / zLoad.re), 0};  // peak
    Complex v = zLoad * i;
    for (int k = network.count - 1; k >= 0; --k) {
        const TankElement& element = network.elements[k];
        if (element.series) {
            const double rms = std::sqrt(SquaredMagnitude(i) / 2);
            (element.part == TankPart::L1 ? stresses.l1Amperes : stresses.l2Amperes) = rms;
            v = v + Complex{0, omega * element.value} * i;
        } else {
            const double peak = std::sqrt(SquaredMagnitude(v));
            if (element.part == TankPart::C2) stresses.midPeakVolts = peak;
            if (element.part == TankPart::C1) stresses.c1PeakVolts = peak;
            i = i + Complex{0, omega * element.value} * v;
        }
    }
    return stresses;
}

SParameters ToSParameters(const ChainMatrix& t, double z0) {
    const Complex bOverZ0 = (1.0 / z0) * t.b;
    const Complex cZ0 = z0 * t.c;
    const Complex denominator = t.a + bOverZ0 + cZ0 + t.d;
    const Complex determinant = t.a * t.d - t.b * t.c;
    return {.s11 = (t.a + bOverZ0 - cZ0 - t.d) / denominator,
            .s21 = Complex{2, 0} / denominator,
            .s12 = (2.0 * determinant) / denominator,
            .s22 = (t.d + bOverZ0 - cZ0 - t.a) / denominator};
}

}  // namespace varo
