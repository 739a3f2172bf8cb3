#include "model/touchstone_load.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "platform/textfile.h"
#include "support/external_tools.h"
#include "support/temp_folder.h"
#include "support/time_limit.h"

namespace varo {
namespace {

using namespace std::chrono_literals;
using testing::TempFolder;
using testing::WriteBytes;

void ExpectSameLoad(const LoadPoint& got, const LoadPoint& want, double relative) {
    EXPECT_NEAR(got.frequency, want.frequency, relative * want.frequency);
    const double scale = relative * std::max(1.0, std::hypot(want.z.re, want.z.im));
    EXPECT_NEAR(got.z.re, want.z.re, scale);
    EXPECT_NEAR(got.z.im, want.z.im, scale);
}

// What LoadFileError says about `read`; empty when it read the load.
template <class Read>
std::string LoadRefusal(Read read) {
    try {
        read();
    } catch (const LoadFileError& error) {
        return error.what();
    }
    return {};
}

// Each impedance worked by hand from the file's pair and reference resistance.
TEST(OnePortTouchstone, ReadsEveryUnitParameterAndFormat) {
    const struct {
        std::string text;
        double referenceR;
        std::vector<LoadPoint> points;
    } cases[] = {
        // 50 (1 + 0.2j) / (1 - 0.2j) = 50 (0.96 + 0.4j) / 1.04
        {"# MHz S MA R 50\n7 0.2 90\n", 50, {{7e6, {46.153846153846, 19.230769230769}}}},
        // -20 dB is a reflection of 0.1: 50 * 1.1 / 0.9
        {"# kHz S DB\n3500 -20 0\n", 50, {{3.5e6, {61.111111111111, 0}}}},
        // 75 (1 - 0.5j)^2 / 1.25 = 75 (0.75 - j) / 1.25
        {"# Hz S RI R 75\n14000000 0 -0.5\n", 75, {{14e6, {45, -60}}}},
        // No option line: GHz, S, MA, 50 ohms; 50 * 0.4 / 1.6
        {"0.0018 0.6 180\n", 50, {{1.8e6, {12.5, 0}}}},
        {"# MHz Z RI\n7 1.5 -0.5\n", 50, {{7e6, {75, -25}}}},
        {"# GHz Z MA R 100\n0.01 2 -90\n", 100, {{1e7, {0, -200}}}},
        // 50 / (0.5 + 0.5j) = 50 (1 - j)
        {"# MHz Y RI\n7 0.5 0.5\n", 50, {{7e6, {50, -50}}}},
        // 0 dB at 45 degrees: 50 / ((1 + j) / sqrt 2)
        {"# kHz Y DB R 50\n1000 0 45\n", 50, {{1e6, {35.355339059327, -35.355339059327}}}},
        {"# ri r 25 mhz s\n7 0 0\n", 25, {{7e6, {25, 0}}}},
        {"\xEF\xBB\xBF! title\r# MHz S RI ! real, imaginary\r\n\r\n  7\t0 0 ! matched\r7.1 0 0",
         50,
         {{7e6, {50, 0}}, {7.1e6, {50, 0}}}},
        {"# MHz S MA R 50\n7 0 0\n# mhz ma s r 50.0\n7.1 0 0\n",
         50,
         {{7e6, {50, 0}}, {7.1e6, {50, 0}}}},
        // A lossless load a rounding step outside the unit circle: S11 = j, 50 j ohms
        {"# MHz S MA\n7 1.0000000001 90\n", 50, {{7e6, {0, 50}}}},
        // cos 270 degrees comes out a rounding step below 0: still a pure reactance
        {"# MHz Z MA\n7 1 270\n", 50, {{7e6, {0, -50}}}},
        // S11 = -0.1: 50 * 0.9 / 1.1
        {"# Hz S RI\n+7e6 -1E-1 0\n", 50, {{7e6, {40.909090909091, 0}}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const OnePortLoad load = ParseOnePortTouchstone(c.text);
        EXPECT_EQ(load.referenceR, c.referenceR);
        ASSERT_EQ(load.points.size(), c.points.size());
        for (std::size_t i = 0; i < c.points.size(); ++i)
            ExpectSameLoad(load.points[i], c.points[i], 1e-12);
    }
}

TEST(OnePortTouchstone, NamesTheLineAtFault) {
    const struct {
        std::string text;
        int line;
        std::string message;
    } cases[] = {
        {"# MHz\n7 0.2 90 1 2 3 4 5 6\n", 2,
         "line 2: a one-port line holds a frequency and two numbers; it has 9"},
        {"# MHz\n\n7 0.2\n", 3,
         "line 3: a one-port line holds a frequency and two numbers; it has 2"},
        {"# MHz\n7 abc 0\n", 2, "line 2: \"abc\" is not a number"},
        {"7 nan 0\n", 1, "line 1: \"nan\" is not a number"},
        {"7,1 0 0\n", 1, "line 1: \"7,1\" is not a number"},
        {"\x01\x02\xff\n", 1, "line 1: \"???\" is not a number"},
        {"7 1e999 0\n", 1, "line 1: \"1e999\" is out of range"},
        {"7 0 -inf\n", 1, "line 1: \"-inf\" is out of range"},
        {"# MHz\n7.1 0 0\n7 0 0\n", 3,
         "line 3: the frequency 7 MHz is not above the one before (7.1 MHz)"},
        {"# MHz\n7 0 0\r\n7 0 0\r\n", 3,
         "line 3: the frequency 7 MHz is not above the one before (7 MHz)"},
        {"0 0 0\n", 1, "line 1: the frequency 0 GHz is not above 0"},
        {"1e300 0 0\n", 1, "line 1: the frequency 1e300 GHz is out of range"},
        {"# MHz\n7 0 0\n! note\n# kHz\n", 4,
         "line 4: a second option line changes the format; one file holds one format"},
        {"7 0 0\n# MHz\n", 2, "line 2: the option line must come before the first data line"},
        {"[Version] 2.0\n", 1,
         "line 1: Touchstone 2.0 keywords are not read; save the file as version 1.1"},
        {"# MHz G MA\n", 1,
         "line 1: G parameters describe a two-port; a one-port file holds S, Y or Z parameters"},
        {"# MHz Q\n", 1,
         "line 1: the option \"Q\" is unknown (known: Hz, kHz, MHz, GHz, S, Y, Z, MA, DB, RI and R "
         "with a value)"},
        {"# MHz R\n", 1, "line 1: R is not followed by the reference resistance"},
        {"# R 0\n", 1, "line 1: the reference resistance must be above 0 ohms; it is 0"},
        {"# MHz GHz\n", 1, "line 1: the option line gives the frequency unit twice"},
        {"# MHz S MA\n7 1.2 0\n", 2,
         "line 2: the load reflects more than it receives (|S11| = 1.2)"},
        {"# MHz S MA\n7 1.00000001 0\n", 2,
         "line 2: the load reflects more than it receives (|S11| = 1.00000001)"},
        {"# MHz S MA\n7 1 0\n", 2, "line 2: the load has no finite impedance"},
        {"# MHz Y RI\n7 0 0\n", 2, "line 2: the load has no finite impedance"},
        {"# MHz Z RI\n7 -0.1 1\n", 2, "line 2: the load's resistance is below 0 (-5 ohms)"},
        {"# MHz S MA\n7 -0.2 90\n", 2, "line 2: the magnitude -0.2 is below 0"},
        {"# MHz S DB\n7 7000 0\n", 2, "line 2: the level 7000 dB is too high"},
        {"! only a comment\n# MHz\n\n", 0, "the file holds no data lines"},
    };
    for (const auto& c : cases) {
        try {
            ParseOnePortTouchstone(c.text);
            ADD_FAILURE() << "accepted: " << c.text;
        } catch (const LoadFileError& error) {
            EXPECT_EQ(error.what(), c.message);
            EXPECT_EQ(error.line(), c.line) << c.message;
        }
    }
}

TEST(OnePortTouchstone, TakesAtMostTheMostPoints) {
    std::string text = "# Hz S RI\n";
    for (std::size_t i = 1; i <= kMaxLoadPoints; ++i)
        text += std::to_string(i) + " 0 0\n";
    EXPECT_EQ(ParseOnePortTouchstone(text).points.size(), kMaxLoadPoints);
    text += "1e9 0 0\n";
    EXPECT_EQ(LoadRefusal([&] { ParseOnePortTouchstone(text); }),
              "line 100002: the file holds more than 100000 points");
}

// The file is read as it is, never waited on, and refused past 8 MiB.
TEST(OnePortTouchstone, ReadsAFileWithoutWaitingAndWithinItsBound) {
    TempFolder folder;
    const std::string path = folder.File("antenna.s1p");
    std::string text = "# MHz S RI\r\n7 0 0\r\n";
    text.resize(kMaxLoadFileBytes, ' ');
    WriteBytes(path, text);
    EXPECT_EQ(ReadOnePortTouchstone(path).points.size(), 1u);
    std::ofstream(path, std::ios::app) << ' ';
    EXPECT_EQ(LoadRefusal([&] { ReadOnePortTouchstone(path); }), "the file is larger than 8 MiB");

    testing::MakePipe(folder.File("pipe.s1p"));
    std::string refusal;
    EXPECT_TRUE(testing::FinishesWithin(2s, [&] {
        try {
            ReadOnePortTouchstone(folder.File("pipe.s1p"));
        } catch (const FileError& error) {
            refusal = error.what();
        }
    }));
    EXPECT_EQ(refusal, folder.File("pipe.s1p") + ": not a regular file");
}

// A short vertical as series R, L and C, written by scikit-rf in three formats and units against
// 75 ohms; scikit-rf's own impedances are the reference.
const char kAntennaWriter[] = R"(import sys
folder = sys.argv[1]
frequency = skrf.Frequency(1.8, 29.7, 12, 'mhz')
w = 2 * np.pi * frequency.f
z = 36 + 1j * (w * 12e-6 - 1 / (w * 40e-12))
antenna = skrf.Network(frequency=frequency, s=skrf.z2s(z.reshape(-1, 1, 1), 75), z0=75)
for form, unit in (('ma', 'khz'), ('db', 'ghz'), ('ri', 'hz')):
    antenna.frequency.unit = unit
    antenna.write_touchstone(form, dir=folder, form=form, skrf_comment=False)
with open(folder + '/z.txt', 'w') as out:
    for f, z in zip(antenna.f, antenna.z[:, 0, 0]):
        print(repr(f), repr(z.real), repr(z.imag), file=out)
)";

TEST(OnePortTouchstone, AgreesWithScikitRf) {
    const auto python = testing::PythonWithScikitRf();
    if (!python) GTEST_SKIP() << "python3 with scikit-rf is not installed";
    TempFolder folder;
    WriteBytes(folder.File("write.py"), std::string(testing::kScikitRfImport) + kAntennaWriter);
    ASSERT_TRUE(testing::RunsClean(*python + " " + folder.File("write.py") + " " + folder.str() +
                                   " > /dev/null 2>&1"));
    std::vector<LoadPoint> expected;
    std::ifstream read(folder.File("z.txt"));
    for (LoadPoint p; read >> p.frequency >> p.z.re >> p.z.im;)
        expected.push_back(p);
    ASSERT_EQ(expected.size(), 12u);
    for (const char* name : {"ma.s1p", "db.s1p", "ri.s1p"}) {
        SCOPED_TRACE(name);
        const OnePortLoad load = ReadOnePortTouchstone(folder.File(name));
        EXPECT_EQ(load.referenceR, 75);
        ASSERT_EQ(load.points.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i)
            ExpectSameLoad(load.points[i], expected[i], 1e-6);
    }
}

}  // namespace
}  // namespace varo
