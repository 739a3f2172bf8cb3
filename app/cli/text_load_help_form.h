#pragma once

#include <string>
#include <string_view>

#include "tools/loadhelp/plate_load.h"

namespace varo::cli {

// The plate-load helper's entries and labels, held as texts.
class TextLoadHelpForm : public LoadHelpForm {
  public:
    TextLoadHelpForm(std::string voltage, std::string power, ClassOption option)
        : voltage_(std::move(voltage)), power_(std::move(power)), option_(option) {}
    std::string VoltageText() const override { return voltage_; }
    void SetVoltageText(std::string_view text) override { voltage_ = text; }
    std::string PowerText() const override { return power_; }
    void SetPowerText(std::string_view text) override { power_ = text; }
    ClassOption SelectedClass() const override { return option_; }
    void ClearClassSelection() override { option_ = ClassOption::None; }
    void SetCurrentLoadText(std::string_view) override {}
    void SetNewLoadText(std::string_view text) override { newLoad_ = text; }
    const std::string& newLoadText() const { return newLoad_; }

  private:
    std::string voltage_, power_, newLoad_;
    ClassOption option_;
};

}  // namespace varo::cli
