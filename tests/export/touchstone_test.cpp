#include "export/touchstone.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "export/as_built_design.h"
#include "platform/dialogs.h"
#include "support/external_tools.h"
#include "support/recording_reporter.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::ReadBytes;
using testing::TempFolder;

// A network whose parts are all 0 is a through connection: S11 0, S21 1 at 50 ohms; and the
// 50 ohm load seen against the 2000 ohm plate load reflects (50 - 2000) / (50 + 2000).
TEST(Touchstone, TextOfAThroughConnection) {
    const auto state = test::MakeDesign({3.5e6f, 2000, 50, 50, 12});
    state->inductorQ = state->capacitorQ = 1e7f;
    state->sweepIntervals = 1;
    state->sweepFrequency[0] = 1750000;
    state->sweepFrequency[1] = 1.4e7f;
    const struct {
        TouchstoneKind kind;
        std::string afterTitle;
    } cases[] = {
        {TouchstoneKind::TwoPort,
         "! Port 1: plate side, plate load 2000 ohms\r\n"
         "! Port 2: load side, load 50 ohms\r\n"
         "! Both ports referred to 50 ohms\r\n"
         "# Hz S MA R 50\r\n"
         "1750000 0 0 1 0 1 0 0 0\r\n"
         "14000000 0 0 1 0 1 0 0 0\r\n"},
        {TouchstoneKind::OnePort,
         "! Input reflection, the load side terminated in 50 ohms, referred to the plate load\r\n"
         "# Hz S MA R 2000\r\n"
         "1750000 0.9512195122 180\r\n"
         "14000000 0.9512195122 180\r\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TouchstoneText(*state, c.kind),
                  "! VARO pi-L network: 3500000 Hz, 2000 ohms to 50 ohms, pi-section Q 12\r\n" +
                      c.afterTitle);
}

// The extension decides, in any case of letters.
TEST(Touchstone, WritesTheFileOrSaysWhyNot) {
    TempFolder folder;
    auto state = std::make_unique<DesignState>();
    state->loadR = state->plateR = 50;
    state->inductorQ = state->capacitorQ = 1e7f;
    for (const auto& [name, message] :
         {std::pair<std::string, std::string>{"net.S1P", ""},
          {"net.s2p.txt", "A Touchstone file name ends in .s2p (two-port) or .s1p (one-port)"},
          {"missing/net.s2p", "We could not write the Touchstone file"}}) {
        ScriptedDialogs dialogs;
        EXPECT_EQ(WriteTouchstoneFile(*state, folder.File(name), dialogs), message.empty());
        EXPECT_EQ(dialogs.messages().size(), message.empty() ? 0u : 1u);
        for (const std::string& said : dialogs.messages())
            EXPECT_EQ(said, message);
    }
    EXPECT_EQ(ReadBytes(folder.File("net.S1P")), TouchstoneText(*state, TouchstoneKind::OnePort));
}

const char kReader[] = R"(import sys
args = sys.argv[1:]
for s2p, s1p, plate, load, result in zip(*[iter(args)] * 5):
    two, one = skrf.Network(s2p), skrf.Network(s1p)
    s = two.s
    loss = [np.max(np.abs(1 - np.abs(s[:, 0, p])**2 - np.abs(s[:, 1, p])**2)) for p in (0, 1)]
    with open(result, "w") as out:
        print(loss[0], loss[1], np.max(np.abs(s[:, 0, 1] - s[:, 1, 0])), file=out)
        two.renormalize([float(plate), float(load)])
        for row in zip(two.s_db[:, 0, 0], two.s_db[:, 1, 0], one.s_db[:, 0, 0]):
            print(*row, file=out)
)";

// Renormalised to plate load and load, S11 is the return loss and |S21|^2 the transducer gain;
// with Q 1e7 the network is reciprocal and practically lossless.
TEST(Touchstone, ScikitRfReadsWhatTheAnalysisComputes) {
    const auto python = testing::PythonWithScikitRf();
    if (!python) GTEST_SKIP() << "python3 with scikit-rf is not installed";
    const test::DesignInputs cases[] = {
        test::kReferenceDesign,    // the default design: steps down
        {7e6f, 2500, 25, 75, 12},  // steps up, C3 across the load analysed too
    };
    TempFolder folder;
    testing::WriteBytes(folder.File("read.py"), std::string(testing::kScikitRfImport) + kReader);
    std::string commandLine = *python + " " + folder.File("read.py");
    std::vector<std::unique_ptr<DesignState>> states;
    for (const auto& c : cases) {
        auto& state = states.emplace_back(testing::AsBuiltDesign(c));
        test::RecordingReporter reporter;
        ASSERT_TRUE(SweepRoutine(*state, reporter));

        const std::string stem = folder.File(std::to_string(states.size()));
        ScriptedDialogs dialogs;
        ASSERT_TRUE(WriteTouchstoneFile(*state, stem + ".s2p", dialogs));
        ASSERT_TRUE(WriteTouchstoneFile(*state, stem + ".s1p", dialogs));
        commandLine += " " + stem + ".s2p " + stem + ".s1p " + std::to_string(c.plateR) + " " +
                       std::to_string(c.loadR) + " " + stem + ".txt";
    }
    ASSERT_TRUE(testing::RunsClean(commandLine + " > /dev/null 2>&1"));

    for (std::size_t k = 0; k < states.size(); ++k) {
        SCOPED_TRACE(k);
        const DesignState& state = *states[k];
        std::ifstream read(folder.File(std::to_string(k + 1) + ".txt"));
        double lossPort1 = 1, lossPort2 = 1, reciprocity = 1;
        read >> lossPort1 >> lossPort2 >> reciprocity;
        EXPECT_LT(lossPort1, 1e-6);
        // Matched from the load side, the network dissipates its loaded Q over 1e7.
        EXPECT_LT(lossPort2, 5e-6);
        EXPECT_LT(reciprocity, 1e-9);  // the files keep 10 digits
        int points = 0;
        for (double s11, s21, onePort; read >> s11 >> s21 >> onePort; ++points) {
            EXPECT_NEAR(s11, state.sweepReturn[points], 1e-4) << points;
            EXPECT_NEAR(s21, state.sweepTransmission[points], 1e-4) << points;
            EXPECT_NEAR(onePort, state.sweepReturn[points], 1e-4) << points;
        }
        EXPECT_EQ(points, kSweepPoints);
    }
}

}  // namespace
}  // namespace varo
