#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "app/cli/cli.h"
#include "support/temp_folder.h"

namespace varo::cli {
namespace {

struct Result {
    int status;
    std::string out, err;
};

Result Design(std::vector<std::string> words) {
    words.insert(words.begin(), "design");
    std::ostringstream out, err;
    const int status = Run(words, out, err);
    return {status, out.str(), err.str()};
}

double JsonValue(const std::string& json, const std::string& key) {
    const auto at = json.find("\"" + key + "\": ");
    EXPECT_NE(at, std::string::npos) << key;
    return at == std::string::npos ? 0 : std::strtod(json.c_str() + at + key.size() + 4, nullptr);
}

// The pi network 2000 -> 50 ohms at 3.8 MHz, Q 12, has no L section; coils of Q 300.
TEST(CliDesignExtras, LossesInJsonAndInTheReport) {
    std::vector<std::string> words{"--frequency", "3.8M", "--plate", "2k",  "--intermediate", "50",
                                   "--load",      "50",   "--power", "100", "--capacitor-q",  "2k"};
    EXPECT_NE(Design(words).out.find("Tank losses (coil Q 300, capacitor Q 2000)\n"
                                     "  Efficiency (%):         95.6 \n"),
              std::string::npos);
    words.push_back("--json");
    const std::string json = Design(words).out;
    const std::string losses = json.substr(std::min(json.find("\"losses\""), json.size()));
    EXPECT_NEAR(JsonValue(losses, "lossDb"), 0.195, 0.0005);
    EXPECT_GT(JsonValue(losses, "L1"), 3);
    EXPECT_EQ(JsonValue(losses, "C3"), 0);
    EXPECT_NEAR(JsonValue(losses, "zInImag"), -15.16, 0.01);
    EXPECT_EQ(Design({"--json"}).out.find("\"losses\""), std::string::npos);
}

TEST(CliDesignExtras, WritesTheNetlistAndTouchstoneFiles) {
    testing::TempFolder folder;
    const Result result =
        Design({"--spice", folder.File("net.cir"), "--touchstone", folder.File("net.S2P")});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(testing::ReadBytes(folder.File("net.cir")).rfind("* VARO pi-L network: ", 0), 0u);
    EXPECT_NE(testing::ReadBytes(folder.File("net.S2P")).find("\r\n# Hz S MA R 50\r\n"),
              std::string::npos);
}

TEST(CliDesignExtras, MistakesAndHelp) {
    const struct {
        std::vector<std::string> words;
        int status;
        const char* text;  // in standard error, or in the output for --help
    } cases[] = {
        {{"--coil-q", "0"}, 2, "--coil-q needs an unloaded Q above 0"},
        {{"--capacitor-q", "abc"}, 2, "--capacitor-q needs an unloaded Q above 0"},
        {{"--touchstone", "net.txt"}, 2, "--touchstone needs a file name ending in .s2p or .s1p"},
        {{"--spice", "/nonexistent-folder/net.cir"}, 1, "We could not write the SPICE netlist"},
        {{"--help"},
         0,
         "[--spice FILE] [--touchstone FILE] [--losses]\n"
         "                       [--coil-q Q] [--capacitor-q Q]\n"},
    };
    for (const auto& c : cases) {
        const Result result = Design(c.words);
        EXPECT_EQ(result.status, c.status) << c.text;
        EXPECT_NE((c.status == 0 ? result.out : result.err).find(c.text), std::string::npos)
            << result.err;
    }
}

}  // namespace
}  // namespace varo::cli
