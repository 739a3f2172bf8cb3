#include "platform/system.h"
#include "platform/textfile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <locale>
#include <optional>
#include <string>
#include <vector>

#include "core/fault.h"
#include "support/temp_folder.h"
#include "support/time_limit.h"

namespace varo {
namespace {

using namespace std::chrono_literals;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;
namespace fs = std::filesystem;

TEST(TextFileReader, SplitsOnCrLfAndOnALoneCrOrLfUpToItsLimit) {
    const struct {
        std::string bytes;
        std::vector<std::string> lines;
        std::size_t maxBytes = 1000;
    } cases[] = {
        {"", {}},
        {"a\r\nb", {"a", "b"}},
        {"a\nb\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"a\r\n\r\n", {"a", ""}},
        {"a\r\r\nb", {"a", "", "b"}},
        {"a\n\rb", {"a", "", "b"}},
        {"ab\r\ncd\r\n", {"ab", "c"}, 5},
    };
    TempFolder folder;
    for (const auto& c : cases) {
        WriteBytes(folder.File("in.txt"), c.bytes);
        TextFileReader file(folder.File("in.txt"), c.maxBytes);
        std::vector<std::string> lines;
        std::string line;
        while (!file.AtEnd() && file.ReadLine(line))
            lines.push_back(line);
        EXPECT_TRUE(file.AtEnd());
        EXPECT_FALSE(file.ReadLine(line));
        EXPECT_EQ(lines, c.lines) << c.bytes;
    }
}

TEST(InputFile, RefusesAllButRegularFilesAtOnce) {
    TempFolder folder;
    testing::MakePipe(folder.File("pipe"));
    const std::pair<std::string, const char*> cases[] = {
        {folder.File("none"), "No such file or directory"},
        {folder.str(), "Is a directory"},
        {folder.File("pipe"), "not a regular file"},
        {"/dev/zero", "not a regular file"},
    };
    for (const auto& [path, reason] : cases) {
        std::string refusal;
        EXPECT_TRUE(testing::FinishesWithin(2s, [&] {
            try {
                InputFile file(path);
            } catch (const FileError& error) {
                refusal = error.what();
            }
        }));
        EXPECT_EQ(refusal, path + ": " + reason);
    }
}

TEST(ExecutableFolder, IsTheFolderOfTheRunningTest) {
    const std::string folder = ExecutableFolder();
    EXPECT_TRUE(FileExists(folder + "/varo_platform_tests")) << folder;
    EXPECT_NE(folder.back(), '/');
}

TEST(FindFileIgnoringCase, FindsTheNameInAnyCaseAndPrefersAnExactMatch) {
    TempFolder folder;
    WriteBytes(folder.File("DATA.S21"), "upper");
    EXPECT_EQ(FindFileIgnoringCase(folder.str(), "Data.S21"), folder.File("DATA.S21"));
    EXPECT_EQ(FindFileIgnoringCase(folder.str(), "Data.S11"), std::nullopt);
    EXPECT_EQ(FindFileIgnoringCase(folder.File("nowhere"), "Data.S21"), std::nullopt);
    WriteBytes(folder.File("Data.S21"), "exact");
    EXPECT_EQ(FindFileIgnoringCase(folder.str(), "Data.S21"), folder.File("Data.S21"));
}

// 15 November 2026 under LC_ALL=`locale`.
std::string DateUnder(const char* locale) {
    ::setenv("LC_ALL", locale, 1);  // each test runs in a process of its own
    std::tm date{};
    date.tm_year = 2026 - 1900, date.tm_mon = 10, date.tm_mday = 15;
    return ShortDateText(date);
}

// Plain or missing locales give m/d/yyyy; a user locale is followed, the program's own kept.
TEST(ShortDateText, FollowsTheUserLocale) {
    for (const char* name : {"C", "POSIX", "C.UTF-8", "xx_NOWHERE.UTF-8"})
        EXPECT_EQ(DateUnder(name), "11/15/2026") << name;
    const std::string globalBefore = std::locale().name();
    try {
        std::locale probe("de_DE.UTF-8");
    } catch (const std::exception&) {
        GTEST_SKIP() << "de_DE.UTF-8 is not installed";
    }
    EXPECT_EQ(DateUnder("de_DE.UTF-8"), "15.11.2026");
    EXPECT_EQ(std::locale().name(), globalBefore);
}

}  // namespace
}  // namespace varo
