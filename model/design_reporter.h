#pragma once

#include <string_view>

#include "core/reporter.h"
#include "model/design_form.h"
#include "platform/dialogs.h"

namespace varo {

// The engine's reporter on the design screen: messages go to the dialogs, and a raised
// pi-section Q goes straight into the Q entry so the screen shows what the engine now uses.
class DesignReporter : public Reporter {
  public:
    DesignReporter(Dialogs& dialogs, DesignForm& form) : dialogs_(dialogs), form_(form) {}

    void ShowMessage(std::string_view text, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    void PiQReset(std::string_view qText) override;

  private:
    Dialogs& dialogs_;
    DesignForm& form_;
};

}  // namespace varo
