#include "platform/textfile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/fault.h"
#include "platform/file_size_limit.h"
#include "platform/save_file.h"
#include "support/temp_folder.h"
#include "support/time_limit.h"

namespace varo {
namespace {

using namespace std::chrono_literals;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;

std::vector<std::string> Entries(const TempFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.str()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(SaveFile, WritesWholeOrLeavesThePreviousFileAndNoOtherFile) {
    const struct {
        const char* name;
        std::size_t diskRoom;  // bytes a file may grow to before the disk is full
        bool saved;
    } cases[] = {
        {"room enough", 1000, true},
        {"full before the first byte", 0, false},
        {"full in the middle", 5, false},
    };
    for (const auto& c : cases) {
        TempFolder folder;
        const std::string path = folder.File("out.txt");
        WriteBytes(path, std::string(100, 'x'));
        {
            const FileSizeLimit disk(c.diskRoom);
            if (c.saved) {
                SaveFile(path, "one\ttwo\r\n");
            } else {
                EXPECT_THROW(SaveFile(path, "one\ttwo\r\n"), FileError) << c.name;
            }
        }
        EXPECT_EQ(ReadBytes(path), c.saved ? "one\ttwo\r\n" : std::string(100, 'x')) << c.name;
        EXPECT_EQ(Entries(folder), std::vector<std::string>{"out.txt"}) << c.name;
    }
}

TEST(SaveFile, ReplacesTheFileALinkNamesKeepingLinkAndPermissions) {
    TempFolder folder;
    WriteBytes(folder.File("real.txt"), "old");
    ::chmod(folder.File("real.txt").c_str(), 0640);
    std::filesystem::create_symlink("real.txt", folder.File("link.txt"));
    SaveFile(folder.File("link.txt"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.txt")));
    EXPECT_EQ(ReadBytes(folder.File("real.txt")), "new");
    struct stat info {};
    ::stat(folder.File("real.txt").c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
}

TEST(SaveFile, WritesASpecialFileInPlaceAndNeverWaitsForAPipeReader) {
    TempFolder folder;
    testing::MakePipe(folder.File("pipe"));
    ASSERT_TRUE(testing::FinishesWithin(2s, [&] {
        SaveFile("/dev/null", "x");
        EXPECT_THROW(SaveFile(folder.File("pipe"), "x"), FileError);
    }));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null")) << "it must never be replaced";
}

TEST(SaveFiles, AFailureWhileWritingAnyLeavesAllAsTheyWere) {
    TempFolder folder;
    WriteBytes(folder.File("a"), "old a");
    WriteBytes(folder.File("b"), "old b");
    const FileContents files[] = {{folder.File("a"), "new"}, {folder.File("b"), "longer new b"}};
    {
        const FileSizeLimit disk(8);  // room for the first new file, not the second
        EXPECT_THROW(SaveFiles(files), FileError);
    }
    EXPECT_EQ(ReadBytes(folder.File("a")), "old a");
    EXPECT_EQ(ReadBytes(folder.File("b")), "old b");
    EXPECT_EQ(Entries(folder), (std::vector<std::string>{"a", "b"}));
}

std::vector<std::string> AllLines(const std::string& bytes, std::size_t maxBytes = 1000) {
    TempFolder folder;
    WriteBytes(folder.File("in.txt"), bytes);
    TextFileReader file(folder.File("in.txt"), maxBytes);
    std::vector<std::string> lines;
    std::string line;
    // At its end exactly when no line is left.
    while (!file.AtEnd() && file.ReadLine(line))
        lines.push_back(line);
    EXPECT_TRUE(file.AtEnd());
    EXPECT_FALSE(file.ReadLine(line));
    return lines;
}

TEST(TextFileReader, SplitsOnCrLfAndOnALoneCrOrLfUpToItsLimit) {
    using Lines = std::vector<std::string>;
    const struct {
        std::string bytes;
        Lines lines;
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
    for (const auto& c : cases)
        EXPECT_EQ(AllLines(c.bytes, c.maxBytes), c.lines) << c.bytes;
}

TEST(InputFile, RefusesAllButRegularFilesAtOnce) {
    TempFolder folder;
    testing::MakePipe(folder.File("pipe"));
    for (const std::string& path :
         {folder.File("none"), folder.str(), folder.File("pipe"), std::string("/dev/zero")}) {
        EXPECT_TRUE(testing::FinishesWithin(2s, [&] {
            EXPECT_THROW(InputFile file(path), FileError) << path;
        })) << path;
    }
}

}  // namespace
}  // namespace varo
