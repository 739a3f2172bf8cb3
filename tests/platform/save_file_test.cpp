#include "platform/save_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "platform/file_size_limit.h"
#include "platform/textfile.h"
#include "support/temp_folder.h"
#include "support/time_limit.h"

namespace varo {
namespace {

using namespace std::chrono_literals;
using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;
namespace fs = std::filesystem;

long FilesIn(const TempFolder& folder) {
    return std::distance(fs::directory_iterator(folder.str()), {});
}

TEST(SaveFile, WritesWholeOrLeavesThePreviousFileAndNoOtherFile) {
    for (const std::size_t diskRoom : {1000, 0, 5}) {  // bytes before the disk is full
        TempFolder folder;
        const std::string path = folder.File("out.txt");
        WriteBytes(path, std::string(100, 'x'));
        const bool saved = diskRoom >= 9;  // the new text's size
        const FileSizeLimit disk(diskRoom);
        if (saved) {
            SaveFile(path, "one\ttwo\r\n");
        } else {
            EXPECT_THROW(SaveFile(path, "one\ttwo\r\n"), FileError) << diskRoom;
        }
        EXPECT_EQ(ReadBytes(path), saved ? "one\ttwo\r\n" : std::string(100, 'x')) << diskRoom;
        EXPECT_EQ(FilesIn(folder), 1) << diskRoom;
    }
}

TEST(SaveFile, NewFileFollowsTheUmaskAndAReplacedFileKeepsLinkAndPermissions) {
    TempFolder folder;
    const mode_t saved = ::umask(022);
    SaveFile(folder.File("new.txt"), "new");
    ::umask(saved);
    EXPECT_EQ(fs::status(folder.File("new.txt")).permissions(), fs::perms{0644});
    WriteBytes(folder.File("real.txt"), "old");
    fs::permissions(folder.File("real.txt"), fs::perms{0640});
    fs::create_symlink("real.txt", folder.File("link.txt"));
    SaveFile(folder.File("link.txt"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.File("link.txt")));
    EXPECT_EQ(ReadBytes(folder.File("real.txt")), "new");
    EXPECT_EQ(fs::status(folder.File("real.txt")).permissions(), fs::perms{0640});
}

TEST(SaveFile, WritesASpecialFileInPlaceAndNeverWaitsForAPipeReader) {
    TempFolder folder;
    testing::MakePipe(folder.File("pipe"));
    ASSERT_TRUE(testing::FinishesWithin(2s, [&] {
        SaveFile("/dev/null", "x");
        EXPECT_THROW(SaveFile(folder.File("pipe"), "x"), FileError);
    }));
    EXPECT_TRUE(fs::is_character_file("/dev/null")) << "it must never be replaced";
}

// The set is saved whole or not at all, and only a set saved whole is told of (once, every path).
TEST(SaveFiles, AFailureWhileWritingAnyLeavesAllAsTheyWere) {
    TempFolder folder;
    WriteBytes(folder.File("a"), "old a");
    WriteBytes(folder.File("b"), "old b");
    std::vector<std::vector<std::string>> told;
    ObserveWrittenFiles([&](const std::vector<std::string>& paths) { told.push_back(paths); });
    const FileContents files[] = {{folder.File("a"), "new"}, {folder.File("b"), "longer new b"}};
    {
        const FileSizeLimit disk(8);  // room for the first new file, not the second
        EXPECT_THROW(SaveFiles(files), FileError);
    }
    EXPECT_EQ(ReadBytes(folder.File("a")), "old a");
    EXPECT_EQ(ReadBytes(folder.File("b")), "old b");
    EXPECT_EQ(FilesIn(folder), 2);
    EXPECT_TRUE(told.empty());
    SaveFiles(files);
    EXPECT_EQ(told, (std::vector<std::vector<std::string>>{{folder.File("a"), folder.File("b")}}));
    ObserveWrittenFiles({});
}

// A file the user made read-only is refused, even to root, with the system's reason.
TEST(SaveFile, RefusesAReadOnlyFile) {
    TempFolder folder;
    const std::string path = folder.File("ro.csv");
    WriteBytes(path, "old");
    fs::permissions(path, fs::perms{0444});
    std::string refusal;
    try {
        SaveFile(path, "new");
    } catch (const FileError& error) {
        refusal = error.what();
    }
    EXPECT_EQ(refusal, path + ": Permission denied");
    EXPECT_EQ(ReadBytes(path), "old");
    EXPECT_EQ(FilesIn(folder), 1);
}

// Every name of a file with hard links shows the new content: it is overwritten in place once
// the new bytes proved they fit. Where they do not, every name keeps the old content.
TEST(SaveFile, AHardLinkedFileKeepsItsOtherNames) {
    for (const bool fits : {true, false}) {
        TempFolder folder;
        const std::string path = folder.File("a.txt"), other = folder.File("b.txt");
        WriteBytes(path, "old content");
        fs::create_hard_link(path, other);
        {
            const FileSizeLimit disk(fits ? 1000 : 15);
            if (fits)
                SaveFile(path, "the new, longer content");
            else
                EXPECT_THROW(SaveFile(path, "the new, longer content"), FileError);
        }
        const std::string expected = fits ? "the new, longer content" : "old content";
        EXPECT_EQ(ReadBytes(path), expected);
        EXPECT_EQ(ReadBytes(other), expected);
        EXPECT_EQ(fs::hard_link_count(path), 2u);
        EXPECT_EQ(FilesIn(folder), 2);
    }
}

// A process that no longer exists (reaped at once here) left a temporary file; it goes the next
// time its target is saved. A live process's, or another file's, stays.
TEST(SaveFile, ClearsTemporaryFilesOfProcessesThatAreGone) {
    const pid_t gone = ::fork();
    if (gone == 0) ::_exit(0);
    ::waitpid(gone, nullptr, 0);
    TempFolder folder;
    const std::string stale = ".out.txt." + std::to_string(gone) + "-3.tmp";
    const std::vector<std::string> kept = {".out.txt.1-0.tmp",
                                           ".out.txt." + std::to_string(gone) + "-x.tmp",
                                           ".other.txt." + std::to_string(gone) + "-0.tmp"};
    WriteBytes(folder.File(stale), "half");
    for (const std::string& name : kept)
        WriteBytes(folder.File(name), "half");
    SaveFile(folder.File("out.txt"), "new");
    EXPECT_FALSE(fs::exists(folder.File(stale)));
    for (const std::string& name : kept)
        EXPECT_TRUE(fs::exists(folder.File(name))) << name;
}

// A signal to end the program that arrives during a save waits for it: the program then ends by
// that signal, with the file whole (old or new) and no temporary file left.
TEST(SaveFile, EndingSignalsWaitForTheSaveAndLeaveNothingBehind) {
    const std::string before(1 << 20, 'o'), after(1 << 20, 'n');
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        for (int attempt = 0; attempt < 4; ++attempt) {
            TempFolder folder;
            const std::string path = folder.File("big.csv");
            WriteBytes(path, before);
            const pid_t saver = ::fork();
            if (saver == 0) {
                for (;;)
                    SaveFile(path, after);
            }
            ::usleep(20000 + attempt * 7000);
            ::kill(saver, signal);
            int status = 0;
            ::waitpid(saver, &status, 0);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal;
            const std::string left = ReadBytes(path);
            EXPECT_TRUE(left == before || left == after) << signal;
            EXPECT_EQ(FilesIn(folder), 1) << signal << " attempt " << attempt;
        }
    }
}

// Two programs saving the same pair at once leave the pair of one of them, never one file of
// each.
TEST(SaveFiles, TwoProgramsSavingOnePairLeaveAWholePair) {
    TempFolder folder;
    const std::string first = folder.File("Data.S21"), second = folder.File("Data.S11");
    for (int round = 0; round < 40; ++round) {
        pid_t savers[2];
        for (const char which : {'a', 'b'}) {
            const pid_t saver = ::fork();
            if (saver == 0) {
                const FileContents pair[] = {{first, std::string(4000, which)},
                                             {second, std::string(3000, which)}};
                SaveFiles(pair);
                ::_exit(0);
            }
            savers[which - 'a'] = saver;
        }
        for (const pid_t saver : savers)
            ::waitpid(saver, nullptr, 0);
        ASSERT_EQ(ReadBytes(first).substr(0, 1), ReadBytes(second).substr(0, 1)) << round;
    }
}

}  // namespace
}  // namespace varo
