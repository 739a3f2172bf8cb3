#pragma once

#include <deque>
#include <ostream>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace varo::cli {

// The command line's answer to the program's dialogs: each message goes to standard error as it
// comes and is kept for the JSON; save dialogs are answered with the paths given as options. A
// failure's detail (path and reason) follows its message on a line of its own.
class CliDialogs : public Dialogs {
  public:
    explicit CliDialogs(std::ostream& err) : err_(err) {}

    void ShowMessage(std::string_view text, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    void Beep() override;
    std::optional<std::string> AskSaveFileName(const SaveDialogRequest& request) override;
    void ShowFailure(std::string_view text, std::string_view detail, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    void BeepFailure(std::string_view detail) override;
    // Printing goes to a PDF file, at the next path given for a save.
    PrintOutcome Print(const PrintDocument& document) override;

    void AnswerNextSave(std::string path) { saveAnswers_.push_back(std::move(path)); }
    const std::vector<std::string>& messages() const { return messages_; }
    int beeps() const { return beeps_; }
    // The detail of the last failure reported by a beep alone, for a message of the caller's own.
    const std::string& lastBeepDetail() const { return lastBeepDetail_; }

  private:
    std::ostream& err_;
    std::vector<std::string> messages_;
    std::deque<std::string> saveAnswers_;
    int beeps_ = 0;
    std::string lastBeepDetail_;
};

}  // namespace varo::cli
