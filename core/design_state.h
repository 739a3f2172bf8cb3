#pragma once

#include <array>
#include <cstdint>
#include <numbers>

namespace varo {

// Ladder arrays are bounded at 20 positions; position 0 is never used.
inline constexpr int kLadderPositions = 21;
// Sweep arrays hold indices 0..2000 (2001 points for the standard 2000 intervals).
inline constexpr int kSweepPoints = 2001;
inline constexpr int kGridEntries = 2000;

// Element type codes of the analysis ladder (stored as single-precision values).
inline constexpr float kSeriesInductor = 1.0f;
inline constexpr float kShuntCapacitor = 4.0f;
inline constexpr float kCombinedElement = 6.0f;

// The one shared record of a design. Fields the program keeps in single precision are float;
// every calculation runs in double and is rounded on store (see StoreSingle in fault.h).
struct DesignState {
    // Four times the arctangent of 1; set here so nothing can read it unset.
    double pi = std::numbers::pi;

    // Inputs
    float frequency = 0;
    float plateR = 0;
    float intermediateR = 0;
    float loadR = 0;
    float piQ = 0;
    float peakSwing = 0;
    float rfPower = 0;
    float spare = 0;
    float genMultiplier = 0;

    // Derived by the component calculation
    float omega = 0;
    float inputQ = 0;
    float outputQ = 0;
    float xC1 = 0, xL1 = 0, xC2 = 0, xL2 = 0, xC3 = 0;
    float C1 = 0, C2 = 0, C3 = 0;
    float L1 = 0, L2 = 0;
    float piPhase = 0, lPhase = 0;

    // Stresses
    float vPlate = 0, vMid = 0, vLoad = 0;
    float iC1 = 0, iC2 = 0, iC3 = 0;

    // Analysis ladder and sweep settings
    std::int16_t elementCount = 0;
    std::array<float, kLadderPositions> elementType{};
    std::array<float, kLadderPositions> elementC{};
    std::array<float, kLadderPositions> elementL{};
    float sourceR = 0;
    float inductorQ = 0;
    float capacitorQ = 0;
    float analysisFrequency = 0;
    float sweepStart = 0;
    float sweepStop = 0;
    std::int16_t sweepIntervals = 0;
    float plotFloorDb = 0;
    std::int16_t graphDbPerDiv = 0;
    std::int16_t graphDivisions = 0;
    std::array<float, kGridEntries> gridFrequencies{};
    std::int16_t gridLastIndex = 0;

    // Sweep results
    std::array<float, kSweepPoints> sweepFrequency{};
    std::array<float, kSweepPoints> sweepTransmission{};
    std::array<float, kSweepPoints> sweepPhase{};
    std::array<float, kSweepPoints> sweepReturn{};
    std::array<float, kSweepPoints> sweepVswr{};
    std::array<float, kSweepPoints> sweepZMagnitude{};
    std::array<float, kSweepPoints> sweepZAngle{};
    std::array<float, kSweepPoints> sweepDelay{};
    std::array<float, kSweepPoints> sweepDelaySum{};
};

// Sets the program-wide constant pi (four times the arctangent of 1); the first thing a run does.
void InitialiseConstants(DesignState& state);

}  // namespace varo
