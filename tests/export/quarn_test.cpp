#include "export/quarn.h"

#include <gtest/gtest.h>

#include <string>

#include "core/fault.h"
#include "export/design_cases.h"
#include "platform/dialogs.h"
#include "platform/file_size_limit.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::HandDesign;
using testing::LSection;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;
using Kind = ScriptedDialogs::Event::Kind;

const char kDate[] = "11/15/2026";

std::string Head(const std::string& orderLine) {
    return "Quarn circuit file by VARO\r\n"
           "Untitled\r\n"
           "11/15/2026\r\n"
           "* Expansion:\r\n"
           " (Expansion)\r\n"
           "* Family, order, stages, topology, Cauer:\r\n" +
           orderLine +
           "\r\n"
           "* Width, center, Fstop normalized:\r\n"
           " 3500000  0  0 \r\n"
           "* Apass, Astop:\r\n"
           " 0  0 \r\n"
           "* Rsource, Rload, Rratio, Rstandard:\r\n"
           " 3000  50  1  2000 \r\n"
           "* Qind, Qcap:\r\n"
           " 10000000  10000000 \r\n"
           "* Gj, Hj:\r\n";
}

const char kTail[] =
    "* Lin or log, Fstart, Fstop, NrIntervals:\r\n"
    "2 1750000  1.4E+07  2000 \r\n"
    "* Graph scales:\r\n"
    "-60  0  0  6E-06  7  4000  10  6 \r\n"
    "* Limits Y/N:\r\n"
    "N\r\n"
    "* Markers Y/N:\r\n"
    "Y\r\n"
    "* Marker frequencies:\r\n"
    " 3500000  7000000  1.05E+07  1.4E+07  1.75E+07 \r\n"
    "* M-derived zeros Y/N:\r\n"
    "N\r\n";

const char kElementsHeading[] = "* Element type, L, Ltolerance, C, Ctolerance\r\n";
const char kC1L1[] =
    " 4  0  0  4.7E-09  5 \r\n"
    " 1  2.2E-06  5  0  0 \r\n";
const char kL2[] = " 1  4.7E-07  5  0  0 \r\n";

// Order 5 and five Gj, Hj lines, but C3's position has no type: no line for it.
std::string StepUpFile() {
    return Head(" 11  5  5 A 0 ") + "0   0\r\n0   0\r\n0   0\r\n0   0\r\n0   0\r\n" +
           kElementsHeading + kC1L1 + " 4  0  0  1.5E-08  5 \r\n" + kL2 + kTail;
}

TEST(QuarnFile, TextMatchesTheHandWrittenFile) {
    EXPECT_EQ(QuarnFileText(HandDesign(LSection::StepsUp), kDate), StepUpFile());
}

TEST(WriteQuarnFile, WritesSilentlyOrOnlyBeepsAndKeepsThePreviousFile) {
    TempFolder folder;
    const std::string path = folder.File("design.KVF");
    DesignState beyondArrays = HandDesign(LSection::None);
    beyondArrays.elementCount = kLadderPositions;  // one position past the last
    const struct {
        const char* name;
        DesignState state;
        std::size_t diskRoom;
        std::string detail;
    } cases[] = {
        {"disk full", HandDesign(LSection::None), 100, path + ": File too large"},
        {"ladder beyond its arrays", beyondArrays, SIZE_MAX, path + ": Index out of range"},
    };
    for (const auto& c : cases) {
        WriteBytes(path, "previous");
        ScriptedDialogs dialogs;
        {
            const FileSizeLimit disk(c.diskRoom);
            EXPECT_FALSE(WriteQuarnFile(c.state, path, dialogs, kDate)) << c.name;
        }
        ASSERT_EQ(dialogs.events().size(), 1u) << c.name;
        EXPECT_EQ(dialogs.events()[0].kind, Kind::Beep);
        EXPECT_EQ(dialogs.events()[0].detail, c.detail);
        EXPECT_EQ(ReadBytes(path), "previous") << c.name;
    }
    ScriptedDialogs dialogs;
    ASSERT_TRUE(WriteQuarnFile(HandDesign(LSection::StepsUp), path, dialogs, kDate));
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(ReadBytes(path), StepUpFile());
}

}  // namespace
}  // namespace varo
