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
#include "support/external_tools.h"
#include "support/ngspice.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::HandDesign;
using testing::LSection;

std::string Head(const char* intermediate, const char* swing) {
    return std::string("* VARO pi-L network: 3500000 Hz, plate load 2000 ohms, load 50 ohms\r\n") +
           "* Intermediate " + intermediate + " ohms, pi-section Q 12, peak plate swing " + swing +
           " V, RF power 1000 W\r\n"
           "* Rgen is the generator resistance; Vgen is the peak plate swing times "
           "(Rgen + plate load) / plate load\r\n";
}

const char kPiSection[] =
    "Rgen gen plate 3000\r\n"
    "C1 plate 0 4.7E-09\r\n"
    "L1 plate mid 2.2E-06\r\n"
    "C2 mid 0 1.5E-08\r\n";
const char kTail[] = ".ac dec 1000 1750000 14000000\r\n.end\r\n";

// Without a swing the source drives 1 V: an amplitude of 0 would simulate nothing.
TEST(SpiceNetlist, TextForEachLSection) {
    const struct {
        LSection section;
        float peakSwing;
        std::string expected;
    } cases[] = {
        {LSection::StepsUp, 2500,
         Head("25", "2500") +
             "* C3 across the load is left out of VARO's own analysis, so VARO's curves differ "
             "from this simulation\r\nVgen gen 0 DC 0 AC 6250\r\n" +
             kPiSection + "L2 mid load 4.7E-07\r\nC3 load 0 1E-10\r\nRload load 0 50\r\n" + kTail},
        {LSection::None, 0,
         Head("50", "0") + "* No peak plate swing entered: Vgen drives 1 V\r\n" +
             "Vgen gen 0 DC 0 AC 1\r\n" + kPiSection + "Rload mid 0 50\r\n" + kTail},
    };
    for (const auto& c : cases) {
        DesignState state = HandDesign(c.section);
        state.peakSwing = c.peakSwing;
        EXPECT_EQ(SpiceNetlistText(state), c.expected);
    }
}

// At 50 frequencies the transducer gain ngspice simulates agrees with the program's analysis.
TEST(SpiceNetlist, NgspiceSimulatesWhatTheAnalysisComputes) {
    if (!testing::NgspiceIsInstalled()) GTEST_SKIP() << "ngspice is not installed";
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
        state->peakSwing = 2500;

        testing::TempFolder folder;
        ScriptedDialogs dialogs;
        ASSERT_TRUE(WriteSpiceNetlist(*state, folder.File("net.cir"), dialogs));
        auto ac = testing::Simulate(folder);
        const bool lSection = c.inputs.intermediateR != c.inputs.loadR;
        const auto& load = ac[lSection ? "v(load)" : "v(mid)"];
        const auto& frequency = ac["frequency"];
        ASSERT_GE(frequency.size(), 50u);
        const double rs = static_cast<double>(c.genMultiplier) * c.inputs.plateR;
        for (std::size_t k = 0; k < 50; ++k) {
            const std::size_t i = k * (frequency.size() - 1) / 49;
            LadderResult reference;
            AnalyzeLadder(*state, 0, 0, static_cast<float>(frequency[i].real()), reference);
            const double simulated = 20 * std::log10(std::abs(load[i] / ac["v(gen)"][i])) +
                                     10 * std::log10(4 * rs / c.inputs.loadR);
            EXPECT_NEAR(simulated, reference.transmissionDb, 0.01) << frequency[i].real();
        }
    }
}

}  // namespace
}  // namespace varo
