#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "app/cli/cli.h"
#include "support/temp_folder.h"

namespace varo::cli {
namespace {

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

Outcome RunCli(const std::vector<std::string>& words) {
    std::ostringstream out, err;
    const int status = Run(words, out, err);
    return {status, out.str(), err.str()};
}

using varo::testing::ReadBytes;

// A fresh folder whose files are named by appending to it.
class TempFolder : public varo::testing::TempFolder {
  public:
    std::string operator/(const std::string& name) const { return File(name); }
};

TEST(CliUsage, MistakesExitTwoWithReasonAndUsage) {
    const struct {
        std::vector<std::string> words;
        std::string reason;
    } cases[] = {
        {{}, "no command given"},
        {{"draw"}, "unknown command 'draw'"},
        {{"design", "--colour", "red"}, "unknown option '--colour'"},
        {{"design", "--frequency"}, "--frequency needs a value"},
        {{"design", "--plate", "-5"}, "--plate needs a value"},
        {{"design", "--json=yes"}, "--json takes no value"},
        {{"design", "3.6M"}, "unexpected argument '3.6M'"},
        {{"plate-load", "--swing", "1k"}, "--power is required"},
        {{"plate-load", "--swing", "1k", "--power", "1", "--class", "D"}, "unknown class 'D'"},
        {{"coil", "--diameter", "2"}, "--inductance is required"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = RunCli(c.words);
        EXPECT_EQ(outcome.status, 2) << c.reason;
        EXPECT_NE(outcome.err.find("varo-cli: " + c.reason), std::string::npos) << outcome.err;
        EXPECT_NE(outcome.err.find("usage: varo-cli"), std::string::npos);
        EXPECT_TRUE(outcome.out.empty());
    }
}

TEST(CliUsage, HelpOnEverySubcommand) {
    for (const std::string command : {"design", "plate-load", "coil"}) {
        const Outcome outcome = RunCli({command, "--help"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out.rfind("usage: varo-cli " + command, 0), 0u) << outcome.out;
    }
}

TEST(CliDesign, OptionsAreEntryTextsAsTyped) {
    const struct {
        std::vector<std::string> words;
        std::vector<std::string> expected;
    } cases[] = {
        {{},
         {"\"frequency\": 3900000", "\"plateR\": 1500", "\"piQ\": 12", "\"messages\": []",
          "\"lPhase\"", "\"iL2\"", "\"n\": 5", "\"zAngle\""}},
        {{"--frequency", "3,6 M", "--plate", "2,5k", "--q", "10"},
         {"\"frequency\": 3600000", "\"plateR\": 2500", "\"piQ\": 10"}},
        // The "=" form lets a value begin with a minus.
        {{"--load=-5"}, {"\"loadR\": 0.100000001", "Minimum output load has been changed"}},
        // Transducer gain against twice the plate load: 10 log10(8/9) = -0.51 dB.
        {{"--generator", "3k"}, {"\"genMultiplier\": 2", "\"transmissionDb\": -0.51"}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> words{"design", "--json"};
        words.insert(words.end(), c.words.begin(), c.words.end());
        const Outcome outcome = RunCli(words);
        EXPECT_EQ(outcome.status, 0);
        for (const std::string& text : c.expected)
            EXPECT_NE(outcome.out.find(text), std::string::npos) << text << "\n" << outcome.out;
    }
}

TEST(CliDesign, ReadableReportShowsComponentsAndHarmonics) {
    const Outcome outcome = RunCli({"design", "--swing", "2500", "--power", "1000"});
    ASSERT_EQ(outcome.status, 0);
    for (const char* text : {"Components", "C1:", "pF", "uH", "2.5kVpeak",
                             "Total phase: ", "Harmonics", "Fund", "5th"})
        EXPECT_NE(outcome.out.find(text), std::string::npos) << text;
}

TEST(CliDesign, WritesEveryRequestedFile) {
    TempFolder folder;
    const Outcome outcome =
        RunCli({"design", "--ltspice", folder / "net.asc", "--quarn", folder / "net.kvf",
                "--sweep-csv", folder / "sweep.csv", "--overlay-dir", folder / "", "--save-session",
                folder / "VARO.CFG"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadBytes(folder / "net.asc").rfind("Version 4\r\nSHEET 1  1000 \r\n", 0), 0u);
    EXPECT_EQ(ReadBytes(folder / "net.kvf").rfind("Quarn circuit file by VARO\r\n", 0), 0u);
    const std::string csv = ReadBytes(folder / "sweep.csv");
    EXPECT_EQ(csv.rfind("frequency,transmission,phase,return,vswr,zMagnitude,zAngle\n", 0), 0u);
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 2002);
    EXPECT_EQ(ReadBytes(folder / "Data.S21").rfind(" 1950000 ", 0), 0u);
    EXPECT_NE(ReadBytes(folder / "VARO.CFG").find("Frequency: 3900000\r\n"), std::string::npos);
}

TEST(CliDesign, SessionFileRoundTrip) {
    TempFolder folder;
    ASSERT_EQ(RunCli({"design", "--frequency", "7.1M", "--plate", "2k", "--swing", "2k",
                      "--save-session", folder / "VARO.CFG"})
                  .status,
              0);
    const Outcome outcome = RunCli({"design", "--json", "--session", folder / "VARO.CFG"});
    EXPECT_NE(outcome.out.find("\"frequency\": 7100000"), std::string::npos);
    EXPECT_NE(outcome.out.find("\"plateR\": 2000"), std::string::npos);
    EXPECT_NE(outcome.out.find("\"peakSwing\": 2000"), std::string::npos);
}

TEST(CliDesign, UnwritableFileExitsOneAfterTheProgramsMessage) {
    const Outcome outcome = RunCli({"design", "--ltspice", "/nonexistent-folder/net.asc"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("We could not write the LTspice schematic file"), std::string::npos);
}

TEST(CliPlateLoad, ClassAndLimitReachTheHelper) {
    const Outcome ab =
        RunCli({"plate-load", "--json", "--swing", "2500", "--power", "1000", "--class", "AB"});
    EXPECT_NE(ab.out.find("\"newPlateLoad\": 3906.25"), std::string::npos) << ab.out;
    const Outcome low = RunCli({"plate-load", "--swing", "0.5", "--power", "100"});
    EXPECT_NE(low.err.find("Voltage level has been reset to the minimum-allowed value of 1 volt"),
              std::string::npos);
    EXPECT_NE(low.out.find("Class factor K: 2\n"), std::string::npos) << low.out;
}

TEST(CliCoil, WorkedExampleInInchesAndCentimetres) {
    const Outcome inches = RunCli({"coil", "--json", "--inductance", "10u", "--diameter", "2",
                                   "--length", "4", "--gauge", "14"});
    EXPECT_NE(inches.out.find("\"coilTurns\": 22.13"), std::string::npos) << inches.out;
    EXPECT_NE(inches.out.find("\"criticalGauge\": 6"), std::string::npos);
    EXPECT_NE(inches.out.find("\"stopped\": false"), std::string::npos);
    const Outcome cm = RunCli({"coil", "--json", "--cm", "--inductance", "10u", "--diameter",
                               "5.08", "--length", "10.16"});
    EXPECT_NE(cm.out.find("\"coilDiameter\": 2"), std::string::npos) << cm.out;
    EXPECT_NE(cm.out.find("\"coilTurns\": 22.13"), std::string::npos);
}

TEST(CliCoil, AStoppedCalculationSaysSo) {
    const Outcome outcome = RunCli({"coil", "--json", "--inductance", "10u"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("\"stopped\": true"), std::string::npos);
    EXPECT_NE(outcome.err.find("We need exactly two entries"), std::string::npos);
}

}  // namespace
}  // namespace varo::cli
