#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/fault.h"
#include "screens/design/design_form.h"

namespace varo {

// The design screen's fields as a map; every text set is also logged in order.
class MapDesignForm : public DesignForm {
  public:
    std::string FieldText(std::string_view control) const override {
        const auto found = fields.find(std::string(control));
        return found == fields.end() ? std::string() : found->second;
    }
    void SetFieldText(std::string_view control, std::string_view text) override {
        fields[std::string(control)] = std::string(text);
        log.push_back(std::string(control) + "=" + std::string(text));
    }
    void EnableButton(std::string_view control) override {
        enabled.push_back(std::string(control));
    }

    std::map<std::string, std::string, std::less<>> fields;
    std::vector<std::string> log;
    std::vector<std::string> enabled;
};

class RecordingRedraw : public DesignRedraw {
  public:
    void DrawSchematic() override { calls.push_back("schematic"); }
    void ShowStresses() override {
        calls.push_back("stresses");
        if (stressesFault) throw ArithmeticFault(FaultKind::DivisionByZero);
    }
    void DrawSmallPlot() override { calls.push_back("plot"); }

    std::vector<std::string> calls;
    bool stressesFault = false;
};

}  // namespace varo
