#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "model/design.h"
#include "model/design_form.h"
#include "model/design_reporter.h"
#include "platform/dialogs.h"
#include "platform/qt/action_gate.h"
#include "platform/surface.h"
#include "screens/design/design_actions.h"

class QCheckBox;
class QCloseEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QShowEvent;

namespace varo {

class SurfaceWidget;
class UpDown;

// The design screen: entries, adjust buttons and the actions in the left column and along the
// bottom, drawn over one surface that holds the schematic, the stresses and the small plot.
// Every action runs the design logic's fixed sequences; this class only routes and shows.
class FrmDesign : public QWidget, public DesignForm {
    Q_OBJECT

  public:
    FrmDesign(Design& design, Dialogs& dialogs, DesignSession& session, QWidget* parent = nullptr);

    // Fills the entries from the design and shows what the screen works out on load. Runs each
    // time the screen is shown again.
    void LoadScreen();

    // The display list behind the controls: schematic, stresses, small plot.
    const Surface& surface() const;

    // DesignForm
    std::string Text(DesignField field) const override;
    void SetText(DesignField field, std::string_view text) override;
    void EnableAccept() override;

    // Draws what the design's last operation settled.
    void ShowResults();

    // Edited design entries not yet taken into the design.
    bool HasPendingEdits() const { return pending_; }

  signals:
    void requestPlot();
    void requestInductor();
    void requestLoadHelp();
    void requestBands();
    void requestLoadRange();
    void requestExit();

  protected:
    void showEvent(QShowEvent* event) override;
    // The desktop's close is Exit: the same handler runs, and the window goes once it has.
    void closeEvent(QCloseEvent* event) override;
    void ShowWoundCoilQ();

  private:
    void BuildControls();
    void BuildEntryColumn();
    void BuildGeneratorEntry();
    void BuildCommandRow();
    void BuildLossEntries();
    void SetToolTips();
    void AddAdjustButtons(const char* minusName, const char* plusName, const QString& quantity,
                          int row);
    void ConnectEntries();
    void ConnectCommands();
    void SetTabOrder();

    QLabel* AddLabel(const char* name, const QString& caption, const QRectF& at,
                     qreal pointSize = 8.25);
    QLineEdit* AddEntry(DesignField field, const QString& spokenName, const QRectF& at);
    UpDown* AddUpDown(const char* name, const QString& spokenName, const QRectF& at, int minimum,
                      int maximum);

    // Runs one action of the screen to its end, then shows what it settled; an action that
    // returns true took the typed entries in. An action's message boxes run an event loop of
    // their own, in which only assistive technology can still reach this (blocked) screen: what
    // it asks for meanwhile is dropped, as a mouse click on a blocked window would be.
    void RunAction(const std::function<bool()>& action);
    // The same for an entry's edit: it runs once the entry has finished handling the edit.
    void RunAfterEdit(const std::function<bool()>& action);
    // Spinner positions follow the design after every action.
    void ShowSpinnerPositions();
    // Buttons whose screens are not part of this version yet say so, unless the program
    // connected the screen.
    void LeaveFor(void (FrmDesign::*request)(), const char* notYetAvailable);
    // Typed entries are marked, and Accept emphasised, until an action takes them in.
    void SetPending(bool pending);
    void MarkEdited(QLineEdit* entry);
    // A Q entry was left: a value above 0 is kept (also for the next run) and the losses are
    // worked out again; anything else puts the entry back.
    void OnLossQEdited(QLineEdit* entry, double TankQ::*which, const char* settingsKey);
    void ShowAbout();

    // Design files: the File menu, its actions, and the title that names the open design.
    void BuildFileMenu();
    bool OpenDesign();
    bool OpenDesignAt(const std::string& path);
    bool SaveDesign();
    bool SaveDesignAs();
    bool SaveDesignTo(const std::string& path);
    // Before unsaved work of a named design would be left: Save, Discard or Cancel. False for
    // Cancel (or a save that failed): stay.
    bool MayLeaveDesign();
    bool HasUnsavedChanges() const;
    void TakeDesignFile(const std::string& path);
    void RememberRecentDesign(const std::string& path);
    void FillRecentMenu();
    void ShowTitle();
    void ShowLossQ();

    QLineEdit* Entry(DesignField field) const { return entries_.at(field); }

    Design& design_;
    Dialogs& dialogs_;
    DesignSession& session_;
    DesignReporter reporter_;
    SurfaceWidget* background_ = nullptr;
    UpDown* upDownIntermediate_ = nullptr;
    UpDown* upDownGenerator_ = nullptr;
    QLabel* phaseLabel_ = nullptr;
    std::map<DesignField, QLineEdit*> entries_;
    QLineEdit* coilQEntry_ = nullptr;
    QCheckBox* woundQCheck_ = nullptr;
    QLineEdit* capacitorQEntry_ = nullptr;
    TankQ lossQ_;
    QMenu* recentMenu_ = nullptr;
    std::string savedDesignText_;  // the open design file as saved or opened
    bool exiting_ = false;         // Exit has run: the window may close
    ActionGate actions_{*this};
    bool pending_ = false;
};

}  // namespace varo
