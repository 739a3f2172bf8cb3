#include <gtest/gtest.h>

#include <sstream>

#include "app/cli/commands.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

// The PDF module is found and loaded from the build tree, and a path it cannot write fails the
// command with the printer's message.
TEST(CliPdfTest, DesignWritesTheReportAsPdf) {
    testing::TempFolder folder;
    struct Case {
        std::string path;
        int status;
        bool written;
    };
    for (const Case& c : {Case{folder.File("report.pdf"), 0, true},
                          Case{folder.File("missing/report.pdf"), 1, false}}) {
        std::ostringstream out, err;
        EXPECT_EQ(cli::RunDesign({"--pdf", c.path}, out, err), c.status) << err.str();
        EXPECT_EQ(testing::ReadBytes(c.path).rfind("%PDF", 0) == 0, c.written);
        EXPECT_EQ(err.str().find("Printer Error") != std::string::npos, !c.written) << err.str();
    }
}

}  // namespace
}  // namespace varo
