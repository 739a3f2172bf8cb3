#include "core/numtext.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "support/decimal_comma_locale.h"

namespace varo {
namespace {

TEST(ParseEngNumber, WritesTrimmedTextBackAndReadsValue) {
    const struct {
        std::string entry, writtenBack;
        float value;
    } cases[] = {
        {"  12.5k  ", "12.5k", 12500.0f},
        {"1234567890123456", "123456789012", 1e10f},  // cut, then clamped
        {"-9E99", "-9E99", -1e10f},
        {"1E-99", "1E-99", 0.0f},
        {"1.2.3", "1.2.3", 1.23f},
        {"m", "m", 0.0f},
        {"5mM", "5mM", 0.005f},
        {"--5", "--5", -5.0f},
        {"1E3k", "1E3k", 1000.0f},
        {"3,5 M", "3,5 M", 3.5e6f},
        {"2200p", "2200p", 2.2e-9f},
        {"4.7U", "4.7U", 4.7e-6f},
        {"1g", "1g", 1e9f},
        {"   ", "", 0.0f},
        {"E5", "E5", 5.0f},         // an exponent letter before any digit is dropped
        {"5E0.1", "5E0.1", 50.0f},  // no point after an exponent: reads 5E01
        {"\t7\t", "\t7\t", 7.0f},   // only blanks are trimmed
        {"1234567890\u00e412", "1234567890\u00e41", 1e10f},  // the cut keeps a UTF-8 character
        {std::string(14, '\x80'), std::string(12, '\x80'), 0.0f},
    };
    for (const auto& c : cases) {
        std::string text = c.entry;
        EXPECT_EQ(ParseEngNumber(text), c.value) << "entry \"" << c.entry << "\"";
        EXPECT_EQ(text, c.writtenBack);
    }
}

TEST(FormatPattern, RoundsHalfAwayFromZeroOnTheExactBinaryValue) {
    const struct {
        double v;
        const char *pattern, *expected;
    } cases[] = {
        {-0.125, "##.##", "-.13"},
        {0.625, "#.##", ".63"},  // a tie that half-to-even would round down
        {2.5, "#", "3"},         // no point in the pattern, none in the text
        {1.005, "#.##", "1."},   // really 1.00499999...
        {5e-7, ".######", "."},  // really 4.99999...e-07
        {9.9999, "#.###", "10."},
        {-0.0001, "##.##", "-."},
        {3.4028234663852886e38, "######", "340282346638528859811704183484516925440"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatPattern(c.v, c.pattern), c.expected) << c.v << " with " << c.pattern;
}

TEST(EngineeringFormats, BandsUnitsAndPatterns) {
    const struct {
        std::string (*format)(float);
        float x;
        const char* expected;
    } cases[] = {
        {FormatHz, 0, "0.0 "},
        {FormatHz, 0.123456f, " 123.46mH"},
        {FormatHz, 999.999f, " 1000Hz"},  // band by raw value, then rounded
        {FormatHz, 123456789.0f, " 123.46M "},
        {FormatHz, -5, "-5000mH"},  // no band for negatives but the last
        {FormatNumber, 99.9999f, "100 "},
        {FormatNumber, -1234, "-1.234k"},
        {FormatNumber, 1e-5f, " 0.0000  "},  // the single is just below 1e-5
        {FormatNumber, 1.5e-5f, "1E-05 "},   // really 1.4999999e-05
        {FormatNumber, 0.123456789f, "0.12346 "},
        {FormatNumber, 999999.9f, "1000k"},
        {FormatFarad, -4.7e-9f, "-4700pF"},
        {FormatFarad, 1e-8f, "10000pF"},  // the single is just below 1e-8
        {FormatFarad, 1e7f, "0.0001GF"},  // divided by 1e11
        {FormatFarad, 2e-14f, "0.02pF"},
        {FormatFarad, 1e-15f, ""},
        {FormatHenry, 1e-6f, "1000nH"},  // the single is just below 1e-6
        {FormatHenry, 1e-16f, "0nH"},
        {FormatHenry, 1.23456789e-6f, "1.23457uH"},
        {FormatEng, -20, "-20  "},
        {FormatEng, 1000, "1K"},  // a threshold belongs to the band above
        {FormatEng, 12345, "12.35K"},
        {FormatEng, 2000.5f, "2K"},  // v is really 2.00049996
        {FormatEng, -5e12f, "-5000G"},
        {FormatEng, -0.00123456f, "-1.2346m"},  // negatives take the pattern for v <= 1
        {FormatEng, 1.23456e-13f, "0.1235p"},
        // Far beyond any design: at most 7 digits, infinity as the largest single, NaN as zero.
        {FormatHz, FLT_MAX, " 3.402824E+29G "},
        {FormatHz, -std::numeric_limits<float>::infinity(), "-3.402823E+41mH"},
        {FormatNumber, -std::numeric_limits<float>::infinity(), "-3.402824E+29G"},
        {FormatNumber, 1.2345678e15f, "1234568G"},
        {FormatFarad, FLT_MAX, "3.402823E+27GF"},
        {FormatHz, std::numeric_limits<float>::quiet_NaN(), "0.0 "},
        {FormatNumber, std::numeric_limits<float>::quiet_NaN(), " 0.0000  "},
        {FormatFarad, std::numeric_limits<float>::quiet_NaN(), ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.format(c.x), c.expected) << "x = " << c.x;
}

TEST(GeneralForm, SingleAndDoublePrecisionForms) {
    const struct {
        float v;
        const char *plain, *write, *print;
    } cases[] = {
        {15000000, "1.5E+07", "1.5E+07", " 1.5E+07 "},
        {-0.5f, "-0.5", "-.5", "-.5 "},
        {-0.0f, "0", "0", " 0 "},
        {12345678.0f, "1.234568E+07", "1.234568E+07", " 1.234568E+07 "},
        {0.0001f, "0.0001", ".0001", " .0001 "},  // below 1E-04 only before rounding
        {0.00009f, "9E-05", "9E-05", " 9E-05 "},
        {1234566.5f, "1234567", "1234567", " 1234567 "},  // ties round away from zero
        {-FLT_MAX, "-3.402823E+38", "-3.402823E+38", "-3.402823E+38 "},
        {std::numeric_limits<float>::denorm_min(), "1E-45", "1E-45", " 1E-45 "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PlainText(c.v), c.plain) << c.v;
        EXPECT_EQ(WriteForm(c.v), c.write) << c.v;
        EXPECT_EQ(PrintForm(c.v), c.print) << c.v;
        EXPECT_EQ(FileForm(c.v), c.print) << c.v;
        EXPECT_EQ(SignedText(c.v) + " ", c.print) << c.v;
    }
    // A double shows up to 15 digits.
    using Row = std::tuple<double, const char*, const char*>;
    for (const auto& [v, plain, print] : std::initializer_list<Row>{
             {0.1 + 0.2, "0.3", " .3 "},
             {1e15, "1E+15", " 1E+15 "},
             {1234567890123456.0, "1.23456789012346E+15", " 1.23456789012346E+15 "},
             {std::numeric_limits<double>::denorm_min(), "5E-324", " 5E-324 "}}) {
        EXPECT_EQ(PlainText(v), plain) << v;
        EXPECT_EQ(FileForm(v), print) << v;
    }
    EXPECT_EQ(SignedText(-16) + "|" + PrintForm(1000), "-16| 1000 ");
}

TEST(NumberText, DecimalCommaLocaleChangesNothing) {
    testing::DecimalCommaLocale locale;
    if (!locale.active()) GTEST_SKIP() << "no decimal-comma locale installed";
    std::string point = "3.5M";
    EXPECT_EQ(ParseEngNumber(point), 3.5e6f);
    EXPECT_EQ(FormatNumber(1234.5f) + PlainText(0.5f) + PrintForm(0.000006) +
                  FormatPattern(0.125, "##.##"),
              "1.235k0.5 6E-06 .13");
}

std::vector<float> Grid(float start, float stop) {
    DesignState state;
    state.gridLastIndex = 5;
    state.sweepStart = start;
    state.sweepStop = stop;
    BuildLogGrid(state);
    return {state.gridFrequencies.begin(), state.gridFrequencies.begin() + state.gridLastIndex + 1};
}

// The large plot's grid steps; the scan ends even for an infinite top.
TEST(BuildLogGrid, TinyEmptyAndInfiniteRanges) {
    EXPECT_EQ(Grid(0, 0.0015f), (std::vector<float>{0.001f, 0.001f * 1.5f}));
    for (const float stop : {0.0009f, -5.0f, std::numeric_limits<float>::quiet_NaN()})
        EXPECT_TRUE(Grid(0, stop).empty()) << stop;
    const std::vector<float> grid = Grid(1, std::numeric_limits<float>::infinity());
    ASSERT_GT(grid.size(), 300u);
    EXPECT_NEAR(grid.front(), 1.0f, 1e-6f);
    for (std::size_t i = 1; i < grid.size(); ++i)
        ASSERT_TRUE(std::isfinite(grid[i]) && grid[i - 1] < grid[i]) << i;
}

}  // namespace
}  // namespace varo
