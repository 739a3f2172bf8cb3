#include "core/design_state.h"

#include <cmath>

namespace varo {

void InitialiseConstants(DesignState& state) {
    state.pi = 4.0 * std::atan(1.0);
}

}  // namespace varo
