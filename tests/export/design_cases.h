#pragma once

#include "core/design_state.h"

namespace varo::testing {

enum class LSection { StepsUp, None };

// A 3.5 MHz design with round values, so that expected files can be written by hand; the
// intermediate resistance picks the L section.
inline DesignState HandDesign(LSection section) {
    DesignState s;
    s.frequency = 3500000;
    s.plateR = 2000;
    s.genMultiplier = 1.5f;
    s.loadR = 50;
    s.piQ = 12;
    s.peakSwing = 2500;
    s.rfPower = 1000;
    s.C1 = 4.7e-9f;
    s.L1 = 2.2e-6f;
    s.C2 = 1.5e-8f;
    s.L2 = 4.7e-7f;
    s.C3 = 1e-10f;

    s.sweepStart = 1750000;
    s.sweepStop = 14000000;
    s.sweepIntervals = 2000;
    s.graphDbPerDiv = 10;
    s.graphDivisions = 6;
    s.plotFloorDb = -60;
    s.elementType[1] = kShuntCapacitor;
    s.elementC[1] = s.C1;
    s.elementType[2] = kSeriesInductor;
    s.elementL[2] = s.L1;
    s.elementType[3] = kShuntCapacitor;
    s.elementC[3] = s.C2;
    s.elementType[4] = kSeriesInductor;
    s.elementL[4] = s.L2;
    switch (section) {
        case LSection::StepsUp:
            s.intermediateR = 25;
            s.elementC[5] = s.C3;  // its type stays 0
            s.elementCount = 5;
            break;
        case LSection::None:
            s.intermediateR = 50;
            s.L2 = 0;
            s.C3 = 0;
            s.elementCount = 3;
            break;
    }
    return s;
}

}  // namespace varo::testing
