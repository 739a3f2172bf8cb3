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
    for (const bool writable : {true, false}) {
        const std::string path = folder.File(writable ? "report.pdf" : "missing/report.pdf");
        std::ostringstream out, err;
        EXPECT_EQ(cli::RunDesign({"--pdf", path}, out, err), writable ? 0 : 1) << err.str();
        EXPECT_EQ(testing::ReadBytes(path).rfind("%PDF", 0) == 0, writable);
        EXPECT_EQ(err.str().find("Printer Error") != std::string::npos, !writable) << err.str();
    }
}

}  // namespace
}  // namespace varo
