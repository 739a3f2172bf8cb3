#pragma once

#include <optional>
#include <string>

#include "core/chain_matrix.h"
#include "core/design_state.h"

namespace varo {

// The capacitors a frequency needs with a design's coils: C1 the whole plate-node capacitance
// (a tube and strays included), `tune` the tuning capacitor's share of it and `load` the
// loading capacitor's (C2, or C2 + C3 where C3 stands at the midpoint); a band plan takes its
// padders and the tube off those shares. C3 is given where it stands apart, across the load,
// and stays as designed.
struct Tuning {
    double frequency = 0;
    double c1 = 0;
    double tune = 0;
    double load = 0;
    std::optional<double> c3;
    bool solvable = true;  // false: no capacitance makes these coils present the plate load
    std::string problem;   // why not, and by how much
};

// Which of the two capacitor pairs that match with fixed coils the design itself is: the one
// with the larger C1 when its input and output Q multiply to more than 1.
bool CentreBranch(const DesignState& design);

// The capacitors that make the design's coils present the plate load at `frequency` when the
// load is `zLoad` ohms, on the branch `highBranch` (see CentreBranch).
Tuning RetuneFor(const DesignState& design, double frequency, bool highBranch, Complex zLoad);

// The same for the design's own load resistance.
Tuning RetuneAt(const DesignState& design, double frequency, bool highBranch);

}  // namespace varo
