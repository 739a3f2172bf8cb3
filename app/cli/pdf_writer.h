#pragma once

#include <string>

#include "platform/print_document.h"

namespace varo::cli {

// The document as a PDF file at `path`, through the PDF module (installed beside the program's
// libraries, or in the build tree); a module that cannot be found or loaded is a failure.
PrintOutcome WritePdfThroughModule(const PrintDocument& document, const std::string& path);

}  // namespace varo::cli
