#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/reporter.h"

namespace varo::test {

struct RecordedMessage {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::None;
};

// Records every report, and the order of all calls in `events` ("close", "piq", "message").
class RecordingReporter final : public Reporter {
  public:
    void ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) override {
        messages.push_back({std::string(text), std::string(title), icon});
        events.emplace_back("message");
    }
    void CloseAllFiles() override { events.emplace_back("close"); }
    void PiQReset(std::string_view qText) override {
        piQTexts.emplace_back(qText);
        events.emplace_back("piq");
    }

    std::vector<RecordedMessage> messages;
    std::vector<std::string> piQTexts;
    std::vector<std::string> events;
};

}  // namespace varo::test
