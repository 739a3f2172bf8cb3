#pragma once

#include <array>

#include "core/chain_matrix.h"
#include "core/design_state.h"

namespace varo {

// The five parts of the pi-L network, in the order reports list them.
enum class TankPart { L1, L2, C1, C2, C3 };
inline constexpr int kTankParts = 5;

// The design's value of a part, and the part's name ("L1").
float& PartOf(DesignState& state, TankPart part);
float PartOf(const DesignState& state, TankPart part);
const char* TankPartName(TankPart part);

// One element of the network as built, generator side first.
struct TankElement {
    bool series = false;  // series inductor, else shunt capacitor
    double value = 0;     // henries or farads
    TankPart part = TankPart::C1;
    // When the L section steps down, C3 stands beside C2 and the two are one element;
    // this is C3's share of its capacitance (and so of its losses), 0 otherwise.
    double c3Share = 0;
};

struct TankNetwork {
    std::array<TankElement, 5> elements{};
    int count = 0;
};

// True when the L section steps up (intermediateR below loadR): C3 then stands across the load,
// where the program's own analysis leaves it out.
bool LSectionStepsUp(const DesignState& state);

// The network from the component values, laid out as the analysis ladder lays it out (C2 + C3
// rounded to single precision when C3 stands at the midpoint), but with C3 across the load when
// the L section steps up. It does not read the ladder arrays, which the phase calculation
// leaves holding the L section only.
TankNetwork BuildTankNetwork(const DesignState& state);

// The chain matrix at `omega` with the given loss factors (1 / unloaded Q).
ChainMatrix TankChainMatrix(const TankNetwork& network, double omega, double coilInverseQ,
                            double capacitorInverseQ);

// What the parts carry with the load `zLoad` (ohms) taking `watts`: the lossless network walked
// from the load back to the plate. Volts are peak, amperes rms; 0 for a part the network lacks.
struct NetworkStresses {
    double c1PeakVolts = 0;
    double midPeakVolts = 0;  // across C2 (with C3 where it stands at the midpoint)
    double l1Amperes = 0;
    double l2Amperes = 0;
};
NetworkStresses WalkFromLoad(const TankNetwork& network, double omega, Complex zLoad, double watts);

struct SParameters {
    Complex s11, s21, s12, s22;
};

// Both ports referred to the resistance z0; port 2 seen from the output side itself.
SParameters ToSParameters(const ChainMatrix& t, double z0);

}  // namespace varo
