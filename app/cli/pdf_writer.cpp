#include "app/cli/pdf_writer.h"

#include <dlfcn.h>

#include <array>

#include "app/cli/pdf/pdf_module.h"
#include "platform/system.h"

namespace varo::cli {

namespace {

// Loaded once and kept: Qt does not survive being unloaded.
WritePdfFunction LoadWriter(std::string& failure) {
    static WritePdfFunction writer = nullptr;
    if (writer) return writer;
    const std::array<std::string, 2> candidates{
        ExecutableFolder() + "/../" VARO_PDF_MODULE_INSTALL_DIR "/varo_pdf.so",
        VARO_PDF_MODULE_BUILD_PATH};
    for (const std::string& path : candidates) {
        if (void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
            writer = reinterpret_cast<WritePdfFunction>(dlsym(module, kWritePdfSymbol));
            if (writer) return writer;
        }
        const char* reason = dlerror();
        failure = reason ? reason : "the PDF module has no writer";
    }
    return nullptr;
}

}  // namespace

PrintOutcome WritePdfThroughModule(const PrintDocument& document, const std::string& path) {
    std::string failure;
    const WritePdfFunction writer = LoadWriter(failure);
    if (!writer) return {PrintOutcome::Status::Failed, "The PDF writer is missing: " + failure};
    PrintOutcome outcome;
    writer(document, path, outcome);
    return outcome;
}

}  // namespace varo::cli
