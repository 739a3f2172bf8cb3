#include "platform/dialogs.h"

#include <algorithm>

namespace varo {

void ScriptedDialogs::ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    Event event{Event::Kind::Message,
                std::string(text),
                std::string(title.empty() ? kProgramTitle : title),
                icon,
                {},
                {},
                {}};
    events_.push_back(std::move(event));
}

void ScriptedDialogs::Beep() {
    events_.push_back(Event{Event::Kind::Beep, {}, {}, {}, {}, {}, {}});
}

void ScriptedDialogs::ShowFailure(std::string_view text, std::string_view detail,
                                  std::string_view title, MessageIcon icon) {
    ShowMessage(text, title, icon);
    events_.back().detail = detail;
}

void ScriptedDialogs::BeepFailure(std::string_view detail) {
    Beep();
    events_.back().detail = detail;
}

std::optional<std::string> ScriptedDialogs::AskSaveFileName(const SaveDialogRequest& request) {
    events_.push_back(Event{Event::Kind::SaveDialog, request.title, {}, {}, request, {}, {}});
    if (saveAnswers_.empty()) return std::nullopt;
    auto answer = std::move(saveAnswers_.front());
    saveAnswers_.pop_front();
    return answer;
}

PrintOutcome ScriptedDialogs::Print(const PrintDocument& document) {
    events_.push_back(Event{Event::Kind::Print, document.name, {}, {}, {}, {}, document});
    if (printAnswers_.empty()) return {};
    auto answer = std::move(printAnswers_.front());
    printAnswers_.pop_front();
    return answer;
}

std::vector<std::string> ScriptedDialogs::messages() const {
    std::vector<std::string> texts;
    for (const auto& event : events_)
        if (event.kind == Event::Kind::Message) texts.push_back(event.text);
    return texts;
}

int ScriptedDialogs::beeps() const {
    return static_cast<int>(std::count_if(events_.begin(), events_.end(), [](const Event& e) {
        return e.kind == Event::Kind::Beep;
    }));
}

}  // namespace varo
