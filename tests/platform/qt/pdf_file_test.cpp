#include <gtest/gtest.h>

#include <QPrinter>
#include <filesystem>
#include <string>

#include "platform/file_size_limit.h"
#include "platform/qt/qt_print.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

using testing::ReadBytes;
using testing::TempFolder;
using testing::WriteBytes;
namespace fs = std::filesystem;

PrintDocument OnePage() {
    Surface drawing(5000, 5000);
    drawing.Text(100, 100, "the report");
    return {"report", {{12240, 15840, {{drawing, {0, 0, 5000, 5000}, {0, 0, 5000, 5000}}}}}};
}

// The PDF is made in memory and saved whole, as every other file: on a full disk, into a
// read-only file or a missing folder it fails with the path and the system's reason, and the
// previous file stays byte for byte. Qt's print dialog's "print to file" takes the same way.
TEST(WritePdf, IsSavedWholeOrNotAtAll) {
    const struct {
        const char* name;
        std::size_t diskRoom;
        bool readOnly;
        const char* reason;  // empty: written
    } cases[] = {
        {"fits", 1 << 20, false, ""},
        {"disk full", 200, false, "File too large"},
        {"read-only", 1 << 20, true, "Permission denied"},
    };
    for (const bool throughPrinter : {false, true}) {
        for (const auto& c : cases) {
            TempFolder folder;
            const std::string path = folder.File("r.pdf");
            WriteBytes(path, "the previous report");
            if (c.readOnly) fs::permissions(path, fs::perms{0444});
            PrintOutcome outcome;
            {
                const FileSizeLimit disk(c.diskRoom);
                if (throughPrinter) {
                    QPrinter printer;
                    printer.setOutputFormat(QPrinter::PdfFormat);
                    printer.setOutputFileName(QString::fromStdString(path));
                    outcome = PaintDocument(OnePage(), printer);
                } else {
                    outcome = WritePdf(OnePage(), path);
                }
            }
            const bool written = *c.reason == '\0';
            EXPECT_EQ(outcome.status,
                      written ? PrintOutcome::Status::Printed : PrintOutcome::Status::Failed)
                << c.name;
            EXPECT_EQ(outcome.detail, written ? "" : path + ": " + c.reason) << c.name;
            const std::string left = ReadBytes(path);
            EXPECT_EQ(left.rfind(written ? "%PDF" : "the previous report", 0), 0u) << c.name;
            if (written) {
                EXPECT_EQ(left.substr(left.size() - 6), "%%EOF\n") << c.name;
            }
            EXPECT_EQ(std::distance(fs::directory_iterator(folder.str()), {}), 1) << c.name;
        }
    }
    const PrintOutcome missing = WritePdf(OnePage(), "/nonexistent/r.pdf");
    EXPECT_EQ(missing.detail, "/nonexistent/r.pdf: No such file or directory");
}

}  // namespace
}  // namespace varo
