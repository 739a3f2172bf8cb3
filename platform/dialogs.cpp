#include "platform/dialogs.h"

#include <algorithm>

namespace varo {

namespace {

// Field by field: an aggregate with many defaulted members trips a false "maybe uninitialized"
// in optimised builds of some compilers.
ScriptedDialogs::Event MakeEvent(ScriptedDialogs::Event::Kind kind, std::string_view text) {
    ScriptedDialogs::Event event;
    event.kind = kind;
    event.text = text;
    return event;
}

// The next answer of a queue; an empty queue answers "cancelled".
std::optional<std::string> NextAnswer(std::deque<std::optional<std::string>>& answers) {
    if (answers.empty()) return std::nullopt;
    auto answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

}  // namespace

void ScriptedDialogs::ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    Event event = MakeEvent(Event::Kind::Message, text);
    event.title = title.empty() ? kProgramTitle : title;
    event.icon = icon;
    events_.push_back(std::move(event));
}

void ScriptedDialogs::Beep() {
    events_.push_back(MakeEvent(Event::Kind::Beep, {}));
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
    Event event = MakeEvent(Event::Kind::SaveDialog, request.title);
    event.request = request;
    events_.push_back(std::move(event));
    return NextAnswer(saveAnswers_);
}

std::optional<std::string> ScriptedDialogs::AskOpenFileName(const OpenDialogRequest& request) {
    Event event = MakeEvent(Event::Kind::OpenDialog, request.title);
    event.openRequest = request;
    events_.push_back(std::move(event));
    return NextAnswer(openAnswers_);
}

KeepChanges ScriptedDialogs::AskKeepChanges(std::string_view text) {
    events_.push_back(MakeEvent(Event::Kind::KeepChanges, text));
    if (keepAnswers_.empty()) return KeepChanges::Cancel;
    const KeepChanges answer = keepAnswers_.front();
    keepAnswers_.pop_front();
    return answer;
}

PrintOutcome ScriptedDialogs::Print(const PrintDocument& document) {
    Event event = MakeEvent(Event::Kind::Print, document.name);
    event.document = document;
    events_.push_back(std::move(event));
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
