#include "export/ltspice.h"

#include <gtest/gtest.h>

#include <string>

#include "export/design_cases.h"
#include "platform/dialogs.h"
#include "platform/file_size_limit.h"
#include "support/decimal_comma_locale.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::HandDesign;
using testing::LSection;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;

// Header, source block at x 0, C1 at x 224 and L1 at x 320, for the hand design.
const char kCommonStart[] =
    "Version 4\r\n"
    "SHEET 1  1000 \r\n"
    "SYMBOL voltage  0  64 R0\r\n"
    "WINDOW 123 24 132 Left 0\r\n"
    "SYMATTR InstName Vgen\r\n"
    "SYMATTR Value AC 6250\r\n"
    "SYMBOL res 208 -16 R90\r\n"
    "WINDOW 0 0 56 Vbottom 0\r\n"
    "WINDOW 3 32 56 Vtop 0\r\n"
    "SYMATTR InstName Rgen\r\n"
    "SYMATTR Value  3000\r\n"
    "WIRE  0  80  0  0 \r\n"
    "WIRE  0  0  112  0 \r\n"
    "WIRE  192  0  224  0 \r\n"
    "WIRE  0  160  0  224 \r\n"
    "FLAG  0  224 0\r\n"
    "TEXT 0 288 Left 0  !.AC DEC 1000  1750000  1.4E+07 \r\n"
    "TEXT 0 352 Left 0  ;Power level:  1000  watts\r\n"
    "TEXT 0 384 Left 0  ;Frequency:  3.5M \r\n"
    "TEXT 0 416 Left 0  ;Network Zin: 2k\r\n"
    "TEXT 0 448 Left 0  ;Network output termination:  50 \r\n"
    "TEXT 0 480 Left 0  ;Rgen is generator internal impedance as "
    "specified\r\n"
    "TEXT 0 512 Left 0  ;Vgen is based on sum of Rgen and network Zin\r\n"
    "TEXT 0 576 Left 0  ;Drawn by VARO\r\n"
    "SYMBOL cap  256  80 R0\r\n"
    "SYMATTR InstName C1\r\n"
    "SYMATTR Value 4700pF\r\n"
    "WIRE  224  0  320  0 \r\n"
    "WIRE  272  0  272  80 \r\n"
    "WIRE  272  144  272  224 \r\n"
    "FLAG  272  224 0\r\n"
    "SYMBOL ind  352  16 R270\r\n"
    "WINDOW 0 32 56 Vtop 0\r\n"
    "WINDOW 3 5 56 Vbottom 0\r\n"
    "SYMATTR InstName L2\r\n"
    "SYMATTR Value 2.2uH\r\n"
    "WIRE  320  0  368  0 \r\n"
    "WIRE  448  0  496  0 \r\n";

// The third element at x 496.
const char kThirdCapacitor[] =
    "SYMBOL cap  528  80 R0\r\n"
    "SYMATTR InstName C3\r\n"
    "SYMATTR Value 0.015uF\r\n"
    "WIRE  496  0  592  0 \r\n"
    "WIRE  544  0  544  80 \r\n"
    "WIRE  544  144  544  224 \r\n"
    "FLAG  544  224 0\r\n";

// L2 as the fourth element at x 592.
const char kFourthInductor[] =
    "SYMBOL ind  624  16 R270\r\n"
    "WINDOW 0 32 56 Vtop 0\r\n"
    "WINDOW 3 5 56 Vbottom 0\r\n"
    "SYMATTR InstName L4\r\n"
    "SYMATTR Value 470nH\r\n"
    "WIRE  592  0  640  0 \r\n"
    "WIRE  720  0  768  0 \r\n";

const char kStepUpRest[] =
    "SYMBOL cap  800  80 R0\r\n"
    "SYMATTR InstName C5\r\n"
    "SYMATTR Value 100pF\r\n"
    "WIRE  768  0  864  0 \r\n"
    "WIRE  816  0  816  80 \r\n"
    "WIRE  816  144  816  224 \r\n"
    "FLAG  816  224 0\r\n"
    "SYMBOL res  976  56 R0\r\n"
    "SYMATTR InstName Rload\r\n"
    "SYMATTR Value 50 \r\n"
    "WIRE  864  0  992  0 \r\n"
    "WIRE  992  0  992  72 \r\n"
    "WIRE  992  72  992  224 \r\n"
    "FLAG  992  224 0\r\n";

const char kLoadAt592[] =
    "SYMBOL res  704  56 R0\r\n"
    "SYMATTR InstName Rload\r\n"
    "SYMATTR Value 50 \r\n"
    "WIRE  592  0  720  0 \r\n"
    "WIRE  720  0  720  72 \r\n"
    "WIRE  720  72  720  224 \r\n"
    "FLAG  720  224 0\r\n";

// The file of the step-up design, whose ladder has every element.
std::string StepUpFile() {
    return std::string(kCommonStart) + kThirdCapacitor + kFourthInductor + kStepUpRest;
}

// Without an L section the load follows C3 directly.
TEST(LTspiceSchematic, TextMatchesTheHandWrittenFile) {
    EXPECT_EQ(LTspiceSchematicText(HandDesign(LSection::StepsUp)), StepUpFile());
    EXPECT_EQ(LTspiceSchematicText(HandDesign(LSection::None)),
              std::string(kCommonStart) + kThirdCapacitor + kLoadAt592);
    testing::DecimalCommaLocale locale;
    if (locale.active()) {
        EXPECT_EQ(LTspiceSchematicText(HandDesign(LSection::StepsUp)), StepUpFile());
    }
}

TEST(WriteLTspiceSchematic, AFailureKeepsThePreviousFileAndNamesPathAndReason) {
    TempFolder folder;
    const std::string path = folder.File("design.ASC");
    DesignState zeroPlate = HandDesign(LSection::None);
    zeroPlate.plateR = 0;
    const struct {
        const char* name;
        DesignState state;
        std::size_t diskRoom;
        std::string detail;
    } cases[] = {
        {"disk full", HandDesign(LSection::None), 100, path + ": File too large"},
        {"plate 0", zeroPlate, SIZE_MAX, path + ": Division by zero"},
    };
    for (const auto& c : cases) {
        WriteBytes(path, "previous");
        ScriptedDialogs dialogs;
        {
            const FileSizeLimit disk(c.diskRoom);
            EXPECT_FALSE(WriteLTspiceSchematic(c.state, path, dialogs)) << c.name;
        }
        ASSERT_EQ(dialogs.events().size(), 1u) << c.name;
        const auto& said = dialogs.events()[0];
        EXPECT_EQ((std::vector<std::string>{said.text, said.title, said.detail}),
                  (std::vector<std::string>{"We could not write the LTspice schematic file",
                                            std::string(kProgramTitle), c.detail}));
        EXPECT_EQ(ReadBytes(path), "previous") << c.name;
    }
    ScriptedDialogs dialogs;
    ASSERT_TRUE(WriteLTspiceSchematic(HandDesign(LSection::StepsUp), path, dialogs));
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(ReadBytes(path), StepUpFile());
}

}  // namespace
}  // namespace varo
