#include "session/qt/session_location.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/temp_folder.h"

namespace varo {
namespace {

namespace fs = std::filesystem;

TEST(SessionLocation, BesideTheExecutableOnlyWhereThatFolderCanBeWritten) {
    struct Case {
        bool exists, readOnly, configKnown, beside;
    };
    for (const Case& c : {Case{true, false, true, true}, Case{true, true, true, false},
                          Case{false, false, true, false}, Case{false, false, false, true}}) {
        if (c.readOnly && ::geteuid() == 0) continue;  // permissions do not bind the superuser
        testing::TempFolder root;
        const fs::path executableFolder = fs::path(root.str()) / "bin";
        const fs::path configFolder = fs::path(root.str()) / "home/.config/varo";
        if (c.exists) fs::create_directory(executableFolder);
        if (c.readOnly)
            fs::permissions(executableFolder, fs::perms::owner_read | fs::perms::owner_exec);
        const std::string chosen = ChooseSessionFolder(executableFolder.string(),
                                                       c.configKnown ? configFolder.string() : "");
        EXPECT_EQ(chosen, (c.beside ? executableFolder : configFolder).string());
        EXPECT_EQ(fs::is_directory(configFolder), !c.beside);  // made when chosen, only then
    }
}

}  // namespace
}  // namespace varo
