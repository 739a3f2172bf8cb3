#pragma once

#include <QDialog>
#include <QPointer>
#include <utility>

namespace varo {

// A modal dialog whose parent window may go away while it runs (closed and deleted from a timer,
// or from another window the dialog does not block): Qt then deletes the dialog with its parent,
// and Exec reports a rejection instead of leaving the caller a dangling dialog. Kept on the heap
// for that reason; deleted at the end of the scope when it is still there.
template <typename Dialog>
class GuardedDialog {
  public:
    template <typename... Args>
    explicit GuardedDialog(Args&&... args) : dialog_(new Dialog(std::forward<Args>(args)...)) {}
    ~GuardedDialog() { delete dialog_.data(); }
    GuardedDialog(const GuardedDialog&) = delete;
    GuardedDialog& operator=(const GuardedDialog&) = delete;

    // Null once the dialog went away with its parent.
    Dialog* get() const { return dialog_.data(); }
    Dialog* operator->() const { return dialog_.data(); }

    int Exec() {
        const int result = dialog_->exec();
        return dialog_ ? result : QDialog::Rejected;
    }

  private:
    QPointer<Dialog> dialog_;
};

}  // namespace varo
