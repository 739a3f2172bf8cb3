#include "platform/qt/action_gate.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QTimer>

namespace varo {
namespace {

// Opens a modal dialog of another window for as long as `meanwhile` runs.
template <typename Meanwhile>
void WhileAnotherWindowsDialogIsOpen(const Meanwhile& meanwhile) {
    QWidget other;
    other.show();
    QDialog dialog(&other);
    QTimer::singleShot(0, &dialog, [&] {
        meanwhile();
        dialog.reject();
    });
    dialog.exec();
}

// Whatever reaches a screen's controls (a click, a shortcut, assistive technology) runs only
// while the screen is shown and not blocked, one action at a time.
TEST(ActionGate, RunsOnlyOnAShownUnblockedScreenAndOneAtATime) {
    QWidget screen;
    ActionGate gate(screen);
    int runs = 0;
    const auto count = [&runs] { ++runs; };
    gate.Run(count);
    EXPECT_EQ(runs, 0) << "hidden";
    screen.show();
    gate.Run(count);
    EXPECT_EQ(runs, 1) << "shown";
    WhileAnotherWindowsDialogIsOpen([&] { gate.Run(count); });
    EXPECT_EQ(runs, 1) << "blocked";
    gate.Run([&] { gate.Run(count); });
    EXPECT_EQ(runs, 1) << "one at a time";
}

// A screen whose action has a dialog open refuses to close, so the dialog and the action after
// it keep their screen; an action with no dialog open (Return) closes it as asked.
TEST(ActionGate, AScreenWithAnActionsDialogOpenRefusesToClose) {
    QWidget screen;
    ActionGate gate(screen);
    screen.show();
    bool closedUnderDialog = true;
    gate.Run([&] {
        QDialog dialog(&screen);
        QTimer::singleShot(0, &dialog, [&] {
            closedUnderDialog = screen.close();
            dialog.reject();
        });
        dialog.exec();
    });
    EXPECT_FALSE(closedUnderDialog);
    EXPECT_TRUE(screen.isVisible());
    bool closedByReturn = false;
    gate.Run([&] { closedByReturn = screen.close(); });
    EXPECT_TRUE(closedByReturn);
}

}  // namespace
}  // namespace varo
