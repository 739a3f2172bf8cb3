#include "session/last_session.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/file_size_limit.h"
#include "support/temp_folder.h"
#include "support/time_limit.h"

namespace varo {
namespace {

using namespace std::chrono_literals;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;
using Kind = ScriptedDialogs::Event::Kind;

// The eight values in file order: frequency, plate, intermediate, load, Q, swing, spare, power.
struct Inputs {
    float frequency, plateR, intermediateR, loadR, piQ, peakSwing, spare, rfPower;
    bool operator==(const Inputs&) const = default;
};

Inputs InputsOf(const DesignState& s) {
    return {s.frequency, s.plateR,    s.intermediateR, s.loadR,
            s.piQ,       s.peakSwing, s.spare,         s.rfPower};
}

void Fill(DesignState& s, const Inputs& in) {
    s.frequency = in.frequency;
    s.plateR = in.plateR;
    s.intermediateR = in.intermediateR;
    s.loadR = in.loadR;
    s.piQ = in.piQ;
    s.peakSwing = in.peakSwing;
    s.spare = in.spare;
    s.rfPower = in.rfPower;
}

std::ostream& operator<<(std::ostream& out, const Inputs& in) {
    return out << in.frequency << ' ' << in.plateR << ' ' << in.intermediateR << ' ' << in.loadR
               << ' ' << in.piQ << ' ' << in.peakSwing << ' ' << in.spare << ' ' << in.rfPower;
}

// What the reader starts from: odd values everywhere, so defaults and untouched fields show.
constexpr Inputs kBefore{1, 2, 3, 4, 5, 11, 22, 33};
// The defaults, with swing, spare and power as they were.
constexpr Inputs kDefaults{3900000, 1500, 300, 50, 12, 11, 22, 33};

const char kFullFile[] =
    "VARO last-session file\r\n\r\n11/15/2026\r\n\r\n"
    "Frequency: 7150000\r\nPlate impedance: 2000\r\nIntermediate impedance: 250\r\n"
    "Load impedance: 75\r\nPI-section Q: 10\r\nPeak plate voltage swing: 2500\r\n"
    "Spare: 0\r\nRF power: 1000\r\n\r\n";

TEST(WriteLastSession, WritesTheThirteenLabelledLines) {
    TempFolder folder;
    DesignState state;
    Fill(state, {29700000, 2222.5, 312.5, 75, 0.5, -3, 7, 1000});
    ScriptedDialogs dialogs;
    const std::string path = SessionFilePath(folder.str());
    ASSERT_EQ(path, folder.str() + "/VARO.CFG");
    ASSERT_TRUE(WriteLastSession(state, path, dialogs, "11/15/2026"));
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(ReadBytes(path),
              "VARO last-session file\r\n\r\n11/15/2026\r\n\r\n"
              "Frequency: 2.97E+07\r\n"
              "Plate impedance: 2222.5\r\n"
              "Intermediate impedance: 312.5\r\n"
              "Load impedance: 75\r\n"
              "PI-section Q: .5\r\n"
              "Peak plate voltage swing: -3\r\n"
              "Spare: 0\r\n"
              "RF power: 1000\r\n\r\n");
    EXPECT_EQ(state.spare, 0.0f);
}

TEST(WriteLastSession, AFailureBeepsShowsTheMessageAndKeepsThePreviousFile) {
    TempFolder folder;
    const std::string path = SessionFilePath(folder.str());
    const std::string missing = folder.File("missing/VARO.CFG");
    const struct {
        std::string path;
        std::size_t diskRoom;
        std::string detail;
    } cases[] = {
        {path, 0, path + ": File too large"},
        {missing, SIZE_MAX, missing + ": No such file or directory"},
    };
    for (const auto& c : cases) {
        WriteBytes(path, kFullFile);
        DesignState state;
        Fill(state, {3900000, 1500, 300, 50, 12, 2500, 0, 1000});
        ScriptedDialogs dialogs;
        {
            const FileSizeLimit disk(c.diskRoom);
            EXPECT_FALSE(WriteLastSession(state, c.path, dialogs, "11/15/2026")) << c.path;
        }
        ASSERT_EQ(dialogs.events().size(), 2u) << c.path;
        EXPECT_EQ(dialogs.events()[0].kind, Kind::Beep);
        EXPECT_EQ(dialogs.events()[1].kind, Kind::Message);
        EXPECT_EQ(dialogs.events()[1].text, "The Last-Session file was not written correctly.");
        EXPECT_EQ(dialogs.events()[1].title, kProgramTitle);
        EXPECT_EQ(dialogs.events()[1].detail, c.detail);
        EXPECT_EQ(ReadBytes(path), kFullFile);
    }
}

Inputs ReadFrom(const std::string& bytes) {
    TempFolder folder;
    const std::string path = SessionFilePath(folder.str());
    WriteBytes(path, bytes);
    DesignState state;
    Fill(state, kBefore);
    state.genMultiplier = 5;
    ReadLastSession(state, path);
    EXPECT_EQ(state.genMultiplier, 1.0f);
    return InputsOf(state);
}

TEST(ReadLastSession, TakesUsefulLinesByPositionOnly) {
    const struct {
        const char* name;
        std::string bytes;
        Inputs expected;
    } cases[] = {
        {"as written", kFullFile, {7150000, 2000, 250, 75, 10, 2500, 0, 1000}},
        {"comments and blanks anywhere, also before the header",
         "* saved by hand\r\n\r\nVARO last-session file\r\n*\r\n11/15/2026\r\n"
         "Frequency: 7e6\r\n\r\n* plate next\r\nPlate impedance: 2k\r\n3,5E2\r\n*\r\n"
         "Load impedance: 50\r\nPI-section Q: 12\r\n\r\n\r\n*\r\nswing: 2500\r\nSpare: 0\r\n"
         "RF power: 1000\r\n",
         {7000000, 2000, 350, 50, 12, 2500, 0, 1000}},
        {"a line that begins with blanks and then * is not a comment",
         "header\r\ndate\r\n  * 7e6\r\n1\r\n2\r\n3\r\n4\r\n",
         {7000000, 1, 2, 3, 4, 11, 22, 33}},
        // The parser keeps the first 12 characters, "Frequency 7e": so 7, not 7 MHz.
        {"no colon hands the whole line to the parser; any label will do",
         "header\r\ndate\r\nFrequency 7e6\r\nxyz: 1k\r\n: 200\r\nLoad 8\r\nQ: 9\r\n",
         {7, 1000, 200, 8, 9, 11, 22, 33}},
        {"the text after the first colon only",
         "a:b\r\nc:d\r\nf: 1:2\r\n2\r\n3\r\n4\r\n5\r\n",
         {12, 2, 3, 4, 5, 11, 22, 33}},
        {"the older five-value form leaves swing, spare and power alone",
         "VARO last-session file\r\n\r\n1/2/1999\r\n\r\nFrequency: 3500000\r\n"
         "Plate impedance: 1800\r\nIntermediate impedance: 200\r\nLoad impedance: 50\r\n"
         "PI-section Q: 15\r\n",
         {3500000, 1800, 200, 50, 15, 11, 22, 33}},
        {"values already read stay when the file ends early",
         "h\r\nd\r\n7e6\r\n2000\r\n",
         {7000000, 2000, 300, 50, 12, 11, 22, 33}},
        {"fewer than three useful lines keep every default", "VARO last-session file\r\n11/15\r\n",
         kDefaults},
        {"lone LF and lone CR end lines too",
         "h\nd\r7e6\n2000\r250\n75\n10\r2500\n0\n1000",
         {7000000, 2000, 250, 75, 10, 2500, 0, 1000}},
        {"nothing after the tenth useful line is read",
         "h\r\nd\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n",
         {1, 2, 3, 4, 5, 6, 7, 8}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ReadFrom(c.bytes), c.expected) << c.name;
}

// No file, or none that can be read as one, ends the read at once and silently.
TEST(ReadLastSession, AnythingButARegularFileGivesTheDefaultsAtOnce) {
    TempFolder folder;
    testing::MakePipe(folder.File("pipe"));
    for (const std::string& path :
         {folder.File("none"), folder.File("pipe"), std::string("/dev/zero")}) {
        DesignState state;
        Fill(state, kBefore);
        state.genMultiplier = 5;
        EXPECT_TRUE(testing::FinishesWithin(2s, [&] { ReadLastSession(state, path); })) << path;
        EXPECT_EQ(InputsOf(state), kDefaults) << path;
        EXPECT_EQ(state.genMultiplier, 1.0f);
    }
}

}  // namespace
}  // namespace varo
