#include "platform/system.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <locale>
#include <optional>
#include <string>

#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::TempFolder;
using testing::WriteBytes;

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

// Sets LC_ALL for one test and puts the old value back.
class EnvironmentLocale {
  public:
    explicit EnvironmentLocale(const char* name) {
        if (const char* old = std::getenv("LC_ALL")) old_ = old;
        ::setenv("LC_ALL", name, 1);
    }
    ~EnvironmentLocale() {
        if (old_) {
            ::setenv("LC_ALL", old_->c_str(), 1);
        } else {
            ::unsetenv("LC_ALL");
        }
    }

  private:
    std::optional<std::string> old_;
};

std::tm November15th2026() {
    std::tm date{};
    date.tm_year = 2026 - 1900;
    date.tm_mon = 10;
    date.tm_mday = 15;
    return date;
}

TEST(ShortDateText, PlainOrMissingLocalesGiveMonthDayAndFourDigitYear) {
    for (const char* name : {"C", "POSIX", "C.UTF-8", "xx_NOWHERE.UTF-8"}) {
        EnvironmentLocale locale(name);
        EXPECT_EQ(ShortDateText(November15th2026()), "11/15/2026") << name;
    }
}

TEST(ShortDateText, FollowsTheUserLocaleWithoutChangingTheProgramLocale) {
    EnvironmentLocale locale("de_DE.UTF-8");
    try {
        std::locale probe("");
    } catch (const std::exception&) {
        GTEST_SKIP() << "de_DE.UTF-8 is not installed";
    }
    const std::string globalBefore = std::locale().name();
    EXPECT_EQ(ShortDateText(November15th2026()), "15.11.2026");
    EXPECT_EQ(std::locale().name(), globalBefore);
}

}  // namespace
}  // namespace varo
