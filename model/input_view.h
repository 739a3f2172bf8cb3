#pragma once

#include <optional>
#include <vector>

#include "core/chain_matrix.h"
#include "core/design_state.h"
#include "model/load_range.h"

namespace varo {

// The impedance the plate sees through the network as it now stands, and its reflection
// against the plate load.
struct InputPoint {
    double frequency = 0;
    Complex z;
    Complex gamma;
};

// What the tube sees: the network as built (C3 across the load included where the L section
// steps up, as the exports build it), worked out afresh for every knob step and nudge.
struct InputView {
    double referenceOhms = 0;  // the plate load
    bool c3AcrossLoad = false;
    std::vector<Complex> sweepGamma;    // one per swept frequency, NaN where not analysable
    InputPoint operating;               // at the design frequency
    std::vector<InputPoint> harmonics;  // 2nd to 5th
    // The load range's loads (each at its own frequency) as the plate sees them through the
    // network as it stands, not re-tuned for them.
    std::vector<InputPoint> loads;

    // The plate's peak swing: the design's, or where it has none, the one its RF power
    // develops across the plate load. None without either.
    std::optional<double> plateSwing;
    // For that swing: the plate current's fundamental (peak amperes) and the power the
    // lossless network hands the load.
    std::optional<double> plateCurrent;
    std::optional<double> loadWatts;

    double Vswr() const;
};

// None when the network cannot be analysed at the design frequency (no plate load, a part out
// of range).
std::optional<InputView> InputViewOf(const DesignState& state,
                                     const std::vector<float>& sweepFrequencies,
                                     const LoadRangeResult* loadRange);

}  // namespace varo
