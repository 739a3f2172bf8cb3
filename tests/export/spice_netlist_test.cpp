#include "export/spice_netlist.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "export/as_built_design.h"
#include "export/design_cases.h"
#include "export/external_tools.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::HandDesign;
using testing::LSection;

std::string Head(const std::string& intermediate) {
    return "* VARO pi-L network: 3500000 Hz, plate load 2000 ohms, load 50 ohms\r\n"
           "* Intermediate " +
           intermediate +
           " ohms, pi-section Q 12, peak plate swing 2500 V, RF power 1000 W\r\n"
           "* Rgen is the generator resistance; Vgen is the peak plate swing times "
           "(Rgen + plate load) / plate load\r\n";
}

const char kPiSection[] =
    "Rgen gen plate 3000\r\n"
    "C1 plate 0 4.7E-09\r\n"
    "L1 plate mid 2.2E-06\r\n"
    "C2 mid 0 1.5E-08\r\n";
const char kTail[] =
    ".ac dec 1000 1750000 14000000\r\n"
    ".end\r\n";

TEST(SpiceNetlist, TextForEachLSection) {
    const struct {
        LSection section;
        std::string expected;
    } cases[] = {
        {LSection::StepsUp, Head("25") +
                                "* C3 across the load is left out of VARO's own analysis, so "
                                "VARO's curves differ from this simulation\r\n"
                                "Vgen gen 0 DC 0 AC 6250\r\n" +
                                kPiSection +
                                "L2 mid load 4.7E-07\r\n"
                                "C3 load 0 1E-10\r\n"
                                "Rload load 0 50\r\n" +
                                kTail},
        {LSection::None,
         Head("50") + "Vgen gen 0 DC 0 AC 6250\r\n" + kPiSection + "Rload mid 0 50\r\n" + kTail},
        {LSection::StepsDown, Head("100") + "Vgen gen 0 DC 0 AC 6250\r\n" + kPiSection +
                                  "C3 mid 0 1E-10\r\n"
                                  "L2 mid load 4.7E-07\r\n"
                                  "Rload load 0 50\r\n" +
                                  kTail},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SpiceNetlistText(HandDesign(c.section)), c.expected);
}

// An amplitude of 0 would simulate nothing.
TEST(SpiceNetlist, WithoutASwingTheSourceDrivesOneVolt) {
    DesignState state = HandDesign(LSection::None);
    state.peakSwing = 0;
    const std::string text = SpiceNetlistText(state);
    EXPECT_NE(text.find("* No peak plate swing entered: Vgen drives 1 V\r\n"
                        "Vgen gen 0 DC 0 AC 1\r\n"),
              std::string::npos);
}

TEST(SpiceNetlist, WritesTheFileOrSaysItCouldNot) {
    testing::TempFolder folder;
    const DesignState good = HandDesign(LSection::StepsDown);
    DesignState noPlate = good;
    noPlate.plateR = 0;  // the source amplitude divides by it
    const struct {
        const DesignState* state;
        std::string path;
        bool written;
    } cases[] = {
        {&good, folder.File("net.cir"), true},
        {&good, folder.File("missing/net.cir"), false},
        {&noPlate, folder.File("partial.cir"), false},
    };
    for (const auto& c : cases) {
        ScriptedDialogs dialogs;
        EXPECT_EQ(WriteSpiceNetlist(*c.state, c.path, dialogs), c.written) << c.path;
        const std::vector<std::string> failure{"We could not write the SPICE netlist file"};
        EXPECT_EQ(dialogs.messages(), c.written ? std::vector<std::string>{} : failure);
    }
    EXPECT_EQ(testing::ReadBytes(folder.File("net.cir")), SpiceNetlistText(good));
    EXPECT_EQ(testing::ReadBytes(folder.File("partial.cir")).substr(0, 2), "* ");
}

// ---- Simulation by ngspice ------------------------------------------------------------------

// An AC analysis from ngspice's ASCII raw file: the frequencies and every node's voltage.
struct AcResult {
    std::vector<double> frequency;
    std::map<std::string, std::vector<std::complex<double>>> voltage;  // "v(load)" ...
};

AcResult ReadAsciiRaw(const std::string& text) {
    std::istringstream in(text.substr(text.find("\nVariables:") + 11));
    std::vector<std::string> names;  // one line each: index, name, kind and more
    for (std::string line; std::getline(in, line) && line.find("Values:") == std::string::npos;) {
        std::istringstream fields(line);
        std::string index, name;
        if (fields >> index >> name) names.push_back(name);
    }
    // Each point: its index, then "re,im" for every variable. Read with strtod, which takes
    // the subnormal numbers ngspice may write.
    AcResult result;
    for (std::string index; in >> index;) {
        for (const std::string& name : names) {
            std::string pair;
            in >> pair;
            char* imaginary = nullptr;
            const double re = std::strtod(pair.c_str(), &imaginary);
            const double im = std::strtod(imaginary + 1, nullptr);
            if (name == "frequency")
                result.frequency.push_back(re);
            else
                result.voltage[name].push_back({re, im});
        }
    }
    return result;
}

AcResult Simulate(const testing::TempFolder& folder, const std::string& netlist) {
    const std::string raw = folder.File("ac.raw");
    EXPECT_TRUE(testing::RunsClean("cd " + folder.str() +
                                   " && SPICE_ASCIIRAWFILE=1 ngspice -b -r " + raw + " " + netlist +
                                   " > ngspice.log 2>&1"));
    return ReadAsciiRaw(testing::ReadBytes(raw));
}

// ngspice runs the file as written, and at 50 of its frequencies the transducer gain it
// simulates agrees with the program's own analysis of the same network (C3 across the load
// analysed too where the L section steps up).
TEST(SpiceNetlist, NgspiceSimulatesWhatTheAnalysisComputes) {
    if (!testing::Installed("ngspice")) GTEST_SKIP() << "ngspice is not installed";
    const struct {
        test::DesignInputs inputs;
        float genMultiplier;
    } cases[] = {
        {test::kReferenceDesign, 1},       // the default design: steps down
        {{14e6f, 3000, 200, 50, 15}, 2},   // steps down, generator twice the plate load
        {{3.8e6f, 2000, 50, 50, 12}, 1},   // no L section
        {{7e6f, 2500, 25, 75, 12}, 0.5f},  // steps up
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.inputs.intermediateR);
        const auto state = testing::AsBuiltDesign(c.inputs, c.genMultiplier);
        ASSERT_TRUE(state);
        state->peakSwing = 2500;

        testing::TempFolder folder;
        ScriptedDialogs dialogs;
        ASSERT_TRUE(WriteSpiceNetlist(*state, folder.File("net.cir"), dialogs));
        const AcResult ac = Simulate(folder, "net.cir");
        const bool lSection = c.inputs.intermediateR != c.inputs.loadR;
        const auto& load = ac.voltage.at(lSection ? "v(load)" : "v(mid)");
        const auto& source = ac.voltage.at("v(gen)");
        ASSERT_GE(ac.frequency.size(), 50u);
        const double rs = static_cast<double>(c.genMultiplier) * c.inputs.plateR;
        for (std::size_t k = 0; k < 50; ++k) {
            const std::size_t i = k * (ac.frequency.size() - 1) / 49;
            LadderResult reference;
            AnalyzeLadder(*state, 0, 0, static_cast<float>(ac.frequency[i]), reference);
            const double simulated = 20 * std::log10(std::abs(load[i]) / std::abs(source[i])) +
                                     10 * std::log10(4 * rs / c.inputs.loadR);
            EXPECT_NEAR(simulated, reference.transmissionDb, 0.01) << ac.frequency[i];
        }
    }
}

}  // namespace
}  // namespace varo
