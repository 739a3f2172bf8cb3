#include "export/sweep_csv.h"

#include <gtest/gtest.h>

namespace varo {
namespace {

// The header names the reference; each row keeps the table's own signs: the usual impedance
// angle as it stands (positive, inductive) and the return as the plot's negative figure.
TEST(SweepCsv, WritesTheTableAsItIsSigned) {
    SweepTable sweep;
    sweep.frequency = {1.8e6f, 5e6f};
    sweep.transmissionDb = {-0.5f, -4.125f};
    sweep.phaseDeg = {-170, 12.5f};
    sweep.returnDb = {-20, -2.125f};
    sweep.vswr = {1.25f, 8.5f};
    sweep.zMagnitude = {1500, 185};
    sweep.zAngleDeg = {-3.5f, 9.25f};
    sweep.referenceOhms = 1500;
    FileText text;
    BuildSweepCsv(sweep, text);
    EXPECT_EQ(text.str(),
              "Frequency (Hz),Transmission (dB),Phase (deg),Return re 1500 ohms (dB),"
              "VSWR re 1500 ohms,|Zin| (ohms),Z angle (deg)\r\n"
              "1800000,-0.5,-170,-20,1.25,1500,-3.5\r\n"
              "5000000,-4.125,12.5,-2.125,8.5,185,9.25\r\n");
}

}  // namespace
}  // namespace varo
