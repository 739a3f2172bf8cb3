#include "screens/plot/overlay_files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/file_size_limit.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;
using Kind = ScriptedDialogs::Event::Kind;

// A three-point sweep, small enough to write its files out by hand.
DesignState ThreePointSweep() {
    DesignState s;
    s.sweepIntervals = 2;
    s.plotFloorDb = -60;
    s.sweepFrequency[0] = 1750000;
    s.sweepFrequency[1] = 3500000;
    s.sweepFrequency[2] = 14000000;
    s.sweepTransmission[0] = -0.0123f;
    s.sweepTransmission[1] = 0;
    s.sweepTransmission[2] = -60.5f;
    s.sweepReturn[0] = -20;
    s.sweepReturn[1] = -0.5f;
    s.sweepReturn[2] = 0.00001f;
    return s;
}

const std::string kByteOrderMark = "\xEF\xBB\xBF";
const char kS21[] = " 1750000 -.0123 \r\n 3500000  0 \r\n 1.4E+07 -60.5 \r\n";
const char kS11[] = " 1750000 -20 \r\n 3500000 -.5 \r\n 1.4E+07  1E-05 \r\n";

// Both files or neither: a new transmission curve is never left beside an old return curve.
TEST(WriteOverlayFiles, WritesBothFilesOrBeepsAndKeepsBothPreviousFiles) {
    DesignState sweep = ThreePointSweep();
    sweep.sweepReturn[1] = -12.34567f;  // Data.S21 takes 49 bytes, Data.S11 54
    TempFolder folder;
    WriteBytes(folder.File("Data.S21"), "old S21");
    WriteBytes(folder.File("Data.S11"), "old S11");
    ScriptedDialogs dialogs;
    {
        const FileSizeLimit disk(50);  // room for Data.S21 alone
        EXPECT_FALSE(WriteOverlayFiles(sweep, folder.str(), dialogs));
    }
    ASSERT_EQ(dialogs.events().size(), 2u);
    EXPECT_EQ(dialogs.events()[0].kind, Kind::Beep);
    EXPECT_EQ(dialogs.events()[1].text, "We are unable to write an overlay file");
    EXPECT_EQ(dialogs.events()[1].title, kProgramTitle);
    EXPECT_EQ(dialogs.events()[1].detail, folder.str() + "/Data.S11: File too large");
    EXPECT_EQ(ReadBytes(folder.File("Data.S21")), "old S21");
    EXPECT_EQ(ReadBytes(folder.File("Data.S11")), "old S11");
    dialogs.clear();
    ASSERT_TRUE(WriteOverlayFiles(ThreePointSweep(), folder.str(), dialogs));
    EXPECT_TRUE(dialogs.events().empty());
    EXPECT_EQ(ReadBytes(folder.File("Data.S21")), kS21);
    EXPECT_EQ(ReadBytes(folder.File("Data.S11")), kS11);
}

TEST(ReadOverlayFile, TakesNumbersAsListInput) {
    const struct {
        std::string bytes;
        std::vector<float> frequencies, values;
    } cases[] = {
        {" 1750000 -.0123 \r\n 1.4E+07  0 \r\n", {1750000, 14000000}, {-0.0123f, 0}},
        {kByteOrderMark + "1 2\r\n", {1}, {2}},
        {"1,2\n3 4\r5,,6", {1, 3, 5}, {2, 4, 6}},
        {"\t+7e6 -60\r\n\r\n", {7000000}, {-60}},
        {"1 2 3\r\n4", {1, 3}, {2, 4}},
        {"1 2.5" + std::string(61, '0'), {1}, {2.5f}},  // an item of 64 characters
    };
    for (const auto& c : cases) {
        TempFolder folder;
        WriteBytes(folder.File("Data.S21"), c.bytes);
        DesignState state;
        OverlayData overlay;
        ASSERT_TRUE(ReadOverlayFile(folder.File("Data.S21"), state, overlay).ok()) << c.bytes;
        ASSERT_EQ(overlay.overlayLastIndex + 1, static_cast<int>(c.frequencies.size()));
        for (std::size_t i = 0; i < c.frequencies.size(); ++i) {
            EXPECT_EQ(state.sweepFrequency[i], c.frequencies[i]) << c.bytes;
            EXPECT_EQ(overlay.overlayValue[i], c.values[i]) << c.bytes;
        }
    }
}

std::string Pairs(int count) {
    std::string bytes;
    for (int i = 1; i <= count; ++i)
        bytes.append(" ").append(std::to_string(i)).append(" -1 \r\n");
    return bytes;
}

TEST(ReadOverlayFile, RejectsAnUnusableFileWithoutTouchingTheSweep) {
    const struct {
        std::string bytes;
        OverlayReadError error;
        std::string message;
    } cases[] = {
        {Pairs(2002), OverlayReadError::TooManyPoints,
         "Data.S21 holds more than 2001 points; the overlay was not drawn."},
        {"1 2\r\n3 abc\r\n", OverlayReadError::NotANumber,
         "Data.S21 holds text that is not a number; the overlay was not drawn."},
        {"1 2\r\n3 4,5\r\n", OverlayReadError::OddCount, ""},  // a decimal comma splits the number
        {"1 nan\r\n", OverlayReadError::NotANumber, ""},
        {"1 2.5" + std::string(62, '0'), OverlayReadError::NotANumber, ""},  // 65 characters
        {"1 1e39\r\n", OverlayReadError::OutOfRange,
         "Data.S21 holds a number that is out of range; the overlay was not drawn."},
        {"1 -1e-46\r\n", OverlayReadError::OutOfRange, ""},
        {std::string(1100000, ' ') + "1 2", OverlayReadError::TooLarge,
         "Data.S21 is larger than any overlay file (over 1 MiB); the overlay was not drawn."},
        {"1 2\r\n3\r\n", OverlayReadError::OddCount,
         "Data.S21 ends with a frequency that has no value; the overlay was not drawn."},
        {"1 2\r\n0 4\r\n", OverlayReadError::FrequencyNotPositive,
         "Data.S21 holds a frequency of 0 or below; the overlay was not drawn."},
    };
    for (const auto& c : cases) {
        TempFolder folder;
        WriteBytes(folder.File("Data.S21"), c.bytes);
        DesignState state;
        state.sweepFrequency.fill(123);
        OverlayData overlay;
        overlay.overlayValue.fill(-7);
        overlay.overlayLastIndex = 41;
        const DesignState before = state;
        const OverlayReadResult result = ReadOverlayFile(folder.File("Data.S21"), state, overlay);
        EXPECT_EQ(result.error, c.error) << c.bytes.substr(0, 20);
        EXPECT_EQ(state.sweepFrequency, before.sweepFrequency);
        EXPECT_EQ(overlay.overlayValue[0], -7);
        EXPECT_EQ(overlay.overlayLastIndex, 41);
        if (!c.message.empty()) {
            EXPECT_EQ(OverlayReadErrorText("Data.S21", c.error), c.message);
        }
    }
}

struct DrawCall {
    int lastIndex;
    float topDb, floorDb;
    int curve;
    float firstValue;
    bool operator==(const DrawCall&) const = default;
};

class ReadOverlayFilesTest : public ::testing::Test {
  protected:
    bool Read() { return Read(folder_); }
    bool Read(const TempFolder& folder) {
        state_.plotFloorDb = -60;
        return ReadOverlayFiles(
            state_, overlay_, folder.str(), dialogs_,
            [this](std::int16_t last, float top, float floor, std::int16_t c) {
                draws_.push_back({last, top, floor, c, overlay_.overlayValue[0]});
            });
    }

    TempFolder folder_;
    DesignState state_;
    OverlayData overlay_;
    ScriptedDialogs dialogs_;
    std::vector<DrawCall> draws_;
};

// Transmission, then return, each over the frequencies its own file brings; names in upper case
// are found too. A missing or unusable file ends the operation with one message.
TEST_F(ReadOverlayFilesTest, DrawsBothCurvesOrSaysWhyNot) {
    const struct {
        const char *s21Name, *s21, *s11Name, *s11;
        std::vector<DrawCall> draws;
        std::vector<float> frequencies;  // the sweep's first three afterwards
        std::string message, title;
    } cases[] = {
        // clang-format off
        // The second file's two pairs replace two frequencies; the third stays.
        {"Data.S21", kS21, "Data.S11", " 1 -20 \r\n 2 -30 \r\n",
         {{2, 0, -60, 0, -0.0123f}, {1, 0, -60, 1, -20}}, {1, 2, 1.4e7f}, "", ""},
        {"DATA.S21", kS21, "DATA.S11", kS11, {{2, 0, -60, 0, -0.0123f}, {2, 0, -60, 1, -20}},
         {1.75e6f, 3.5e6f, 1.4e7f}, "", ""},
        {nullptr, nullptr, "Data.S11", kS11, {}, {0, 0, 0},
         "Files enabling overlay have not been written.", "File Test"},
        {"Data.S21", "1 2 3", "Data.S11", kS11, {}, {0, 0, 0},
         "Data.S21 ends with a frequency that has no value; the overlay was not drawn.",
         std::string(kProgramTitle)},
        // clang-format on
    };
    for (const auto& c : cases) {
        TempFolder folder;
        state_ = DesignState{};
        dialogs_.clear();
        draws_.clear();
        if (c.s21Name) WriteBytes(folder.File(c.s21Name), c.s21);
        WriteBytes(folder.File(c.s11Name), c.s11);
        EXPECT_EQ(Read(folder), c.message.empty()) << c.s11Name;
        EXPECT_EQ(draws_, c.draws) << c.s11Name;
        EXPECT_EQ(std::vector(state_.sweepFrequency.begin(), state_.sweepFrequency.begin() + 3),
                  c.frequencies)
            << c.s11Name;
        EXPECT_EQ(dialogs_.messages(),
                  c.message.empty() ? std::vector<std::string>{} : std::vector{c.message});
        for (const auto& event : dialogs_.events())
            EXPECT_EQ(std::pair(event.title, event.icon),
                      std::pair(c.title, MessageIcon::Exclamation));
    }
}

// An empty Data.S21 draws nothing and says nothing; Data.S11 is read and drawn after it.
TEST_F(ReadOverlayFilesTest, AnEmptyFileDrawsNothingAndTheOtherFollows) {
    for (const std::string& empty : {std::string(), kByteOrderMark + " \r\n"}) {
        draws_.clear();
        WriteBytes(folder_.File("Data.S21"), empty);
        WriteBytes(folder_.File("Data.S11"), " 1 -20 \r\n");
        EXPECT_TRUE(Read());
        EXPECT_TRUE(dialogs_.events().empty());
        ASSERT_EQ(draws_.size(), 2u);
        EXPECT_EQ(draws_[0].lastIndex, -1);
        EXPECT_EQ(draws_[1], (DrawCall{0, 0, -60, 1, -20}));
    }
}

}  // namespace
}  // namespace varo
