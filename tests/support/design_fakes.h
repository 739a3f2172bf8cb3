#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/design_form.h"
#include "platform/field_form.h"

namespace varo::test {

// The design screen's fields as texts; every text set is also logged in order.
class RecordingDesignForm : public TextFields<DesignForm> {
  public:
    void SetText(DesignField field, std::string_view text) override {
        TextFields<DesignForm>::SetText(field, text);
        log.push_back(std::string(ControlName(field)) + "=" + std::string(text));
    }
    void EnableAccept() override { ++acceptOffers; }

    std::vector<std::string> log;
    int acceptOffers = 0;
};

}  // namespace varo::test
