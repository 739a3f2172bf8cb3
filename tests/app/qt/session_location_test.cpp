#include "session/qt/session_location.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/temp_folder.h"

namespace varo {
namespace {

namespace fs = std::filesystem;

enum class ExecutableFolder { Writable, ReadOnly, Missing, AFile };

void Prepare(ExecutableFolder kind, const fs::path& folder) {
    if (kind == ExecutableFolder::AFile) testing::WriteBytes(folder.string(), "");
    if (kind == ExecutableFolder::Writable || kind == ExecutableFolder::ReadOnly)
        fs::create_directory(folder);
    if (kind == ExecutableFolder::ReadOnly)
        fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
}

TEST(SessionLocation, BesideTheExecutableOnlyWhereThatFolderCanBeWritten) {
    struct Case {
        const char* what;
        ExecutableFolder executableFolder;
        bool configFolderKnown;
        bool besideExecutable;
    };
    for (const Case& c : {
             Case{"writable", ExecutableFolder::Writable, true, true},
             Case{"read-only", ExecutableFolder::ReadOnly, true, false},
             Case{"missing", ExecutableFolder::Missing, true, false},
             Case{"a file", ExecutableFolder::AFile, true, false},
             Case{"no configuration folder", ExecutableFolder::Missing, false, true},
         }) {
        SCOPED_TRACE(c.what);
        // Permissions do not bind the superuser.
        if (c.executableFolder == ExecutableFolder::ReadOnly && ::geteuid() == 0) continue;
        testing::TempFolder root;
        const fs::path executableFolder = fs::path(root.str()) / "bin";
        const fs::path configFolder = fs::path(root.str()) / "home/.config/varo";
        Prepare(c.executableFolder, executableFolder);
        const std::string chosen = ChooseSessionFolder(
            executableFolder.string(), c.configFolderKnown ? configFolder.string() : "");
        EXPECT_EQ(chosen, (c.besideExecutable ? executableFolder : configFolder).string());
        // The configuration folder is made when it is chosen, and only then.
        EXPECT_EQ(fs::is_directory(configFolder), !c.besideExecutable);
    }
}

}  // namespace
}  // namespace varo
