#pragma once

#include <QStringList>
#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"

class QWidget;

namespace varo {

// The program's filter text, "Description (*.EXT)|*.EXT" (blanks around the bar allowed, more
// pairs separated by further bars), as Qt name filters: "Description (*.EXT)". A description
// that does not name its pattern gets it appended.
QStringList ToQtNameFilters(std::string_view filter);

// Message boxes, beep and save dialog on the desktop.
class QtDialogs : public Dialogs {
  public:
    // Dialogs are centred on `parent` when one is given.
    explicit QtDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }

    void ShowMessage(std::string_view text, std::string_view title = {},
                     MessageIcon icon = MessageIcon::None) override;
    void Beep() override;
    // The dialog is Qt's own (not the desktop's), so it behaves the same everywhere.
    std::optional<std::string> AskSaveFileName(const SaveDialogRequest& request) override;
    // A print preview with Qt's print dialog behind its Print button and a "Save as PDF" action
    // (qt_print.cpp).
    PrintOutcome Print(const PrintDocument& document) override;

  private:
    QWidget* parent_;
};

}  // namespace varo
