#include "session/last_session.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

#include "platform/dialogs.h"
#include "platform/file_size_limit.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::ReadBytes;
using testing::TempFolder;

// The eight values in file order.
using Inputs = std::array<float, 8>;
constexpr std::array<float DesignState::*, 8> kFields{
    &DesignState::frequency, &DesignState::plateR, &DesignState::intermediateR,
    &DesignState::loadR,     &DesignState::piQ,    &DesignState::peakSwing,
    &DesignState::spare,     &DesignState::rfPower};

void SetInputs(DesignState& state, const Inputs& values) {
    for (std::size_t i = 0; i < values.size(); ++i)
        state.*kFields[i] = values[i];
}

// A full disk stands for every write failure: a beep, a message, the file as it was.
TEST(WriteLastSession, WritesTheThirteenLabelledLinesOrBeepsAndKeepsThePreviousFile) {
    TempFolder folder;
    DesignState state;
    SetInputs(state, {29700000, 2222.5, 312.5, 75, 0.5, -3, 7, 1000});
    ScriptedDialogs dialogs;
    const std::string path = SessionFilePath(folder.str());
    ASSERT_EQ(path, folder.str() + "/VARO.CFG");
    ASSERT_TRUE(WriteLastSession(state, path, dialogs, "11/15/2026"));
    EXPECT_TRUE(dialogs.events().empty());
    const std::string written =
        "VARO last-session file\r\n\r\n11/15/2026\r\n\r\n"
        "Frequency: 2.97E+07\r\n"
        "Plate impedance: 2222.5\r\n"
        "Intermediate impedance: 312.5\r\n"
        "Load impedance: 75\r\n"
        "PI-section Q: .5\r\n"
        "Peak plate voltage swing: -3\r\n"
        "Spare: 0\r\n"
        "RF power: 1000\r\n\r\n";
    EXPECT_EQ(ReadBytes(path), written);
    EXPECT_EQ(state.spare, 0.0f);

    {
        const FileSizeLimit disk(0);
        EXPECT_FALSE(WriteLastSession(state, path, dialogs, "11/16/2026"));
    }
    ASSERT_EQ(dialogs.events().size(), 2u);
    EXPECT_EQ(dialogs.events()[0].kind, ScriptedDialogs::Event::Kind::Beep);
    EXPECT_EQ(dialogs.events()[1].text, "The Last-Session file was not written correctly.");
    EXPECT_EQ(dialogs.events()[1].title, kProgramTitle);
    EXPECT_EQ(dialogs.events()[1].detail, path + ": File too large");
    EXPECT_EQ(ReadBytes(path), written);
}

// Useful lines (neither blank nor "*" comments) count by position: two header lines, then values.
TEST(ReadLastSession, TakesUsefulLinesByPositionOnly) {
    constexpr Inputs kDefaults{3900000, 1500, 300, 50, 12, 11, 22, 33};
    const struct {
        const char* name;
        std::optional<std::string> bytes;
        Inputs expected;
    } cases[] = {
        // A pipe or a device ends the read the same way, silently.
        {"no file", std::nullopt, kDefaults},
        {"comments and blanks anywhere, also before the header",
         "* saved by hand\r\n\r\nVARO last-session file\r\n*\r\n11/15/2026\r\n"
         "Frequency: 7e6\r\n\r\n* plate next\r\nPlate impedance: 2k\r\n3,5E2\r\n*\r\n"
         "Load impedance: 50\r\nPI-section Q: 12\r\n\r\n\r\n*\r\nswing: 2500\r\nSpare: 0\r\n"
         "RF power: 1000\r\n",
         {7000000, 2000, 350, 50, 12, 2500, 0, 1000}},
        // Five values only, the older form: swing, spare and power stay.
        {"a line that begins with blanks and then * is not a comment",
         "header\r\ndate\r\n  * 7e6\r\n1\r\n2\r\n3\r\n4\r\n",
         {7000000, 1, 2, 3, 4, 11, 22, 33}},
        // The parser keeps the first 12 characters, "Frequency 7e": so 7, not 7 MHz.
        {"no colon hands the whole line to the parser; any label will do",
         "header\r\ndate\r\nFrequency 7e6\r\nxyz: 1k\r\n: 200\r\nLoad 8\r\nQ: 9:2\r\n",
         {7, 1000, 200, 8, 92, 11, 22, 33}},  // the text after the first colon only: "9:2"
        {"fewer than three useful lines keep every default", "h\r\n11/15\r\n", kDefaults},
        {"nothing after the tenth useful line is read",
         "h\r\nd\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n",
         {1, 2, 3, 4, 5, 6, 7, 8}},
    };
    for (const auto& c : cases) {
        TempFolder folder;
        const std::string path = SessionFilePath(folder.str());
        if (c.bytes) testing::WriteBytes(path, *c.bytes);
        DesignState state;
        SetInputs(state, {1, 2, 3, 4, 5, 11, 22, 33});
        state.genMultiplier = 5;
        ReadLastSession(state, path);
        EXPECT_EQ(state.genMultiplier, 1.0f) << c.name;
        for (std::size_t i = 0; i < kFields.size(); ++i)
            EXPECT_EQ(state.*kFields[i], c.expected[i]) << c.name << ", value " << i;
    }
}

}  // namespace
}  // namespace varo
