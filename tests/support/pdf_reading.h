#pragma once

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/dialogs.h"
#include "platform/qt/qt_print.h"

namespace varo::test {

// Answers the print dialogs with "Save as PDF" to the scripted path, as the desktop does.
class PdfDialogs : public ScriptedDialogs {
  public:
    std::optional<std::string> pdfPath;
    PrintOutcome Print(const PrintDocument& document) override {
        ScriptedDialogs::Print(document);
        return pdfPath ? WritePdf(document, *pdfPath) : PrintOutcome{};
    }
};

inline std::string Run(const std::string& command) {
    std::string output;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    for (std::array<char, 4096> buffer{}; pipe && fgets(buffer.data(), buffer.size(), pipe.get());)
        output += buffer.data();
    return output;
}

// What a reader of the file finds: its page count, and its text without line breaks.
inline std::pair<std::string, std::string> PagesAndText(const std::string& path) {
    std::string text = Run("pdftotext -raw '" + path + "' -");
    std::replace(text.begin(), text.end(), '\n', ' ');
    return {Run("pdfinfo '" + path + "' | sed -n 's/^Pages: *//p'"), text};
}

}  // namespace varo::test
