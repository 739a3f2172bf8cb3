#pragma once

#include <string>
#include <string_view>

namespace varo {

// What the design screen's logic needs from the screen: field texts by control name
// ("txtFrequency", "txtQ", ...) and enabling a command button. The Qt screen implements it over
// its widgets; tests and the command line implement it over a map.
class DesignForm {
  public:
    virtual ~DesignForm() = default;
    virtual std::string FieldText(std::string_view control) const = 0;
    virtual void SetFieldText(std::string_view control, std::string_view text) = 0;
    virtual void EnableButton(std::string_view /*control*/) {}
};

// Redraw steps that end every recalculation: schematic, stresses, small plot (with the
// harmonic table). The Qt screen implements them; the command line leaves them empty.
class DesignRedraw {
  public:
    virtual ~DesignRedraw() = default;
    virtual void DrawSchematic() {}
    virtual void ShowStresses() {}
    virtual void DrawSmallPlot() {}
};

}  // namespace varo
