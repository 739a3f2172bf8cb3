#include "export/quarn.h"

#include <gtest/gtest.h>

#include <string>

#include "core/fault.h"
#include "export/design_cases.h"
#include "platform/dialogs.h"
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

// The step-up design: order 5 and five Gj, Hj lines, but C3's position has no type, so no
// element line for it.
const char kStepUpFile[] =
    "Quarn circuit file by VARO\r\n"
    "Untitled\r\n"
    "11/15/2026\r\n"
    "* Expansion:\r\n"
    " (Expansion)\r\n"
    "* Family, order, stages, topology, Cauer:\r\n"
    " 11  5  5 A 0 \r\n"
    "* Width, center, Fstop normalized:\r\n"
    " 3500000  0  0 \r\n"
    "* Apass, Astop:\r\n"
    " 0  0 \r\n"
    "* Rsource, Rload, Rratio, Rstandard:\r\n"
    " 3000  50  1  2000 \r\n"
    "* Qind, Qcap:\r\n"
    " 10000000  10000000 \r\n"
    "* Gj, Hj:\r\n"
    "0   0\r\n0   0\r\n0   0\r\n0   0\r\n0   0\r\n"
    "* Element type, L, Ltolerance, C, Ctolerance\r\n"
    " 4  0  0  4.7E-09  5 \r\n"
    " 1  2.2E-06  5  0  0 \r\n"
    " 4  0  0  1.5E-08  5 \r\n"
    " 1  4.7E-07  5  0  0 \r\n"
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

TEST(QuarnFile, TextMatchesTheHandWrittenFile) {
    EXPECT_EQ(QuarnFileText(HandDesign(LSection::StepsUp), kDate), kStepUpFile);
}

// A fault while the file is worked out only beeps, and leaves the previous file.
TEST(WriteQuarnFile, WritesSilentlyOrOnlyBeepsAndKeepsThePreviousFile) {
    TempFolder folder;
    const std::string path = folder.File("design.KVF");
    WriteBytes(path, "previous");
    DesignState beyondArrays = HandDesign(LSection::None);
    beyondArrays.elementCount = kLadderPositions;  // one position past the last
    ScriptedDialogs dialogs;
    EXPECT_FALSE(WriteQuarnFile(beyondArrays, path, dialogs, kDate));
    ASSERT_EQ(dialogs.events().size(), 1u);
    EXPECT_EQ(dialogs.events()[0].kind, Kind::Beep);
    EXPECT_EQ(dialogs.events()[0].detail, path + ": Index out of range");
    EXPECT_EQ(ReadBytes(path), "previous");
    dialogs.clear();
    ASSERT_TRUE(WriteQuarnFile(HandDesign(LSection::StepsUp), path, dialogs, kDate));
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(ReadBytes(path), kStepUpFile);
}

}  // namespace
}  // namespace varo
