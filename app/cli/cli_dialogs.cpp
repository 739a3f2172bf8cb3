#include "app/cli/cli_dialogs.h"

#include "app/cli/pdf_writer.h"

namespace varo::cli {

namespace {

// A terminal shows a message's CR LF line breaks as plain line ends.
std::string ForTerminal(std::string_view text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        shown += text[i];
    }
    return shown;
}

}  // namespace

void CliDialogs::ShowMessage(std::string_view text, std::string_view title, MessageIcon) {
    messages_.emplace_back(text);
    if (!title.empty()) err_ << title << ": ";
    err_ << ForTerminal(text) << '\n';
}

void CliDialogs::Beep() {
    ++beeps_;
    err_ << '\a' << std::flush;
}

void CliDialogs::ShowFailure(std::string_view text, std::string_view detail, std::string_view title,
                             MessageIcon icon) {
    if (detail.empty()) return ShowMessage(text, title, icon);
    ShowMessage(std::string(text) + "\n" + std::string(detail), title, icon);
}

void CliDialogs::BeepFailure(std::string_view detail) {
    Beep();
    lastBeepDetail_ = detail;
}

std::optional<std::string> CliDialogs::AskSaveFileName(const SaveDialogRequest&) {
    if (saveAnswers_.empty()) return std::nullopt;
    std::string path = std::move(saveAnswers_.front());
    saveAnswers_.pop_front();
    return path;
}

PrintOutcome CliDialogs::Print(const PrintDocument& document) {
    const auto path = AskSaveFileName({});
    if (!path) return {};
    return WritePdfThroughModule(document, *path);
}

}  // namespace varo::cli
