#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/cli/cli.h"

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

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class TempFolder {
  public:
    TempFolder() {
        path_ =
            std::filesystem::temp_directory_path() /
            ("varo-cli-test-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
             "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() { std::filesystem::remove_all(path_); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
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

TEST(CliDesign, EqualsFormLetsAValueBeginWithMinus) {
    const Outcome outcome = RunCli({"design", "--json", "--load=-5"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("\"loadR\": 0.100000001"), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.err,
              "Minimum output load has been changed to minimum-allowed value of .1 ohms\n");
}

TEST(CliDesign, DefaultsGiveTheStartUpDesignAndAllKeys) {
    const Outcome outcome = RunCli({"design", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    for (const char* key :
         {"\"inputs\"", "\"frequency\": 3900000", "\"plateR\": 1500", "\"intermediateR\": 300",
          "\"loadR\": 50", "\"piQ\": 12", "\"genMultiplier\": 1", "\"messages\": []", "\"derived\"",
          "\"omega\"", "\"lPhase\"", "\"stresses\"", "\"iL2\"", "\"harmonics\"", "\"n\": 5",
          "\"zAngle\""})
        EXPECT_NE(outcome.out.find(key), std::string::npos) << key;
    EXPECT_TRUE(outcome.err.empty());
}

TEST(CliDesign, MessagesKeepTheirOrderAndCrLfInJson) {
    const Outcome outcome = RunCli({"design", "--json", "--load", "0", "--intermediate", "0"});
    const auto first = outcome.out.find("Minimum output load");
    const auto second = outcome.out.find("changed from zero to0.1ohms");
    ASSERT_NE(first, std::string::npos);
    ASSERT_NE(second, std::string::npos);
    EXPECT_LT(first, second);
    // The component calculation fails for a Q far too low for 1500 to 0.1 ohms.
    EXPECT_NE(outcome.out.find("We have a ComponentCalculations error.\\r\\n   \\r\\n"),
              std::string::npos);
}

TEST(CliDesign, EntryTextsAreReadAsTyped) {
    const Outcome outcome =
        RunCli({"design", "--json", "--frequency", "3,6 M", "--plate", "2,5k", "--q", "10"});
    EXPECT_NE(outcome.out.find("\"frequency\": 3600000"), std::string::npos);
    EXPECT_NE(outcome.out.find("\"plateR\": 2500"), std::string::npos);
    EXPECT_NE(outcome.out.find("\"piQ\": 10"), std::string::npos);
}

TEST(CliDesign, GeneratorResistanceSetsTheMultiplier) {
    const Outcome outcome = RunCli({"design", "--json", "--generator", "3k"});
    EXPECT_NE(outcome.out.find("\"genMultiplier\": 2"), std::string::npos) << outcome.out;
    // Transducer gain against a generator of twice the plate load: 10 log10(8/9) = -0.51 dB.
    EXPECT_NE(outcome.out.find("\"transmissionDb\": -0.51"), std::string::npos) << outcome.out;
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
    EXPECT_EQ(ReadFile(folder / "net.asc").rfind("Version 4\r\nSHEET 1  1000 \r\n", 0), 0u);
    EXPECT_EQ(ReadFile(folder / "net.kvf").rfind("Quarn circuit file by VARO\r\n", 0), 0u);
    const std::string csv = ReadFile(folder / "sweep.csv");
    EXPECT_EQ(csv.rfind("frequency,transmission,phase,return,vswr,zMagnitude,zAngle\n", 0), 0u);
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 2002);
    EXPECT_EQ(ReadFile(folder / "Data.S21").rfind(" 1950000 ", 0), 0u);
    EXPECT_NE(ReadFile(folder / "VARO.CFG").find("Frequency: 3900000\r\n"), std::string::npos);
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

TEST(CliPlateLoad, ClassesAndLimits) {
    const struct {
        std::vector<std::string> words;
        std::string expected;
    } cases[] = {
        {{"--swing", "2500", "--power", "1000", "--class", "AB"}, "\"newPlateLoad\": 3906.25"},
        {{"--swing", "1000", "--power", "100", "--class", "C"}, "\"newPlateLoad\": 5000"},
        {{"--swing", "1000", "--power", "100"}, "\"classFactor\": 2"},
        {{"--swing", "1000", "--power", "100", "--class", "A"}, "\"newPlateLoad\": 7692.3"},
        {{"--swing", "0.5", "--power", "100"},
         "Voltage level has been reset to the minimum-allowed value of 1 volt"},
        {{"--swing", "1k", "--power", "2E7"}, "\"rfPower\": 10000000"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> words{"plate-load", "--json"};
        words.insert(words.end(), c.words.begin(), c.words.end());
        const Outcome outcome = RunCli(words);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_NE(outcome.out.find(c.expected), std::string::npos) << outcome.out;
    }
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
