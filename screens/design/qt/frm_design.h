#pragma once

#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/surface.h"
#include "screens/design/design_actions.h"
#include "screens/design/design_form.h"
#include "screens/design/design_reporter.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QShowEvent;

namespace varo {

class SurfaceWidget;
class UpDown;

// The logical size of the design screen's drawing, in twips.
inline constexpr float kDesignScreenWidth = 12000;
inline constexpr float kDesignScreenHeight = 9000;

// The design screen: entries, adjust buttons and the actions in the left column and along the
// bottom, drawn over one surface that holds the schematic, the stresses and the small plot.
// Every action runs the design logic's fixed sequences; this class only routes and shows.
class FrmDesign : public QWidget, public DesignForm, public DesignRedraw {
    Q_OBJECT

  public:
    FrmDesign(DesignState& state, Dialogs& dialogs, DesignSession& session,
              QWidget* parent = nullptr);

    // Fills the entries from the design and runs the first recalculation, so the screen shows
    // the current design. Runs each time the screen is shown again.
    void LoadScreen();

    // The display list behind the controls: schematic, stresses, small plot.
    const Surface& surface() const;

    // DesignForm
    std::string FieldText(std::string_view control) const override;
    void SetFieldText(std::string_view control, std::string_view text) override;
    void EnableButton(std::string_view control) override;

    // DesignRedraw
    void DrawSchematic() override;
    void ShowStresses() override;
    void DrawSmallPlot() override;

  signals:
    void requestPlot();
    void requestInductor();
    void requestLoadHelp();
    void requestExit();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void BuildControls();
    void BuildEntryColumn();
    void BuildGeneratorEntry();
    void BuildCommandRow();
    void AddAdjustButtons(const char* minusName, const char* plusName, int row);
    void ConnectEntries();
    void ConnectCommands();
    void SetTabOrder();

    QLabel* AddLabel(const char* name, const QString& caption, const QRectF& at,
                     qreal pointSize = 8.25);
    QLineEdit* AddEntry(const char* name, const QRectF& at);
    QPushButton* AddButton(const char* name, const QString& caption, const QRectF& at);
    UpDown* AddUpDown(const char* name, const QRectF& at, int minimum, int maximum);

    // After every action that recalculated: phase labels and spinner positions follow the design.
    void ShowDesignReadouts();
    // Buttons whose screens are not part of this version yet say so, unless the program
    // connected the screen.
    void LeaveFor(void (FrmDesign::*request)(), const char* notYetAvailable);

    QLineEdit* Entry(std::string_view control) const;

    DesignState& state_;
    Dialogs& dialogs_;
    DesignSession& session_;
    DesignReporter reporter_;
    SurfaceWidget* background_ = nullptr;
    UpDown* upDownIntermediate_ = nullptr;
    UpDown* upDownGenerator_ = nullptr;
    QLabel* phaseLabel_ = nullptr;
};

}  // namespace varo
