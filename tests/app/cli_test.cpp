#include "app/cli/cli.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <streambuf>

#include "core/numtext.h"
#include "model/fixed_text.h"
#include "support/pdf_reading.h"
#include "support/temp_folder.h"

namespace varo::cli {
namespace {

using varo::testing::ReadBytes;
using varo::testing::TempFolder;
using varo::testing::WriteBytes;

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

// Written out here, not taken from the program: these texts are varo-cli's interface.
const std::string kOverview =
    "usage: varo-cli <command> [options]\n"
    "commands:\n"
    "  design       design a pi-L network and analyse it (varo-cli design --help)\n"
    "  plate-load   plate load from peak swing, power and class\n"
    "  coil         single-layer coil winding for an inductance\n"
    "  bands        one tank for several bands, checked against the capacitors and the\n"
    "               harmonic limit (varo-cli bands --help)\n"
    "  load-range   the network re-tuned for loads beyond a resistance: one impedance or an\n"
    "               SWR circle, the worst stresses and the capacitances that cover them\n"
    "               (varo-cli load-range --help)\n";
const std::string kDesignUsage =
    "usage: varo-cli design [--frequency T] [--plate T] [--intermediate T] [--load T] [--q T]\n"
    "                       [--swing T] [--power T] [--generator T] [--session FILE] [--json]\n"
    "                       [--sweep-csv FILE] [--ltspice FILE] [--quarn FILE]\n"
    "                       [--overlay-dir DIR] [--save-session FILE] [--pdf FILE]\n"
    "                       [--spice FILE] [--touchstone FILE] [--losses]\n"
    "                       [--coil-q Q] [--capacitor-q Q] [--l1-winding D,L,G]\n"
    "                       [--l2-winding D,L,G] [--open FILE.varo] [--save FILE.varo]\n"
    "  Each T is entry text as typed into the program's field (\"3.6M\", \"2,5k\");\n"
    "  --generator is the generator resistance in ohms. Starting values are the defaults,\n"
    "  or those of the last-session file given with --session, then those of the design\n"
    "  file given with --open; --save keeps the design as it ends in a design file.\n"
    "  --pdf writes the printed design report as a one-page PDF (A4, or Letter where the\n"
    "  locale measures in inches), without a screen.\n"
    "  --spice writes a SPICE netlist (.cir) that ngspice and LTspice run as it stands;\n"
    "  --touchstone writes the network's S-parameters, FILE.s2p (two-port, 50 ohms) or\n"
    "  FILE.s1p (input reflection referred to the plate load).\n"
    "  --losses reports the tank's efficiency and each part's dissipation at the RF power,\n"
    "  with coils of unloaded Q 300 and capacitors of Q 2000 unless --coil-q or\n"
    "  --capacitor-q (which imply --losses) say otherwise. --l1-winding and --l2-winding\n"
    "  (which imply --losses too) wind that coil from its diameter, length and wire gauge\n"
    "  in inches, as the inductor screen does, and take its own Q at the frequency.\n";
const std::string kPlateLoadUsage =
    "usage: varo-cli plate-load --swing T --power T [--class A|AB|B|C] [--json]\n"
    "  The plate load for a peak plate swing (volts) and an RF power (watts) in a class of\n"
    "  operation (none given: K = 2).\n";
const std::string kCoilUsage =
    "usage: varo-cli coil --inductance T [--diameter T] [--length T] [--turns T] [--gauge T]\n"
    "                     [--frequency F] [--cm] [--json]\n"
    "  A single-layer winding from two of diameter, length and turns; with --cm the diameter\n"
    "  and length are in centimetres. JSON values are in inches whatever the unit.\n"
    "  Beside the formula's figures, the coil as built: the exact current-sheet inductance, the\n"
    "  inductance as wound with round wire (with --gauge) and, at the operating frequency\n"
    "  --frequency, its AC resistance and unloaded Q; its self-capacitance and self-resonance.\n"
    "  JSON: inductanceSheet, inductanceWound (H), nagaoka, acResistance (ohms), q,\n"
    "  selfCapacitance (F), selfResonance (Hz); null where not known.\n";

// Help exits 0; a usage mistake exits 2 with the reason and the usage of what was mistyped;
// the helpers' readable reports, and their limits' messages, whole.
TEST(Cli, WholeTextsAndExitStatus) {
    const auto mistake = [](const std::string& reason, const std::string& usage) {
        return "varo-cli: " + reason + "\n" + usage;
    };
    const std::string needsValue =
        "--plate needs a value (write --plate=VALUE for a value that begins with \"-\")";
    const struct {
        std::vector<std::string> words;
        int status;
        std::string out, err;
    } cases[] = {
        // clang-format off
        {{"--help"}, 0, kOverview, ""},
        {{"design", "--help"}, 0, kDesignUsage, ""},
        {{"plate-load", "--help"}, 0, kPlateLoadUsage, ""},
        {{}, 2, "", mistake("no command given", kOverview)},
        {{"draw"}, 2, "", mistake("unknown command 'draw'", kOverview)},
        {{"design", "-h"}, 0, kDesignUsage, ""},
        {{"design", "--plate", "-x"}, 2, "", mistake(needsValue, kDesignUsage)},
        {{"design", "--plate="}, 2, "", mistake(needsValue, kDesignUsage)},
        {{"design", "--plate"}, 2, "", mistake(needsValue, kDesignUsage)},
        {{"design", "--json=yes"}, 2, "", mistake("--json takes no value", kDesignUsage)},
        {{"design", "-q", "10"}, 2, "", mistake("unexpected argument '-q'", kDesignUsage)},
        {{"design", "--colour"}, 2, "", mistake("unknown option '--colour'", kDesignUsage)},
        {{"design", "--coil-q", "0"}, 2, "", mistake("--coil-q needs an unloaded Q above 0", kDesignUsage)},
        {{"design", "--touchstone", "net.txt"}, 2, "",
         mistake("--touchstone needs a file name ending in .s2p or .s1p", kDesignUsage)},
        {{"plate-load", "--swing", "1k", "--power", "1", "--class", "D"}, 2, "",
         mistake("unknown class 'D' (use A, AB, B or C)", kPlateLoadUsage)},
        {{"coil", "--diameter", "2"}, 2, "", mistake("--inductance is required", kCoilUsage)},
        {{"design", "--l1-winding", "2,4,14,1"}, 2, "",
         mistake("--l1-winding needs DIAMETER,LENGTH,GAUGE in inches, such as 2,4,14", kDesignUsage)},
        {{"coil", "--inductance", "10u", "--frequency", "abc"}, 2, "",
         mistake("--frequency needs a frequency above 0, such as 7.15M", kCoilUsage)},
        // A number after an option is its value, even with a minus sign.
        {{"coil", "--inductance", "10u", "--frequency", "-7M"}, 2, "",
         mistake("--frequency needs a frequency above 0, such as 7.15M", kCoilUsage)},
        // The last of a repeated option counts.
        {{"plate-load", "--swing", "0.5", "--power", "5", "--power", "100"}, 0,
         "Peak plate swing, volts: 1 \nRF power, RMS watts: 100 \nClass factor K: 2\n"
         "New plate load: 0.005  ohms\n"
         "Below the design screen's least plate load, .1 ohms: the design cannot be worked out "
         "with it.\n",
         "Voltage level has been reset to the minimum-allowed value of 1 volt\n"},
        // The worked winding typed in centimetres: held in inches, shown in centimetres. As built
        // at 7.15 MHz, worked by hand (22.1359 turns): sheet 10.0497 uH (0.8181 of the uniform
        // field's), round wire +0.1245 uH; straight wire 0.48754 ohm times Medhurst's 1.40341;
        // Medhurst's self-capacitance 0.49612 pF/cm over 5.08 cm; 28.6 MHz within 3.143 MHz of
        // 31.43 MHz. Without the wire the self-resonance rests on the sheet: 31.624 MHz.
        {{"coil", "--cm", "--inductance", "10u", "--diameter", "5.08", "--length", "10.16", "--gauge", "14",
          "--frequency", "7.15M"}, 0,
         "Inductance: 10uH\nMedian diameter (cm): 5.08\nLength (cm): 10.16\nTurns:  22.136 \n"
         "Turns per cm:  2.1787 \nWire length (cm):  353.42 \nCritical gauge:  6\n"
         "Actual gauge: 14\nWire diameter (cm):  0.16344 \nPercent fill:  35.609 \n"
         "As built, at 7.15MHz:\n"
         "  Current sheet (exact): 10.0497uH (Nagaoka 0.8181)\n"
         "  As wound (round wire): 10.1742uH, +1.74 % against the formula\n"
         "  AC resistance: 0.6842 ohm\n"
         "  Unloaded Q: 668\n"
         "  Self-capacitance: 2.52028pF\n"
         "  Self-resonance: 31.43MHz\n"
         "  Within 10 % of the self-resonance: the 4th harmonic (28.6MHz).\n", ""},
        // Without a gauge or a frequency only what the winding alone fixes.
        {{"coil", "--inductance", "10u", "--diameter", "2", "--length", "4"}, 0,
         "Inductance: 10uH\nMedian diameter (in): 2\nLength (in): 4\nTurns:  22.136 \n"
         "Turns per in:  5.534 \nWire length (in):  139.14 \nCritical gauge:  6\n"
         "As built:\n"
         "  Current sheet (exact): 10.0497uH (Nagaoka 0.8181)\n"
         "  Self-capacitance: 2.52028pF\n"
         "  Self-resonance: 31.624MHz\n"
         "  Enter the wire gauge for the inductance as wound, its AC resistance and Q.\n", ""},
        {{"coil", "--inductance", "10u", "--length", "4"}, 0,
         "Inductance: 10uH\nMedian diameter (in): \nLength (in): 4\n",
         "We need exactly two entries; enter only two of these:\n   Diameter\n   Length\n"
         "   Number of turns\n"},
        // clang-format on
    };
    for (const auto& c : cases) {
        const Outcome outcome = RunCli(c.words);
        const std::string words = c.words.empty() ? "" : c.words[0] + " " + c.words.back();
        EXPECT_EQ(outcome.status, c.status) << words;
        EXPECT_EQ(outcome.out, c.out) << words;
        EXPECT_EQ(outcome.err, c.err) << words;
    }
}

// The coil as built in JSON: the figures worked by hand in the readable case above; what the
// winding alone cannot fix is null.
TEST(CliCoil, JsonCarriesTheCoilAsBuilt) {
    const std::vector<std::string> winding{"coil",       "--json", "--inductance", "10u",
                                           "--diameter", "2",      "--length",     "4"};
    auto wound = winding;
    wound.insert(wound.end(), {"--gauge", "14", "--frequency", "7.15M"});
    const struct {
        std::vector<std::string> words;
        std::vector<std::string> has;
    } cases[] = {
        {wound,
         {"\"inductanceSheet\": 1.0049741e-05", "\"inductanceWound\": 1.017416e-05",
          "\"nagaoka\": 0.818135", "\"acResistance\": 0.6842", "\"q\": 668.0",
          "\"selfCapacitance\": 2.5202", "\"selfResonance\": 3143", "Resonance\": [\n    4\n  ]"}},
        {winding,
         {"\"inductanceSheet\": 1.0049741e-05", "\"inductanceWound\": null",
          "\"acResistance\": null", "\"q\": null", "\"selfResonance\": 3162", "Resonance\": []"}},
    };
    for (const auto& c : cases) {
        const std::string json = RunCli(c.words).out;
        for (const std::string& text : c.has)
            EXPECT_TRUE(Has(json, text)) << text << "\n" << json;
    }
}

// The number after "key": in a JSON text.
double JsonValue(const std::string& json, const std::string& key) {
    const std::size_t at = json.find("\"" + key + "\": ");
    return at == std::string::npos ? NAN : std::strtod(json.c_str() + at + key.size() + 4, nullptr);
}

// A wound coil's own Q stands for the coil Q in the losses: with no L section, L1 wound to
// 2 x 4 in of 14 gauge gives the efficiency of --coil-q at the Q that coil has by itself
// (varo-cli coil for the design's L1), and the report names it.
TEST(CliDesign, AWoundCoilsOwnQStandsForTheCoilQ) {
    const std::vector<std::string> design{"design",         "--json", "--frequency", "7.15M",
                                          "--intermediate", "50",     "--load",      "50"};
    auto wound = design;
    wound.insert(wound.end(), {"--l1-winding", "2,4,14"});
    const std::string json = RunCli(wound).out;
    const double l1 = JsonValue(json, "L1");
    const std::string coil =
        RunCli({"coil", "--json", "--inductance", FormatHenry(static_cast<float>(l1)), "--diameter",
                "2", "--length", "4", "--gauge", "14", "--frequency", "7.15M"})
            .out;
    const double q = JsonValue(coil, "q");
    EXPECT_NEAR(JsonValue(json, "l1Q"), q, 1e-3 * q);
    EXPECT_TRUE(Has(json, "\"l1AsWound\": true") && Has(json, "\"l2AsWound\": false"));
    EXPECT_EQ(JsonValue(json, "l2Q"), 300);  // L2 keeps the coil Q
    auto plain = design;
    plain.insert(plain.end(), {"--coil-q", PlainText(JsonValue(json, "l1Q"))});
    EXPECT_NEAR(JsonValue(RunCli(plain).out, "efficiencyPercent"),
                JsonValue(json, "efficiencyPercent"), 1e-5);
    wound.erase(wound.begin() + 1);  // readable
    EXPECT_TRUE(Has(
        RunCli(wound).out,
        "Tank losses (coil Q 300, capacitor Q 2000; L1 as wound, Q " + FixedText(q, 0) + ")\n"));
}

// A file that cannot be written exits 1 after the program's message, the path and the reason.
TEST(Cli, AFailedFileExitsOne) {
    TempFolder folder;
    const struct {
        std::vector<std::string> words;
        std::string text;  // in the JSON report, or else in standard error
    } cases[] = {
        {{"--ltspice", "/nonexistent/x.ASC"},
         "We could not write the LTspice schematic file\n"
         "/nonexistent/x.ASC: No such file or directory\n"},
        {{"--json", "--quarn=/nonexistent/\xff"},
         // the path's stray byte replaced, so the report stays valid UTF-8
         "\"The Quarn file was not written.\\n/nonexistent/\xEF\xBF\xBD: No such file or "
         "directory\""},
        {{"--pdf", folder.File("missing/report.pdf")}, "Printer Error"},
        {{"--sweep-csv", folder.File("ro.csv")},
         "We could not export the sweep\n" + folder.File("ro.csv") + ": Permission denied\n"},
        {{"--pdf", folder.File("ro.csv")}, folder.File("ro.csv") + ": Permission denied\n"},
        {{"--save", folder.File("ro.csv")},
         "The design file was not written.\n" + folder.File("ro.csv") + ": Permission denied\n"},
        {{"--open", folder.File("missing.varo")},
         "The design file could not be read.\n" + folder.File("missing.varo") +
             ": No such file or directory\n"},
        {{"--open", folder.File("ro.csv")},
         "The design file is damaged: parse error at line 1, column 1: syntax error while "
         "parsing value - invalid literal; last read: 'k'\n"},
    };
    WriteBytes(folder.File("ro.csv"), "kept");
    std::filesystem::permissions(folder.File("ro.csv"), std::filesystem::perms{0444});
    for (const auto& c : cases) {
        std::vector<std::string> words{"design"};
        words.insert(words.end(), c.words.begin(), c.words.end());
        const Outcome outcome = RunCli(words);
        EXPECT_EQ(outcome.status, 1) << c.text;
        EXPECT_TRUE(Has(c.words[0] == "--json" ? outcome.out : outcome.err, c.text))
            << outcome.out << outcome.err;
    }
}

// A design saved by one run is the next run's design: inputs, losses and wound coils alike.
TEST(CliDesign, ADesignFileCarriesTheDesignToTheNextRun) {
    TempFolder folder;
    const std::string file = folder.File("amp.varo");
    const Outcome saved =
        RunCli({"design", "--frequency", "7.15M", "--plate", "2.2k", "--power", "1500", "--swing",
                "2800", "--l1-winding", "2,4,14", "--save", file});
    ASSERT_EQ(saved.status, 0) << saved.err;
    const Outcome opened = RunCli({"design", "--open", file});
    EXPECT_EQ(opened.status, 0) << opened.err;
    EXPECT_EQ(opened.out, saved.out);
    // An option changes the opened design as a typed entry would.
    EXPECT_TRUE(Has(RunCli({"design", "--json", "--open", file, "--q", "15"}).out, "\"piQ\": 15,"));
}

// Standard output on a full disk: every write fails.
struct FullDevice : std::streambuf {
    int_type overflow(int_type) override { return traits_type::eof(); }
};

TEST(Cli, AReportThatCannotBeWrittenExitsOne) {
    FullDevice device;
    std::ostream out(&device);
    std::ostringstream err;
    EXPECT_EQ(cli::Run({"design", "--json"}, out, err), 1);
    EXPECT_TRUE(Has(err.str(), "varo-cli: could not write to standard output"));
}

// The report redirected into a file under a file-size limit: a failed write like a full disk,
// not the program killed by SIGXFSZ before it could say so.
TEST(Cli, UnderAFileSizeLimitTheRedirectedReportExitsOneWithAMessage) {
    TempFolder folder;
    // Standard error stays on the pipe read here; only the report goes into the file.
    const std::string command = "ulimit -f 0; exec '" VARO_CLI_EXECUTABLE "' design 2>&1 > '" +
                                folder.File("report.txt") + "'";
    FILE* pipe = ::popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string said;
    for (int c; (c = std::fgetc(pipe)) != EOF;)
        said += static_cast<char>(c);
    const int status = ::pclose(pipe);
    ASSERT_TRUE(WIFEXITED(status)) << status;
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_EQ(said, "varo-cli: could not write to standard output: File too large\n");
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
         {"\"loadR\": 0.1,", "Minimum output load has been changed"},
         "Minimum output load has been changed to minimum-allowed value of .1 ohms\n"},
        // Transducer gain against twice the plate load: 10 log10(8/9) = -0.51 dB.
        {{"--generator", "3k"}, {"\"genMultiplier\": 2", "\"transmissionDb\": -0.51"}, ""},
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
          "  XL2:                    \n  XC3:                    \n",
          "  C3:                     \n"})
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
                folder.File("net.cir"), "--touchstone", folder.File("net.S2P"), "--pdf",
                folder.File("report.pdf")});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadBytes(folder.File("net.asc")).rfind("Version 4\r\nSHEET 1  1000 \r\n", 0), 0u);
    EXPECT_EQ(ReadBytes(folder.File("net.kvf")).rfind("Quarn circuit file by VARO\r\n", 0), 0u);
    const std::string csv = ReadBytes(folder.File("sweep.csv"));
    EXPECT_EQ(
        csv.rfind("Frequency (Hz),Transmission (dB),Phase (deg),Return re 2000 ohms (dB),", 0), 0u);
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 2002);
    EXPECT_EQ(ReadBytes(folder.File("Data.S21")).rfind(" 1950000 ", 0), 0u);
    EXPECT_TRUE(Has(ReadBytes(folder.File("net.S2P")), "\r\n# Hz S MA R 50\r\n"));
    EXPECT_EQ(ReadBytes(folder.File("report.pdf")).rfind("%PDF", 0), 0u);
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

// The plan's JSON: every band asked for, each with its two edges and harmonics 2 to 10; the CSV
// a line per edge under its header.
TEST(CliBands, JsonAndCsvHoldEveryBandAndEdge) {
    const std::vector<std::string> plan = {"bands",  "--cout",  "5",          "--stray", "10",
                                           "--tune", "10:500",  "--load-cap", "30:3000", "--bands",
                                           "40,10",  "--power", "1500"};
    std::vector<std::string> json = plan, csv = plan;
    json.push_back("--json");
    csv.push_back("--csv");
    const Outcome asJson = RunCli(json);
    ASSERT_EQ(asJson.status, 0) << asJson.err;
    for (const char* key : {"\"band\": \"40 m\"",
                            "\"band\": \"10 m\"",
                            "\"low\": 7000000",
                            "\"centre\"",
                            "\"q\": 12",
                            "\"qRaised\": false",
                            "\"L1\"",
                            "\"L2\"",
                            "\"feasible\": true",
                            "\"edges\"",
                            "\"frequency\": 29700000",
                            "\"C1\"",
                            "\"tune\"",
                            "\"Cload\"",
                            "\"shortfalls\": []",
                            "\"harmonics\"",
                            "\"networkDb\"",
                            "\"outputDbc\"",
                            "\"limitDbc\": -43",
                            "\"marginDb\""})
        EXPECT_TRUE(Has(asJson.out, key)) << key;
    std::size_t harmonics = 0;
    for (std::size_t at = 0; (at = asJson.out.find("\"n\": ", at)) != std::string::npos; ++at)
        ++harmonics;
    EXPECT_EQ(harmonics, 18u);
    const Outcome asCsv = RunCli(csv);
    ASSERT_EQ(asCsv.status, 0) << asCsv.err;
    EXPECT_EQ(asCsv.out.substr(0, asCsv.out.find("\r\n")),
              "band,frequency,q,qRaised,L1,L2,C1,tune,Cload,C3,feasible");
    EXPECT_EQ(std::count(asCsv.out.begin(), asCsv.out.end(), '\n'), 5);
    EXPECT_TRUE(Has(asCsv.out, "\r\n10 m,29700000,12,no,"));
    TempFolder folder;
    std::vector<std::string> pdf = plan;
    pdf.insert(pdf.end(), {"--pdf", folder.File("plan.pdf")});
    ASSERT_EQ(RunCli(pdf).status, 0);
    const auto [pages, text] = test::PagesAndText(folder.File("plan.pdf"));
    EXPECT_EQ(pages, "2\n");
    EXPECT_TRUE(Has(text, "VARO - Band plan")) << text;
}

// Bad input says what is wrong and exits 2, without a plan.
TEST(CliBands, BadInputsAreNamed) {
    const std::vector<std::string> base = {"bands", "--cout", "5", "--stray", "10"};
    const struct {
        std::vector<std::string> more;
        std::string err;
    } cases[] = {
        {{"--tune", "500:10", "--load-cap", "30:3000"},
         "varo-cli: The tuning capacitor's minimum (500 pF) is above its maximum (10 pF).\n"},
        {{"--tune", "10:500", "--load-cap=-30:3000"},
         "varo-cli: The loading capacitor's range must be capacitances of 0 pF or more.\n"},
        {{"--tune", "10", "--load-cap", "30:3000"},
         "varo-cli: --tune needs MIN:MAX in pF, such as 10:500\n"},
        {{"--tune", "10:500"}, "varo-cli: --load-cap is required\n"},
        {{"--tune", "10:500", "--load-cap", "30:3000", "--bands", "40,6"},
         "varo-cli: unknown band '6' (the bands: 160,80,40,30,20,17,15,12,10)\n"},
        {{"--tune", "10:500", "--load-cap", "30:3000", "--conduction", "400"},
         "varo-cli: The conduction angle must be above 0 and at most 360 degrees.\n"},
        {{"--tune", "10:500", "--load-cap", "30:3000", "--limit", "x"},
         "varo-cli: --limit needs fcc, itu or a number of dB\n"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> words = base;
        words.insert(words.end(), c.more.begin(), c.more.end());
        const Outcome outcome = RunCli(words);
        EXPECT_EQ(outcome.status, 2) << c.err;
        EXPECT_EQ(outcome.out, "") << c.err;
        EXPECT_EQ(outcome.err.substr(0, c.err.size()), c.err);
    }
}

// SWR 2 around 50 ohms at four phases: 100, 40+j30, 25 and 40-j30 ohms; every matched load
// swings the plate sqrt(2 x 1500 W x 1500 ohms) = 2121.32034 V.
TEST(CliLoadRange, JsonAndCsvHoldLoadsWorstCasesAndCover) {
    const std::vector<std::string> circle = {"load-range", "--power",  "1500", "--swr",
                                             "2",          "--phases", "4"};
    std::vector<std::string> json = circle, csv = circle;
    json.push_back("--json");
    csv.push_back("--csv");
    const Outcome asJson = RunCli(json);
    ASSERT_EQ(asJson.status, 0) << asJson.err;
    for (const char* part :
         {"\"swr\": 2", "\"phase\": 90,\n      \"zLoad\": [\n        40,\n        30\n      ]",
          "\"zLoad\": [\n        25,\n        0\n      ]", "\"vC1\": 2121.3203,",
          "\"worst\": {\n    \"vC1\": {\n      \"phase\": 0,", "\"cover\": {\n    \"C1\": [",
          "\"Cload\": [", "\"unmatched\": 0", "\"iL1\"", "\"iL2\"", "\"lossW\"", "\"vCload\""})
        EXPECT_TRUE(Has(asJson.out, part)) << part;
    const Outcome asCsv = RunCli(csv);
    ASSERT_EQ(asCsv.status, 0) << asCsv.err;
    EXPECT_EQ(asCsv.out.substr(0, asCsv.out.find("\r\n")),
              "index,phase,frequency,R,X,matched,C1,Cload,C3,vC1,vCload,iL1,iL2,lossW");
    EXPECT_EQ(std::count(asCsv.out.begin(), asCsv.out.end(), '\n'), 5);
    EXPECT_TRUE(Has(asCsv.out, "\r\n3,270,3900000,40,-30,yes,"));
}

// A measured antenna: S11 = 0.2 at 50 ohms is 75 ohms.
TEST(CliLoadRange, ReadsAMeasuredLoadAndNamesWhatIsWrong) {
    TempFolder folder;
    testing::WriteBytes(folder.File("ant.s1p"), "! dipole\r\n# MHz S RI R 50\r\n3.9 0.2 0\r\n");
    testing::WriteBytes(folder.File("bad.s1p"), "# MHz S RI R 50\n3.9 0.2 0\n3.8 0 0\n");
    const Outcome measured = RunCli({"load-range", "--load-s1p", folder.File("ant.s1p"), "--json"});
    ASSERT_EQ(measured.status, 0) << measured.err;
    EXPECT_TRUE(Has(measured.out, "\"index\": 0,\n      \"zLoad\": [\n        75,\n        0\n"));
    EXPECT_TRUE(Has(measured.out, "\"vC1\": null"));  // no power given
    const struct {
        std::vector<std::string> words;
        int status;
        std::string err;
    } cases[] = {
        {{"--load-z", "37-j22", "--swr", "2"},
         2,
         "varo-cli: --load-z, --load-s1p and --swr are different loads: give one\n"},
        {{"--load-z=-37+j22"},
         2,
         "varo-cli: --load-z needs R+jX in ohms with R above 0, such as 37-j22\n"},
        {{"--swr", "0.5"}, 2, "varo-cli: --swr needs a number of 1 or more\n"},
        {{"--phases", "2.5"}, 2, "varo-cli: --phases needs a whole number from 1 to 3600\n"},
        {{"--load-s1p", folder.File("bad.s1p")},
         1,
         "varo-cli: " + folder.File("bad.s1p") +
             ": line 3: the frequency 3.8 MHz is not above the one before (3.9 MHz)\n"},
        {{"--load-s1p", folder.File("none.s1p")},
         1,
         "varo-cli: " + folder.File("none.s1p") + ": No such file or directory\n"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> words{"load-range"};
        words.insert(words.end(), c.words.begin(), c.words.end());
        const Outcome outcome = RunCli(words);
        EXPECT_EQ(outcome.status, c.status) << c.err;
        EXPECT_EQ(outcome.out, "") << c.err;
        EXPECT_EQ(outcome.err.substr(0, c.err.size()), c.err);
    }
}

}  // namespace
}  // namespace varo::cli
