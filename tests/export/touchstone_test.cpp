#include "export/touchstone.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "platform/dialogs.h"
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
    const struct {
        std::string name;
        const char* message;
    } cases[] = {
        {"net.S1P", nullptr},
        {"net.s2p.txt", "A Touchstone file name ends in .s2p (two-port) or .s1p (one-port)"},
        {"missing/net.s2p", "We could not write the Touchstone file"},
    };
    for (const auto& c : cases) {
        ScriptedDialogs dialogs;
        EXPECT_EQ(WriteTouchstoneFile(*state, folder.File(c.name), dialogs), !c.message);
        EXPECT_EQ(dialogs.messages(),
                  c.message ? std::vector<std::string>{c.message} : std::vector<std::string>{});
    }
    EXPECT_EQ(ReadBytes(folder.File("net.S1P")), TouchstoneText(*state, TouchstoneKind::OnePort));
}

}  // namespace
}  // namespace varo
