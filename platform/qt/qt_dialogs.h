#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/qt/save_dialog.h"

namespace varo {

// The program's filter text, "Description (*.EXT)|*.EXT" (blanks around the bar allowed, more
// pairs separated by further bars), as Qt name filters: "Description (*.EXT)". A description
// that does not name its pattern gets it appended.
QStringList ToQtNameFilters(std::string_view filter);

// Message boxes, beep and file dialogs on the desktop.
class QtDialogs : public Dialogs {
  public:
    // Dialogs are centred on `parent` when one is given.
    explicit QtDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }

    // Boxes are wide enough that no line of the text wraps.
    void ShowMessage(std::string_view text, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    void Beep() override;
    // The dialog is the program's own (see SaveDialog); it opens in the folder last chosen.
    std::optional<std::string> AskSaveFileName(const SaveDialogRequest& request) override;
    // The same dialog in its open form: only an existing file is taken.
    std::optional<std::string> AskOpenFileName(const OpenDialogRequest& request) override;
    KeepChanges AskKeepChanges(std::string_view text) override;
    // A print preview with Qt's print dialog behind its Print button and a "Save as PDF" action
    // (qt_print.cpp).
    PrintOutcome Print(const PrintDocument& document) override;
    // The path and the system's reason show below the program's own sentence.
    void ShowFailure(std::string_view text, std::string_view detail, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    // Only the beep: the detail goes to the error output for whoever runs the program there.
    void BeepFailure(std::string_view detail) override;

  private:
    void ShowBox(std::string_view text, std::string_view detail, std::string_view title,
                 MessageIcon icon);
    std::optional<std::string> RunFileDialog(const QString& title, std::string_view filter,
                                             int filterIndex, const QString& proposedName,
                                             bool overwritePrompt, FileDialogPurpose purpose);

    // Dialogs outlive a parent that goes away while they run (see GuardedDialog).
    QPointer<QWidget> parent_;
    QString lastFolder_;
    bool fileDialogOpen_ = false;
};

}  // namespace varo
