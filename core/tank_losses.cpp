#include "core/tank_losses.h"

#include <cmath>

#include "core/fault.h"

namespace varo {

bool IsUsableQ(double q) {
    return q > 0 && std::isfinite(q);
}

double TankQ::CoilQ(TankPart coilPart) const {
    const auto& own = wound[coilPart == TankPart::L2 ? 1 : 0];
    return own.value_or(coil);
}

namespace {

double InverseQ(double q) {
    if (!(q > 0)) throw ArithmeticFault(FaultKind::InvalidArgument);
    return CheckedDivide(1.0, q);
}

// Voltage across and current into the network at one place, the load end first.
struct Port {
    Complex v;
    Complex i;
};

// Steps from the element's output side to its input side and returns what it dissipates.
double StepThrough(const TankElement& element, double omega, double inverseQ, Port& port) {
    const Complex immittance = LossyImmittance(omega * element.value, inverseQ);
    if (element.series) {
        port.v = port.v + immittance * port.i;
        return SquaredMagnitude(port.i) * immittance.re;
    }
    const double dissipated = SquaredMagnitude(port.v) * immittance.re;
    port.i = port.i + immittance * port.v;
    return dissipated;
}

void AddDissipation(TankLosses& losses, const TankElement& element, double watts) {
    const double c3Part = watts * element.c3Share;
    losses.watts[static_cast<int>(element.part)] += watts - c3Part;
    losses.watts[static_cast<int>(TankPart::C3)] += c3Part;
}

// Walks from the load (1 V across it, `loadAdmittance` through it) to the input, noting each
// part's dissipation.
Port WalkToInput(const TankNetwork& network, double omega, Complex loadAdmittance, TankQ q,
                 TankLosses& losses) {
    const double capacitorInverseQ = InverseQ(q.capacitor);
    Port port{{1, 0}, loadAdmittance};
    for (int i = network.count - 1; i >= 0; --i) {
        const TankElement& element = network.elements[i];
        const double inverseQ =
            element.series ? InverseQ(q.CoilQ(element.part)) : capacitorInverseQ;
        AddDissipation(losses, element, StepThrough(element, omega, inverseQ, port));
    }
    return port;
}

}  // namespace

TankLosses AnalyzeNetworkLosses(const TankNetwork& network, double omega, Complex zLoad,
                                double loadWatts, TankQ q) {
    // 1 / z, exact for a pure resistance.
    const Complex loadAdmittance =
        zLoad.im == 0 ? Complex{CheckedDivide(1.0, zLoad.re), 0} : Complex{1, 0} / zLoad;
    TankLosses losses;
    losses.q = q;
    const Port input = WalkToInput(network, omega, loadAdmittance, q, losses);

    // V times the conjugate of I: its real part is the power taken in, in the units in which
    // the load takes the real part of its admittance. The network is linear, so the figures
    // scale to the load's power.
    const Complex unitPower = input.v * Conjugate(input.i);
    const double unitLoadWatts = loadAdmittance.re;
    if (!(unitPower.re > 0) || !(unitLoadWatts > 0))
        throw ArithmeticFault(FaultKind::InvalidArgument);
    const double scale =
        zLoad.im == 0 ? loadWatts * zLoad.re : CheckedDivide(loadWatts, unitLoadWatts);
    for (double& watts : losses.watts)
        watts = CheckedFinite(watts * scale);
    losses.loadWatts = loadWatts;
    losses.inputWatts = CheckedFinite(unitPower.re * scale);
    losses.efficiencyPercent = 100 * unitLoadWatts / unitPower.re;
    losses.lossDb = 10 * CheckedLog10(unitPower.re / unitLoadWatts);
    const double currentSquared = SquaredMagnitude(input.i);
    losses.zInReal = CheckedFinite(CheckedDivide(unitPower.re, currentSquared));
    losses.zInImag = CheckedFinite(CheckedDivide(unitPower.im, currentSquared));
    return losses;
}

TankLosses AnalyzeTankLosses(const DesignState& state, TankQ q) {
    return AnalyzeNetworkLosses(BuildTankNetwork(state), 2 * state.pi * state.frequency,
                                Complex{state.loadR, 0}, state.rfPower, q);
}

}  // namespace varo
