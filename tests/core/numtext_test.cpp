#include "core/numtext.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/fault.h"
#include "support/decimal_comma_locale.h"

namespace varo {
namespace {

// ---- ParseEngNumber ------------------------------------------------------------------------

struct ParseCase {
    std::string entry;
    std::string writtenBack;
    float value;
};

class ParseEngNumberTest : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ParseEngNumberTest, WritesTrimmedTextBackAndReadsValue) {
    const ParseCase& c = GetParam();
    std::string text = c.entry;
    EXPECT_EQ(ParseEngNumber(text), c.value) << "entry \"" << c.entry << "\"";
    EXPECT_EQ(text, c.writtenBack);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, ParseEngNumberTest,
    ::testing::Values(
        ParseCase{"  12.5k  ", "12.5k", 12500.0f},
        ParseCase{"1234567890123456", "123456789012", 1e10f},  // cut, then clamped
        ParseCase{"-1234567890123", "-12345678901", -1e10f}, ParseCase{"1.2.3", "1.2.3", 1.23f},
        ParseCase{"m", "m", 0.0f}, ParseCase{"5m", "5m", 0.005f}, ParseCase{"5M", "5M", 5e6f},
        ParseCase{"5mM", "5mM", 0.005f}, ParseCase{"-5", "-5", -5.0f},
        ParseCase{"12-", "12-", 12.0f}, ParseCase{"--5", "--5", -5.0f}, ParseCase{"+7", "+7", 7.0f},
        ParseCase{"5E-3", "5E-3", 0.005f}, ParseCase{"5E--3", "5E--3", 0.005f},
        ParseCase{"1E3k", "1E3k", 1000.0f}, ParseCase{"3,5 M", "3,5 M", 3.5e6f},
        ParseCase{"3.5M", "3.5M", 3.5e6f}, ParseCase{"3.5e6", "3.5e6", 3.5e6f},
        ParseCase{"3500k", "3500k", 3.5e6f}, ParseCase{"2200p", "2200p", 2.2e-9f},
        ParseCase{"4.7n", "4.7n", 4.7e-9f}, ParseCase{"100u", "100u", 1e-4f},
        ParseCase{"1g", "1g", 1e9f}, ParseCase{"2G", "2G", 2e9f}, ParseCase{"abc", "abc", 0.0f},
        ParseCase{"", "", 0.0f}, ParseCase{"   ", "", 0.0f}, ParseCase{"12 34", "12 34", 1234.0f},
        ParseCase{"E5", "E5", 5.0f},         // an exponent letter before any digit is dropped
        ParseCase{"5E0.1", "5E0.1", 50.0f},  // no point after an exponent: reads 5E01
        ParseCase{"1.5E", "1.5E", 1.5f}, ParseCase{"-", "-", 0.0f}, ParseCase{".", ".", 0.0f},
        ParseCase{"9E99", "9E99", 1e10f}, ParseCase{"-9E99", "-9E99", -1e10f},
        ParseCase{"1E-99", "1E-99", 0.0f}, ParseCase{"1.5E+07", "1.5E+07", 1.5e7f},
        ParseCase{"\t7\t", "\t7\t", 7.0f},  // only blanks are trimmed
        ParseCase{"5\xC2\xB5", "5\xC2\xB5", 5.0f},
        // 13 characters, one of them two bytes long: the cut keeps the character whole.
        ParseCase{"1234567890\xC3\xA4"
                  "12",
                  "1234567890\xC3\xA4"
                  "1",
                  1e10f},
        ParseCase{std::string(14, '\x80'), std::string(12, '\x80'), 0.0f}));

// ---- FormatPattern -------------------------------------------------------------------------

struct PatternCase {
    double v;
    const char* pattern;
    const char* expected;
};

TEST(FormatPattern, RoundsHalfAwayFromZeroOnTheExactBinaryValue) {
    const PatternCase cases[] = {
        {0.125, "##.##", ".13"},
        {-0.125, "##.##", "-.13"},
        {0.625, "#.##", ".63"},  // a tie that half-to-even would round down
        {2.5, "#.", "3."},
        {2.5, "#", "3"},         // no point in the pattern, none in the text
        {1.005, "#.##", "1."},   // really 1.00499999...
        {5e-7, ".######", "."},  // really 4.99999...e-07
        {1.5e-6, ".######", ".000002"},
        {12, "##.###", "12."},
        {0.5, "##.###", ".5"},
        {1234.5678, "####.##", "1234.57"},
        {9.9999, "#.###", "10."},
        {-0.0001, "##.##", "-."},
        {0.0001, "##.##", "."},
        {1234.4, "######", "1234"},
        {3.4028234663852886e38, "######", "340282346638528859811704183484516925440"},
        {std::numeric_limits<double>::denorm_min(), ".######", "."},
    };
    for (const PatternCase& c : cases) {
        EXPECT_EQ(FormatPattern(c.v, c.pattern), c.expected) << c.v << " with " << c.pattern;
    }
}

// ---- Engineering formatters ----------------------------------------------------------------

struct FormatCase {
    float x;
    const char* expected;
};

void ExpectFormats(std::string (*format)(float), std::initializer_list<FormatCase> cases) {
    for (const FormatCase& c : cases)
        EXPECT_EQ(format(c.x), c.expected) << "x = " << c.x;
}

TEST(FormatHz, BandsUnitsAndSignBlank) {
    ExpectFormats(FormatHz, {
                                {0, "0.0 "},
                                {0.5f, " 500mH"},
                                {500, " 500Hz"},
                                {1, " 1Hz"},
                                {999.999f, " 1000Hz"},  // band by raw value, then rounded
                                {1000, " 1K "},
                                {3500000, " 3.5M "},
                                {7150000, " 7.15M "},
                                {1e9f, " 1G "},
                                {123456789.0f, " 123.46M "},
                                {12345678.0f, " 12.346M "},
                                {1234567.0f, " 1.2346M "},
                                {0.123456f, " 123.46mH"},
                                {-5, "-5000mH"},  // no band for negatives but the last
                            });
}

TEST(FormatNumber, BandsPatternsAndZeroText) {
    ExpectFormats(FormatNumber, {
                                    {100, "100 "},
                                    {99.9999f, "100 "},
                                    {1234, "1.234k"},
                                    {-1234, "-1.234k"},
                                    {0.000005f, " 0.0000  "},
                                    {0, " 0.0000  "},
                                    {1e-5f, " 0.0000  "},  // the single is just below 1e-5
                                    {1.5e-5f, "1E-05 "},   // really 1.4999999e-05
                                    {50, "50 "},
                                    {0.5f, "0.5 "},
                                    {-0.5f, "-0.5 "},
                                    {123.456f, "123.46 "},
                                    {12.3456789f, "12.346 "},
                                    {1.23456789f, "1.2346 "},
                                    {0.123456789f, "0.12346 "},
                                    {999999.9f, "1000k"},
                                    {2.5e6f, "2.5M"},
                                    {1e9f, "1G"},
                                });
}

TEST(FormatFarad, KeepsItsOwnBandTable) {
    ExpectFormats(FormatFarad, {
                                   {5, "5F"},
                                   {0, ""},
                                   {1e-10f, "100pF"},
                                   {4.7e-9f, "4700pF"},
                                   {-4.7e-9f, "-4700pF"},
                                   {1.5e-8f, "0.015uF"},
                                   {2e-8f, "0.02uF"},
                                   {1e-8f, "10000pF"},  // the single is just below 1e-8
                                   {0.01f, "10000uF"},  // likewise just below 0.01
                                   {0.02f, "20mF"},
                                   {10, "0.01KF"},
                                   {1e4f, "0.01MF"},
                                   {1e7f, "0.0001GF"},  // divided by 1e11
                                   {2e-14f, "0.02pF"},
                                   {1e-15f, ""},
                               });
}

TEST(FormatHenry, BandsAndPatterns) {
    ExpectFormats(FormatHenry, {
                                   {2.2e-6f, "2.2uH"},
                                   {4.7e-7f, "470nH"},
                                   {0, ""},
                                   {1, "1H"},
                                   {1000, "1KH"},
                                   {0.001f, "1mH"},
                                   {1e-6f, "1000nH"},  // the single is just below 1e-6
                                   {1e-12f, "0.001nH"},
                                   {1e-16f, "0nH"},
                                   {12.5e-6f, "12.5uH"},
                                   {1.23456789e-6f, "1.23457uH"},
                                   {2e6f, "2MH"},
                               });
}

TEST(FormatEng, AxisLabels) {
    ExpectFormats(FormatEng, {
                                 {0, "0  "},
                                 {10000, "10K"},
                                 {-20, "-20  "},
                                 {999, "999  "},
                                 {1234.5f, "1.235K"},
                                 {12345, "12.35K"},
                                 {2000.5f, "2K"},  // v is really 2.00049996
                                 {1e6f, "1M"},
                                 {2e9f, "2G"},
                                 {5e12f, "5000G"},
                                 {-5e12f, "-5000G"},
                                 {0.5f, "500m"},
                                 {5e-6f, "5u"},
                                 {1e-12f, "1p"},
                             });
}

// ---- General number forms ------------------------------------------------------------------

struct SingleFormCase {
    float v;
    const char* plain;
    const char* write;
    const char* print;
};

TEST(GeneralForm, SinglePrecisionForms) {
    const SingleFormCase cases[] = {
        {3900000, "3900000", "3900000", " 3900000 "},
        {12, "12", "12", " 12 "},
        {15000000, "1.5E+07", "1.5E+07", " 1.5E+07 "},
        {0.5f, "0.5", ".5", " .5 "},
        {-0.5f, "-0.5", "-.5", "-.5 "},
        {0, "0", "0", " 0 "},
        {-0.0f, "0", "0", " 0 "},
        {-60, "-60", "-60", "-60 "},
        {9999999, "9999999", "9999999", " 9999999 "},
        {10000000, "1E+07", "1E+07", " 1E+07 "},
        {12345678.0f, "1.234568E+07", "1.234568E+07", " 1.234568E+07 "},
        {2.2e-6f, "2.2E-06", "2.2E-06", " 2.2E-06 "},
        {0.0001f, "0.0001", ".0001", " .0001 "},  // below 1E-04 only before rounding
        {0.00009f, "9E-05", "9E-05", " 9E-05 "},
        {2000.002f, "2000.002", "2000.002", " 2000.002 "},
        {0.1f, "0.1", ".1", " .1 "},
        {3.14159265f, "3.141593", "3.141593", " 3.141593 "},
        {1234567.5f, "1234568", "1234568", " 1234568 "},
        {1234566.5f, "1234567", "1234567", " 1234567 "},  // ties round away from zero
        {99999992.0f, "9.999999E+07", "9.999999E+07", " 9.999999E+07 "},
        {FLT_MAX, "3.402823E+38", "3.402823E+38", " 3.402823E+38 "},
        {-FLT_MAX, "-3.402823E+38", "-3.402823E+38", "-3.402823E+38 "},
        {FLT_MIN, "1.175494E-38", "1.175494E-38", " 1.175494E-38 "},
        {std::numeric_limits<float>::denorm_min(), "1E-45", "1E-45", " 1E-45 "},
    };
    for (const SingleFormCase& c : cases) {
        EXPECT_EQ(PlainText(c.v), c.plain) << c.v;
        EXPECT_EQ(WriteForm(c.v), c.write) << c.v;
        EXPECT_EQ(PrintForm(c.v), c.print) << c.v;
        EXPECT_EQ(FileForm(c.v), c.print) << c.v;
    }
}

struct DoubleFormCase {
    double v;
    const char* plain;
    const char* print;
};

TEST(GeneralForm, DoublePrecisionForms) {
    const DoubleFormCase cases[] = {
        {0.000006, "6E-06", " 6E-06 "},
        {0.1 + 0.2, "0.3", " .3 "},
        {0.25, "0.25", " .25 "},
        {1750000, "1750000", " 1750000 "},
        {123456789012345.0, "123456789012345", " 123456789012345 "},
        {999999999999999.0, "999999999999999", " 999999999999999 "},
        {1e15, "1E+15", " 1E+15 "},
        {1234567890123456.0, "1.23456789012346E+15", " 1.23456789012346E+15 "},
        {3.141592653589793, "3.14159265358979", " 3.14159265358979 "},
        {-2.5, "-2.5", "-2.5 "},
        {1e-4, "0.0001", " .0001 "},
        {9.9999e-5, "9.9999E-05", " 9.9999E-05 "},
        {1e100, "1E+100", " 1E+100 "},
        {std::numeric_limits<double>::denorm_min(), "5E-324", " 5E-324 "},
    };
    for (const DoubleFormCase& c : cases) {
        EXPECT_EQ(PlainText(c.v), c.plain) << c.v;
        EXPECT_EQ(PrintForm(c.v), c.print) << c.v;
        EXPECT_EQ(FileForm(c.v), c.print) << c.v;
    }
}

TEST(GeneralForm, SignedAndIntegerItems) {
    EXPECT_EQ(SignedText(3750.0f), " 3750");
    EXPECT_EQ(SignedText(-16.0f), "-16");
    EXPECT_EQ(SignedText(0.5), " .5");
    EXPECT_EQ(SignedText(3750), " 3750");
    EXPECT_EQ(SignedText(-16), "-16");
    EXPECT_EQ(PrintForm(1000), " 1000 ");
    EXPECT_EQ(PrintForm(0), " 0 ");
    EXPECT_EQ(PrintForm(-16), "-16 ");
    EXPECT_EQ(PrintForm(14000000.0f), " 1.4E+07 ");
    EXPECT_EQ(PrintForm(28000000.0f), " 2.8E+07 ");
    EXPECT_EQ(FileForm(3500000.0f), " 3500000 ");
    EXPECT_EQ(FileForm(-60.0f), "-60 ");
}

// Written values must read back as the same single through the entry parser, exponent included.
TEST(GeneralForm, WriteFormReadsBackThroughTheParser) {
    std::mt19937 random(20240611);
    std::uniform_int_distribution<int> mantissa(1000000, 9999999);
    std::uniform_int_distribution<int> exponent(-10, 2);
    for (int i = 0; i < 3000; ++i) {
        const float v = static_cast<float>(mantissa(random) * std::pow(10.0, exponent(random)));
        std::string text = WriteForm(v);
        EXPECT_EQ(ParseEngNumber(text), v) << WriteForm(v);
    }
}

TEST(NumberText, DecimalCommaLocaleChangesNothing) {
    testing::DecimalCommaLocale locale;
    if (!locale.active()) GTEST_SKIP() << "no decimal-comma locale installed";
    EXPECT_EQ(FormatNumber(1234.5f), "1.235k");
    EXPECT_EQ(FormatHz(3500000), " 3.5M ");
    EXPECT_EQ(FormatFarad(1.5e-8f), "0.015uF");
    EXPECT_EQ(PlainText(0.5f), "0.5");
    EXPECT_EQ(FileForm(2.5f), " 2.5 ");
    EXPECT_EQ(PrintForm(0.000006), " 6E-06 ");
    EXPECT_EQ(FormatPattern(0.125, "##.##"), ".13");
    std::string point = "3.5M";
    std::string comma = "3,5 M";
    EXPECT_EQ(ParseEngNumber(point), 3.5e6f);
    EXPECT_EQ(ParseEngNumber(comma), 3.5e6f);
}

// ---- Extreme values ------------------------------------------------------------------------

// Values far beyond any design keep their size but show at most 7 digits; an infinity shows as
// the largest single, NaN as the zero text.
TEST(NumberText, ExtremeValuesGiveBoundedTexts) {
    const struct {
        float x;
        const char *hz, *number, *farad;
    } cases[] = {
        {FLT_MAX, " 3.402824E+29G ", "3.402824E+29G", "3.402823E+27GF"},
        {-FLT_MAX, "-3.402823E+41mH", "-3.402824E+29G", "-3.402823E+27GF"},
        {-std::numeric_limits<float>::infinity(), "-3.402823E+41mH", "-3.402824E+29G",
         "-3.402823E+27GF"},
        {9.99e23f, " 9.99E+14G ", "9.99E+14G", "9.99E+12GF"},
        {1.2345678e15f, " 1234568G ", "1234568G", "12345.68GF"},
        {std::numeric_limits<float>::quiet_NaN(), "0.0 ", " 0.0000  ", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FormatHz(c.x), c.hz) << c.x;
        EXPECT_EQ(FormatNumber(c.x), c.number) << c.x;
        EXPECT_EQ(FormatFarad(c.x), c.farad) << c.x;
        for (auto format : {FormatEng, FormatHenry}) {
            const std::string text = format(c.x);
            EXPECT_LE(text.size(), 15u) << text;
            EXPECT_EQ(text.find("inf"), std::string::npos) << text;
            EXPECT_EQ(text.find("nan"), std::string::npos) << text;
        }
    }
}

// ---- BuildLogGrid --------------------------------------------------------------------------

std::vector<float> Grid(const DesignState& state) {
    return {state.gridFrequencies.begin(), state.gridFrequencies.begin() + state.gridLastIndex + 1};
}

TEST(BuildLogGrid, OneToNinePerDecadeWithinTheSweep) {
    DesignState state;
    state.sweepStart = 1750000;
    state.sweepStop = 14000000;
    BuildLogGrid(state);
    ASSERT_EQ(state.gridLastIndex, 8);
    const std::vector<float> grid = Grid(state);
    for (int i = 0; i < 9; ++i) {
        const double expected = (i + 2) * 1e6;  // the decade is scaled up in single precision
        EXPECT_NEAR(grid[i], expected, expected * 1e-6) << i;
    }
}

TEST(BuildLogGrid, IncludesHalfStepsAndTheFirstDecade) {
    DesignState state;
    state.sweepStart = 0;
    state.sweepStop = 0.0015f;
    BuildLogGrid(state);
    ASSERT_EQ(state.gridLastIndex, 1);
    EXPECT_EQ(state.gridFrequencies[0], 0.001f);
    EXPECT_EQ(state.gridFrequencies[1], 0.001f * 1.5f);
}

TEST(BuildLogGrid, EmptyBelowTheFirstDecadeOrWithoutATop) {
    for (const float stop : {0.0009f, 0.0f, -5.0f, std::numeric_limits<float>::quiet_NaN()}) {
        DesignState state;
        state.gridLastIndex = 5;
        state.sweepStop = stop;
        BuildLogGrid(state);
        EXPECT_EQ(state.gridLastIndex, -1) << stop;
    }
}

TEST(BuildLogGrid, EndsForAHugeOrInfiniteTop) {
    for (const float stop : {FLT_MAX, std::numeric_limits<float>::infinity()}) {
        DesignState state;
        state.sweepStart = 1;
        state.sweepStop = stop;
        BuildLogGrid(state);
        const std::vector<float> grid = Grid(state);
        ASSERT_GT(grid.size(), 300u);
        EXPECT_NEAR(grid.front(), 1.0f, 1e-6f);
        for (std::size_t i = 1; i < grid.size(); ++i) {
            ASSERT_TRUE(std::isfinite(grid[i]));
            ASSERT_LT(grid[i - 1], grid[i]);
        }
    }
}

}  // namespace
}  // namespace varo
