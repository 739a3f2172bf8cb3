#include <gtest/gtest.h>

#include <sstream>
#include <streambuf>

#include "app/cli/cli.h"
#include "app/cli/json_writer.h"
#include "platform/file_size_limit.h"
#include "support/temp_folder.h"
#include "support/time_limit.h"

namespace varo::cli {
namespace {

using namespace std::chrono_literals;
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

// Standard output on a full disk: every write fails.
class FullDevice : public std::streambuf {
  protected:
    int_type overflow(int_type) override { return traits_type::eof(); }
};

TEST(CliReport, AReportThatCannotBeWrittenExitsOne) {
    FullDevice device;
    std::ostream out(&device);
    std::ostringstream err;
    EXPECT_EQ(cli::Run({"design", "--json"}, out, err), 1);
    EXPECT_NE(err.str().find("varo-cli: could not write to standard output"), std::string::npos);
}

TEST(JsonString, EveryStringIsValidUtf8) {
    const struct {
        std::string text, json;
    } cases[] = {
        {"/nonexistent/\xff", "\"/nonexistent/\\ufffd\""},
        {"\xC3\xA4 \xF0\x9F\x98\x80", "\"\xC3\xA4 \xF0\x9F\x98\x80\""},  // kept as they are
        {"\xC3", "\"\\ufffd\""},                                         // cut short
        {"\xC0\xAF", "\"\\ufffd\\ufffd\""},                              // overlong
        {"\xED\xA0\x80", "\"\\ufffd\\ufffd\\ufffd\""},                   // a surrogate
        {"a\x01\"", "\"a\\u0001\\\"\""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(JsonString(c.text), c.json) << c.text;
}

TEST(CliDesign, AFailedFileNamesPathAndReasonAfterTheMessage) {
    const struct {
        std::vector<std::string> words;
        bool json;
        std::string expected;
    } cases[] = {
        {{"design", "--ltspice", "/nonexistent/x.ASC"},
         false,
         "We could not write the LTspice schematic file\n"
         "/nonexistent/x.ASC: No such file or directory\n"},
        {{"design", "--json", "--quarn=/nonexistent/\xff"},
         true,
         "\"The Quarn file was not written.\\n/nonexistent/\\ufffd: No such file or directory\""},
    };
    for (const auto& c : cases) {
        const Outcome outcome = RunCli(c.words);
        EXPECT_EQ(outcome.status, 1);
        const std::string& shown = c.json ? outcome.out : outcome.err;
        EXPECT_NE(shown.find(c.expected), std::string::npos) << shown;
    }
}

TEST(CliDesign, AFullDiskKeepsThePreviousSessionFile) {
    TempFolder folder;
    const std::string path = folder.File("VARO.CFG");
    WriteBytes(path, "previous");
    Outcome outcome;
    {
        const FileSizeLimit disk(0);
        outcome = RunCli({"design", "--save-session", path});
    }
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(ReadBytes(path), "previous");
    EXPECT_NE(outcome.err.find(path + ": File too large"), std::string::npos) << outcome.err;
}

TEST(CliDesign, ASpecialSessionFileGivesTheDefaultsAtOnce) {
    TempFolder folder;
    varo::testing::MakePipe(folder.File("pipe"));
    for (const std::string& path : {folder.File("pipe"), std::string("/dev/zero")}) {
        Outcome outcome;
        ASSERT_TRUE(varo::testing::FinishesWithin(5s, [&] {
            outcome = RunCli({"design", "--json", "--session", path});
        })) << path;
        EXPECT_EQ(outcome.status, 0);
        EXPECT_NE(outcome.out.find("\"frequency\": 3900000"), std::string::npos);
    }
}

TEST(CliDesign, SwingAndPowerGoThroughTheHelpersLimits) {
    const struct {
        std::string option, value, message;
    } cases[] = {
        {"--swing=-12345670", "\"peakSwing\": 1",
         "Voltage level has been reset to the minimum-allowed value of 1 volt"},
        {"--power=2E7", "\"rfPower\": 10000000",
         "Power level has been reset to the maximum-allowed value of 10000k watts"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = RunCli({"design", "--json", c.option});
        EXPECT_NE(outcome.out.find(c.value), std::string::npos) << c.option;
        EXPECT_EQ(outcome.err, c.message + "\n");
    }
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
    EXPECT_NE(exported.out.find("\"plateR\": 1235"), std::string::npos);
    EXPECT_EQ(Section(exported.out, "harmonics"), Section(direct.out, "harmonics"));
    EXPECT_EQ(Section(exported.out, "stresses"), Section(direct.out, "stresses"));
}

}  // namespace
}  // namespace varo::cli
