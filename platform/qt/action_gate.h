#pragma once

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QScopedValueRollback>
#include <QWidget>

namespace varo {

// True while a screen's controls may act: its window is shown and no dialog of another window
// blocks it. Assistive technology reaches hidden and blocked windows too; what it presses there
// must do nothing, as a click there would.
inline bool ScreenMayAct(const QWidget& screen) {
    const QWidget* window = screen.window();
    if (!window->isVisible()) return false;
    const QWidget* modal = QApplication::activeModalWidget();
    return modal == nullptr || modal == window;
}

// Runs a screen's actions one at a time, and only while the screen may act: what a dialog's own
// event loop lets through while one runs is dropped, as a click on a blocked window would be.
// While an action has a dialog open, the screen refuses to close, so the dialog and the action
// waiting for it never lose their screen.
class ActionGate : public QObject {
  public:
    explicit ActionGate(QWidget& screen) : screen_(screen) {}

    template <typename Action>
    void Run(const Action& action) {
        if (running_ || !ScreenMayAct(screen_)) return;
        // Installed again, so it is the first filter: a refused close reaches no one else.
        screen_.installEventFilter(this);
        const QScopedValueRollback<bool> running(running_, true);
        action();
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (running_ && event->type() == QEvent::Close && watched == &screen_ &&
            QApplication::activeModalWidget() != nullptr) {
            event->ignore();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QWidget& screen_;
    bool running_ = false;
};

}  // namespace varo
