#pragma once

#include <string>
#include <string_view>

namespace varo {

enum class MessageIcon { None, Critical, Exclamation, Information };

// What the engine needs from its caller to tell the user something. The engine never prints;
// the desktop program routes these to its dialogs, the command line to standard error, tests to
// a recorder.
class Reporter {
  public:
    virtual ~Reporter() = default;
    // A message box with only an OK button; an empty title means the program's default title.
    virtual void ShowMessage(std::string_view text, std::string_view title = {},
                             MessageIcon icon = MessageIcon::None) = 0;
    // "Close all open files": the calculation error paths do this before they report.
    virtual void CloseAllFiles() {}
    // The component calculation raised the pi-section Q after a fault; text is the new Q in
    // the general number form (" 11"), ready for the Q entry field.
    virtual void PiQReset(std::string_view /*qText*/) {}
};

// Line break used inside every multi-line message.
inline constexpr std::string_view kCrLf = "\r\n";

}  // namespace varo
