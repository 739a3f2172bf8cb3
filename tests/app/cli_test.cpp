#include "app/cli/cli.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <streambuf>

#include "app/cli/json_writer.h"
#include "support/temp_folder.h"

namespace varo::cli {
namespace {

using varo::testing::ReadBytes;
using varo::testing::TempFolder;

struct Outcome {
    int status;
    std::string out, err;
};

Outcome RunCli(const std::vector<std::string>& words) {
    std::ostringstream out, err;
    const int status = Run(words, out, err);
    return {status, out.str(), err.str()};
}

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// Mistakes exit 2 with the reason and the usage; a failed file exits 1 after the program's
// message, its path and reason; help exits 0.
TEST(Cli, ExitStatusAndWhatItSays) {
    const struct {
        std::vector<std::string> words;
        int status;
        std::string text;  // in standard error, or in the output for --help
    } cases[] = {
        {{}, 2, "varo-cli: no command given"},
        {{"draw"}, 2, "varo-cli: unknown command 'draw'"},
        {{"design", "--frequency"}, 2, "varo-cli: --frequency needs a value"},
        {{"design", "--plate", "-5"}, 2, "varo-cli: --plate needs a value"},
        {{"design", "--json=yes"}, 2, "varo-cli: --json takes no value"},
        {{"design", "3.6M"}, 2, "varo-cli: unexpected argument '3.6M'"},
        {{"plate-load", "--class", "D"}, 2, "varo-cli: unknown class 'D'"},
        {{"coil", "--diameter", "2"}, 2, "varo-cli: --inductance is required"},
        {{"design", "--coil-q", "0"}, 2, "--coil-q needs an unloaded Q above 0"},
        {{"design", "--touchstone", "net.txt"},
         2,
         "--touchstone needs a file name ending in .s2p or .s1p"},
        {{"design", "--ltspice", "/nonexistent/x.ASC"},
         1,
         "We could not write the LTspice schematic file\n"
         "/nonexistent/x.ASC: No such file or directory\n"},
        {{"design", "--json", "--quarn=/nonexistent/\xff"},
         1,
         "\"The Quarn file was not written.\\n/nonexistent/\\ufffd: No such file or directory\""},
        {{"design", "--spice", "/nonexistent/net.cir"}, 1, "We could not write the SPICE netlist"},
        {{"design", "--help"},
         0,
         "[--spice FILE] [--touchstone FILE] [--losses]\n"
         "                       [--coil-q Q] [--capacitor-q Q]\n"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = RunCli(c.words);
        EXPECT_EQ(outcome.status, c.status) << c.text;
        const bool json = c.status == 0 || Has(c.text, "\"");
        EXPECT_TRUE(Has(json ? outcome.out : outcome.err, c.text)) << outcome.out << outcome.err;
        if (c.status == 2) {
            EXPECT_TRUE(Has(outcome.err, "usage: varo-cli")) << c.text;
        }
    }
}

// Standard output on a full disk: every write fails.
class FullDevice : public std::streambuf {
  protected:
    int_type overflow(int_type) override { return traits_type::eof(); }
};

TEST(Cli, AReportThatCannotBeWrittenExitsOne) {
    FullDevice device;
    std::ostream out(&device);
    std::ostringstream err;
    EXPECT_EQ(cli::Run({"design", "--json"}, out, err), 1);
    EXPECT_TRUE(Has(err.str(), "varo-cli: could not write to standard output"));
}

TEST(JsonString, EveryStringIsValidUtf8) {
    const struct {
        std::string text, json;
    } cases[] = {
        {"\xC3\xA4 \xF0\x9F\x98\x80", "\"\xC3\xA4 \xF0\x9F\x98\x80\""},  // kept as they are
        {"\xC3", "\"\\ufffd\""},                                         // cut short
        {"\xC0\xAF", "\"\\ufffd\\ufffd\""},                              // overlong
        {"\xED\xA0\x80", "\"\\ufffd\\ufffd\\ufffd\""},                   // a surrogate
        {"a\x01\"", "\"a\\u0001\\\"\""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(JsonString(c.text), c.json) << c.text;
}

// Options are entry texts as typed; the helpers' limits apply with their messages.
TEST(CliDesign, OptionsAreEntryTextsAsTyped) {
    const struct {
        std::vector<std::string> words;
        std::vector<std::string> expected;
        std::string err;
    } cases[] = {
        {{"--frequency", "3,6 M", "--plate", "2,5k", "--q", "10"},
         {"\"frequency\": 3600000", "\"plateR\": 2500", "\"piQ\": 10"},
         ""},
        // The "=" form lets a value begin with a minus.
        {{"--load=-5"},
         {"\"loadR\": 0.100000001", "Minimum output load has been changed"},
         "Minimum output load has been changed to minimum-allowed value of .1 ohms\n"},
        // Transducer gain against twice the plate load: 10 log10(8/9) = -0.51 dB.
        {{"--generator", "3k"}, {"\"genMultiplier\": 2", "\"transmissionDb\": -0.51"}, ""},
        {{"--power=2E7"},
         {"\"rfPower\": 10000000"},
         "Power level has been reset to the maximum-allowed value of 10000k watts\n"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> words{"design", "--json"};
        words.insert(words.end(), c.words.begin(), c.words.end());
        const Outcome outcome = RunCli(words);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, c.err);
        for (const std::string& text : c.expected)
            EXPECT_TRUE(Has(outcome.out, text)) << text << "\n" << outcome.out;
    }
}

// The pi network 2000 -> 50 ohms at 3.8 MHz, Q 12, has no L section, and none is reported
// (the start-up design's L2 and C3 stay in the state); coils of Q 300. The tank losses show
// only where a loss Q is given.
TEST(CliDesign, ReadableReportAndJsonCarryTheTankLosses) {
    std::vector<std::string> words{
        "design", "--frequency", "3.8M", "--plate",       "2k", "--intermediate", "50", "--load",
        "50",     "--power",     "100",  "--capacitor-q", "2k"};
    const std::string report = RunCli(words).out;
    for (const char* text :
         {"  C1:                     222.781pF\n", "Total phase: -138.34 deg.", "  5th    19M ",
          "Tank losses (coil Q 300, capacitor Q 2000)\n"
          "  Efficiency (%):         95.6 \n",
          "  XL2:                    \n  XC3:                    \n", "  C3:                     \n"})
        EXPECT_TRUE(Has(report, text)) << text << "\n" << report;
    words.push_back("--json");
    const std::string json = RunCli(words).out;
    EXPECT_TRUE(Has(json, "\"lossDb\": 0.1954"));
    for (const char* absent : {"\"xL2\": null", "\"xC3\": null", "\"L2\": null", "\"C3\": null"})
        EXPECT_TRUE(Has(json, absent)) << absent;
    EXPECT_FALSE(Has(RunCli({"design", "--json"}).out, "\"losses\""));
}

TEST(CliDesign, WritesEveryRequestedFileAndReadsTheSessionBack) {
    TempFolder folder;
    const Outcome outcome =
        RunCli({"design", "--plate", "2k", "--ltspice", folder.File("net.asc"), "--quarn",
                folder.File("net.kvf"), "--sweep-csv", folder.File("sweep.csv"), "--overlay-dir",
                folder.File(""), "--save-session", folder.File("VARO.CFG"), "--spice",
                folder.File("net.cir"), "--touchstone", folder.File("net.S2P")});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadBytes(folder.File("net.asc")).rfind("Version 4\r\nSHEET 1  1000 \r\n", 0), 0u);
    EXPECT_EQ(ReadBytes(folder.File("net.kvf")).rfind("Quarn circuit file by VARO\r\n", 0), 0u);
    const std::string csv = ReadBytes(folder.File("sweep.csv"));
    EXPECT_EQ(csv.rfind("Frequency (Hz),Transmission (dB),Phase (deg),Return re 2000 ohms (dB),", 0),
              0u);
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 2002);
    EXPECT_EQ(ReadBytes(folder.File("Data.S21")).rfind(" 1950000 ", 0), 0u);
    EXPECT_EQ(ReadBytes(folder.File("net.cir")).rfind("* VARO pi-L network: ", 0), 0u);
    EXPECT_TRUE(Has(ReadBytes(folder.File("net.S2P")), "\r\n# Hz S MA R 50\r\n"));
    const Outcome read = RunCli({"design", "--json", "--session", folder.File("VARO.CFG")});
    EXPECT_TRUE(Has(read.out, "\"plateR\": 2000"));
}

std::string Section(const std::string& json, const std::string& key) {
    const std::size_t start = json.find("\"" + key + "\"");
    return json.substr(start, json.find(']', start) - start);
}

// Writing the Quarn file reads the entries again: 1234.5 was shown as "1.235k" and reads back as
// 1235, and the whole report then describes that design.
TEST(CliDesign, TheReportDescribesTheStateTheFilesLeave) {
    TempFolder folder;
    const Outcome exported =
        RunCli({"design", "--json", "--plate", "1234.5", "--quarn", folder.File("x.KVF")});
    const Outcome direct = RunCli({"design", "--json", "--plate", "1235"});
    EXPECT_TRUE(Has(exported.out, "\"plateR\": 1235"));
    EXPECT_EQ(Section(exported.out, "harmonics"), Section(direct.out, "harmonics"));
    EXPECT_EQ(Section(exported.out, "stresses"), Section(direct.out, "stresses"));
}

TEST(CliHelpers, PlateLoadAndCoilReachTheirHelpers) {
    const Outcome ab =
        RunCli({"plate-load", "--json", "--swing", "2500", "--power", "1000", "--class", "AB"});
    EXPECT_TRUE(Has(ab.out, "\"newPlateLoad\": 3906.25")) << ab.out;
    // No class given: the factor keeps its starting value; the helper's limits speak.
    const Outcome low = RunCli({"plate-load", "--swing", "0.5", "--power", "100"});
    EXPECT_TRUE(Has(low.out, "Class factor K: 2\n")) << low.out;
    EXPECT_TRUE(
        Has(low.err, "Voltage level has been reset to the minimum-allowed value of 1 volt"));
    const Outcome cm = RunCli({"coil", "--json", "--cm", "--inductance", "10u", "--diameter",
                               "5.08", "--length", "10.16", "--gauge", "14"});
    EXPECT_TRUE(Has(cm.out, "\"coilDiameter\": 2")) << cm.out;  // kept in inches
    const Outcome stopped = RunCli({"coil", "--json", "--inductance", "10u"});
    EXPECT_EQ(stopped.status, 0);
    EXPECT_TRUE(Has(stopped.out, "\"stopped\": true"));
    EXPECT_TRUE(Has(stopped.err, "We need exactly two entries"));
}

}  // namespace
}  // namespace varo::cli
