#include "model/design_reporter.h"

namespace varo {

void DesignReporter::ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    dialogs_.ShowMessage(text, title, icon);
}

void DesignReporter::PiQReset(std::string_view qText) {
    form_.SetText(DesignField::Q, qText);
}

}  // namespace varo
