#pragma once

#include <string_view>

#include "platform/field_form.h"
#include "tools/loadhelp/plate_load.h"

namespace varo::cli {

// The plate-load helper's entries and labels, held as texts.
class TextLoadHelpForm : public TextFields<LoadHelpForm> {
  public:
    TextLoadHelpForm(std::string_view voltage, std::string_view power, ClassOption option)
        : option_(option) {
        SetText(LoadHelpField::Voltage, voltage);
        SetText(LoadHelpField::Power, power);
    }
    ClassOption SelectedClass() const override { return option_; }
    void ClearClassSelection() override { option_ = ClassOption::None; }

  private:
    ClassOption option_;
};

}  // namespace varo::cli
