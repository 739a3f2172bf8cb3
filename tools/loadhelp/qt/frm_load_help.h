#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/qt/screen_helpers.h"
#include "platform/surface.h"
#include "tools/loadhelp/plate_load.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QGroupBox;

namespace varo {

class SurfaceWidget;

// The plate-load helper: swing and power entries, the class of operation, the new load, and the
// waveform panel that the numbers stand for. Accept writes the load into the design; both
// buttons ask to return to the design screen.
class FrmLoadHelp : public QWidget, public LoadHelpForm {
    Q_OBJECT

  public:
    FrmLoadHelp(DesignState& state, Dialogs& dialogs, std::function<void()> returnToDesign,
                QWidget* parent = nullptr);

    const Surface& surface() const;

    // LoadHelpForm
    std::string Text(LoadHelpField field) const override;
    void SetText(LoadHelpField field, std::string_view text) override;
    ClassOption SelectedClass() const override;
    void ClearClassSelection() override;
    void SetAcceptEnabled(bool enabled) override;
    void SetClassChoiceEnabled(bool enabled) override;

  private:
    void BuildControls();
    void BuildEntries();
    void BuildClassChoice();
    void BuildPanelLabels();
    void BuildButtons();
    void Connect();

    DesignState& state_;
    Dialogs& dialogs_;
    std::function<void()> returnToDesign_;
    LoadHelpState help_;
    SurfaceWidget* background_ = nullptr;
    QGroupBox* classFrame_ = nullptr;
    std::array<QRadioButton*, 4> classOptions_{};
    std::map<LoadHelpField, QLineEdit*> entries_;
    std::map<LoadHelpField, QLabel*> labels_;
    ActionGate actions_{*this};
};

}  // namespace varo
