#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/reporter.h"
#include "platform/print_document.h"

namespace varo {

// The program's name: the default title of every message box.
inline constexpr std::string_view kProgramTitle = "VARO";

struct SaveDialogRequest {
    std::string title;
    std::string filter;  // "Description (*.EXT)|*.EXT" as the program writes it
    int filterIndex = 1;
    std::string proposedName;
    bool overwritePrompt = false;
    bool operator==(const SaveDialogRequest&) const = default;
};

struct OpenDialogRequest {
    std::string title;
    std::string filter;  // as for SaveDialogRequest
    bool operator==(const OpenDialogRequest&) const = default;
};

// The answers to "keep the changes?" before unsaved work would be left.
enum class KeepChanges { Save, Discard, Cancel };

// Every message box, beep and file dialog goes through this, so tests can answer them.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    // A message box with only an OK button; an empty title means kProgramTitle.
    virtual void ShowMessage(std::string_view text, std::string_view title = {},
                             MessageIcon icon = MessageIcon::None) = 0;
    virtual void Beep() = 0;
    // The chosen path, or nothing when the user cancelled.
    virtual std::optional<std::string> AskSaveFileName(const SaveDialogRequest& request) = 0;
    // An existing file to read, or nothing when the user cancelled. Without an override nothing
    // is ever chosen: only the desktop opens files by dialog.
    virtual std::optional<std::string> AskOpenFileName(const OpenDialogRequest& /*request*/) {
        return std::nullopt;
    }

    // A failed file operation: the program's own sentence, and apart from it a detail naming the
    // path and the system's reason. Without an override the detail is dropped, so what shows is
    // exactly the plain message.
    virtual void ShowFailure(std::string_view text, std::string_view /*detail*/,
                             std::string_view title = {}, MessageIcon icon = MessageIcon::None) {
        ShowMessage(text, title, icon);
    }
    // A failure the program reports by the beep alone; the detail is for whoever can show it.
    virtual void BeepFailure(std::string_view /*detail*/) { Beep(); }
    // The print dialogs: printer, preview, or "Save as PDF". Without an override nothing prints.
    virtual PrintOutcome Print(const PrintDocument& /*document*/) {
        return {PrintOutcome::Status::Failed, "No printer is available here."};
    }
    // Save, Discard or Cancel, asked before unsaved work is left. Without an override nobody
    // is there to ask, and nothing is left: Cancel.
    virtual KeepChanges AskKeepChanges(std::string_view /*text*/) { return KeepChanges::Cancel; }
};

// Test double: records every message, beep and dialog in order, and answers save and open dialogs
// from their queues (an empty queue answers "cancelled").
class ScriptedDialogs : public Dialogs {
  public:
    struct Event {
        enum class Kind { Message, Beep, SaveDialog, OpenDialog, Print, KeepChanges };
        Kind kind = Kind::Message;
        std::string text;   // message text, or the dialog's title
        std::string title;  // message title as shown (kProgramTitle when none was given)
        MessageIcon icon = MessageIcon::None;
        SaveDialogRequest request;
        OpenDialogRequest openRequest;
        std::string detail;        // a failure's path and reason
        PrintDocument document{};  // Print: what was handed to the print dialogs
    };

    void ShowMessage(std::string_view text, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    void Beep() override;
    std::optional<std::string> AskSaveFileName(const SaveDialogRequest& request) override;
    std::optional<std::string> AskOpenFileName(const OpenDialogRequest& request) override;
    void ShowFailure(std::string_view text, std::string_view detail, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    void BeepFailure(std::string_view detail) override;
    // Answered from its own queue; an empty queue answers "cancelled".
    PrintOutcome Print(const PrintDocument& document) override;

    // Answered from its own queue; an empty queue answers Cancel.
    KeepChanges AskKeepChanges(std::string_view text) override;

    void AnswerNextPrint(PrintOutcome outcome) { printAnswers_.push_back(std::move(outcome)); }
    void AnswerNextKeepChanges(KeepChanges answer) { keepAnswers_.push_back(answer); }
    void AnswerNextSave(std::optional<std::string> path) {
        saveAnswers_.push_back(std::move(path));
    }
    void AnswerNextOpen(std::optional<std::string> path) {
        openAnswers_.push_back(std::move(path));
    }

    const std::vector<Event>& events() const { return events_; }
    std::vector<std::string> messages() const;  // message texts only, in order
    int beeps() const;
    void clear() { events_.clear(); }

  private:
    std::vector<Event> events_;
    std::deque<std::optional<std::string>> saveAnswers_;
    std::deque<std::optional<std::string>> openAnswers_;
    std::deque<PrintOutcome> printAnswers_;
    std::deque<KeepChanges> keepAnswers_;
};

// Routes the engine's reports to the dialogs, and its "close all open files" to a callback.
class DialogReporter : public Reporter {
  public:
    explicit DialogReporter(Dialogs& dialogs) : dialogs_(dialogs) {}
    void ShowMessage(std::string_view text, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override {
        dialogs_.ShowMessage(text, title, icon);
    }

  private:
    Dialogs& dialogs_;
};

}  // namespace varo
