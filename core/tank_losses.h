#pragma once

#include <array>
#include <optional>

#include "core/design_state.h"
#include "core/tank_network.h"

namespace varo {

// Unloaded Q of the real parts, as a user would measure or look them up.
struct TankQ {
    double coil = 300;
    double capacitor = 2000;
    // A wound coil's own Q (L1, L2), worked out from its winding; it stands for `coil` there.
    std::array<std::optional<double>, 2> wound{};

    double CoilQ(TankPart coilPart) const;
};

// A Q a part can have: above 0 and finite (an infinite Q would hide every loss).
bool IsUsableQ(double q);

// The network with real losses at the operating frequency, driven so that the load receives
// the design's RF power. Efficiency is load power over the power the network takes in; its
// loss in dB is the same ratio inverted. The power taken in is the load power plus every
// part's dissipation.
struct TankLosses {
    TankQ q;  // the Q values analysed with
    double efficiencyPercent = 0;
    double lossDb = 0;
    std::array<double, kTankParts> watts{};  // by TankPart; 0 for a part the design lacks
    double inputWatts = 0;
    double loadWatts = 0;
    double zInReal = 0;  // the impedance the lossy network presents to the plate
    double zInImag = 0;

    double Watts(TankPart part) const { return watts[static_cast<int>(part)]; }
};

// Analyses BuildTankNetwork(state) with the given Q values (both above 0). Throws
// ArithmeticFault on a Q of 0 or less, a zero load or a network that takes in no power.
TankLosses AnalyzeTankLosses(const DesignState& state, TankQ q);

// The same for any network and load impedance (ohms), the load taking `loadWatts` at `omega`.
// Throws ArithmeticFault also for a load that takes no power.
TankLosses AnalyzeNetworkLosses(const TankNetwork& network, double omega, Complex zLoad,
                                double loadWatts, TankQ q);

}  // namespace varo
