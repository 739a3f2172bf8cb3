#pragma once

#include <map>
#include <string>
#include <string_view>

#include "screens/design/design_form.h"

namespace varo::cli {

// The design screen's entry fields, held as texts by control name.
class MapForm : public DesignForm {
  public:
    std::string FieldText(std::string_view control) const override {
        const auto found = fields_.find(std::string(control));
        return found == fields_.end() ? std::string() : found->second;
    }
    void SetFieldText(std::string_view control, std::string_view text) override {
        fields_[std::string(control)] = std::string(text);
    }

  private:
    std::map<std::string, std::string> fields_;
};

}  // namespace varo::cli
