#include "model/design_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "platform/textfile.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

void SetInputs(Design& design) {
    DesignState& s = design.state();
    s.frequency = 7.15e6f;
    s.plateR = 1500;
    s.intermediateR = 300;
    s.loadR = 50;
    s.piQ = 12.1f;
    s.peakSwing = 2500;
    s.rfPower = 1000;
    s.genMultiplier = 1;
}

// The file of a design with inputs only, worked out by hand: every key in its fixed place, the
// single-precision inputs in their shortest decimals (12.1, not 12.100000381469727).
TEST(DesignFile, TheTextOfADesignWithInputsOnly) {
    Design design;
    SetInputs(design);
    const std::string expected = R"({
  "format": "VARO design",
  "version": 1,
  "inputs": {
    "frequency": 7150000.0,
    "plateR": 1500.0,
    "intermediateR": 300.0,
    "loadR": 50.0,
    "piQ": 12.1,
    "peakSwing": 2500.0,
    "spare": 0.0,
    "rfPower": 1000.0,
    "genMultiplier": 1.0
  },
  "losses": null,
  "woundCoils": {
    "L1": null,
    "L2": null
  },
  "useWoundCoilQ": false,
  "bandPlan": null,
  "loadRange": null
}
)";
    EXPECT_EQ(DesignFileText(DesignFileOf(design)), expected);
}

// Everything a design is made of comes back as it was saved, bit for bit.
TEST(DesignFile, EverySettingComesBackAsSaved) {
    Design design;
    SetInputs(design);
    design.SetLossQ(TankQ{250, 1500});
    design.SetWoundCoil(TankPart::L2, WoundCoil{{0.0381, 0.0508, 9.7, 0.00129}, 2.5e-6f});
    design.UseWoundCoilQ(true);
    BandPlanInputs plan;
    plan.tubeCapacitance = 5e-12;
    plan.strayCapacitance = 10e-12;
    plan.tune = {10e-12, 150e-12};
    plan.load = {30e-12, 3000e-12};
    plan.bands = {{"160 m", 1.8e6, 2.0e6, 0, 470e-12}, {"20 m", 14e6, 14.35e6, 0, 0}};
    design.SetBandPlanInputs(plan);
    LoadRangeRequest request;
    request.kind = LoadRangeRequest::Kind::Measured;
    request.measuredFrequencies = {7e6, 7.1e6};
    request.measuredLoads = {{37.1, -22.5}, {41, 0.3}};
    design.SetLoadRange(request);

    const std::string text = DesignFileText(DesignFileOf(design));
    Design opened;
    ApplyDesignFile(ParseDesignFile(text), opened);
    EXPECT_EQ(DesignFileText(DesignFileOf(opened)), text);
    EXPECT_EQ(opened.state().piQ, 12.1f);
    ASSERT_TRUE(opened.woundCoil(TankPart::L2));
    EXPECT_EQ(opened.woundCoil(TankPart::L2)->winding.turns, 9.7);
    EXPECT_EQ(opened.bandPlanInputs()->bands[0].loadPadder, 470e-12);
    EXPECT_EQ(opened.loadRangeRequest()->measuredLoads[1].im, 0.3);
}

// A file that cannot be taken says why and leaves the design as it was.
TEST(DesignFile, WhatCannotBeTakenSaysWhy) {
    Design design;
    SetInputs(design);
    std::string good = DesignFileText(DesignFileOf(design));
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string text = good;
        text.replace(text.find(from), from.size(), to);
        return text;
    };
    const struct {
        std::string text;
        std::string message;
    } cases[] = {
        {"{\"format\": \"VARO design\", ",
         "The design file is damaged: parse error at line 1, column 27: syntax error while "
         "parsing object key - unexpected end of input; expected string literal"},
        {"[1, 2]", "This is not a VARO design file."},
        {with("\"VARO design\"", "\"VARO session\""), "This is not a VARO design file."},
        {with("\"version\": 1", "\"version\": 2"),
         "This design file was written by a newer VARO (format version 2); this VARO reads "
         "format version 1."},
        {with("\"version\": 1", "\"version\": \"1\""),
         "The design file is damaged: \"version\" is not a version number."},
        {with("    \"piQ\": 12.1,\n", ""),
         "The design file is damaged: \"inputs.piQ\" is missing."},
        {with("\"plateR\": 1500.0", "\"plateR\": \"1.5k\""),
         "The design file is damaged: \"inputs.plateR\" is not a number."},
        {with("\"loadR\": 50.0", "\"loadR\": 0"),
         "The design file is damaged: \"inputs.loadR\" must be above 0."},
        {with("\"rfPower\": 1000.0", "\"rfPower\": 1e39"),
         "The design file is damaged: \"inputs.rfPower\" is out of range."},
        {with("\"losses\": null", "\"losses\": {\"coilQ\": -3, \"capacitorQ\": 2000}"),
         "The design file is damaged: \"losses.coilQ\" must be above 0."},
        {with("\"useWoundCoilQ\": false", "\"useWoundCoilQ\": 0"),
         "The design file is damaged: \"useWoundCoilQ\" is neither true nor false."},
        {with("\"loadRange\": null",
              "\"loadRange\": {\"kind\": \"swrCircle\", \"swr\": 2, \"phases\": 2.5, "
              "\"impedance\": [50, 0], \"measured\": []}"),
         "The design file is damaged: \"loadRange.phases\" is not a whole number from 1 to "
         "3600."},
        {with("\"loadRange\": null",
              "\"loadRange\": {\"kind\": \"swrCircle\", \"swr\": 2, \"phases\": 36, "
              "\"impedance\": [50, 0], \"measured\": [[7e6, 50]]}"),
         "The design file is damaged: \"loadRange.measured[0]\" is not a list of 3 numbers."},
    };
    for (const auto& c : cases) {
        try {
            ApplyDesignFile(ParseDesignFile(c.text), design);
            ADD_FAILURE() << "taken: " << c.text;
        } catch (const DesignFileError& error) {
            EXPECT_EQ(error.what(), c.message);
        }
        EXPECT_EQ(DesignFileText(DesignFileOf(design)), good);
    }
}

// Read as the program's other readers read: a pipe is refused at once, never waited on.
TEST(DesignFile, ReadWithoutWaiting) {
    testing::TempFolder folder;
    const std::string pipe = folder.File("amp.varo");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THROW(ReadDesignFile(pipe), FileError);
    Design design;
    SetInputs(design);
    const std::string path = folder.File("saved.varo");
    SaveDesignFile(design, path);
    EXPECT_EQ(ReadDesignFile(path).inputs.frequency, 7.15e6f);
}

}  // namespace
}  // namespace varo
