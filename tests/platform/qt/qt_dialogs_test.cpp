#include "platform/qt/qt_dialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>
#include <functional>

namespace varo {
namespace {

TEST(ToQtNameFilters, TurnsBarSeparatedPairsIntoQtFilters) {
    struct Case {
        const char* filter;
        QStringList expected;
    };
    const Case cases[] = {
        {"Quarn files (*.KVF)|*.KVF", {"Quarn files (*.KVF)"}},
        {"LTspice schematic files (*.ASC) | *.ASC", {"LTspice schematic files (*.ASC)"}},
        {"Overlay (*.S21)|*.S21|All files (*.*)|*.*", {"Overlay (*.S21)", "All files (*.*)"}},
        {"Text files|*.TXT", {"Text files (*.TXT)"}},
        {"|*.CFG", {"*.CFG"}},
        {"Plain", {"Plain"}},
        {"", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ToQtNameFilters(c.filter), c.expected) << c.filter;
}

// Runs `inspect` on the modal dialog that the next exec() opens.
void WhenModalOpens(std::function<void(QWidget*)> inspect) {
    QTimer::singleShot(
        0, [inspect = std::move(inspect)] { inspect(QApplication::activeModalWidget()); });
}

TEST(QtDialogs, SaveDialogShowsTheRequestAndCancelGivesNothing) {
    QtDialogs dialogs;
    QString title, selectedFilter;
    QStringList filters;
    bool confirmsOverwrite = true;
    WhenModalOpens([&](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        title = dialog->windowTitle();
        filters = dialog->nameFilters();
        selectedFilter = dialog->selectedNameFilter();
        confirmsOverwrite = !dialog->testOption(QFileDialog::DontConfirmOverwrite);
        dialog->reject();
    });
    const auto answer = dialogs.AskSaveFileName(
        {"Write Quarn File", "Quarn files (*.KVF)|*.KVF|All files (*.*)|*.*", 2, "a.KVF", false});
    EXPECT_FALSE(answer.has_value());
    EXPECT_EQ(title, "Write Quarn File");
    EXPECT_EQ(filters, QStringList({"Quarn files (*.KVF)", "All files (*.*)"}));
    EXPECT_EQ(selectedFilter, "All files (*.*)");
    EXPECT_FALSE(confirmsOverwrite);
}

TEST(QtDialogs, MessageBoxHasTheDefaultTitleAndMappedIcon) {
    QtDialogs dialogs;
    QString title, text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    WhenModalOpens([&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        ASSERT_NE(box, nullptr);
        title = box->windowTitle();
        text = box->text();
        icon = box->icon();
        box->accept();
    });
    dialogs.ShowMessage("one\r\ntwo", {}, MessageIcon::Exclamation);
    EXPECT_EQ(title, "VARO");
    EXPECT_EQ(text, "one\ntwo");
    EXPECT_EQ(icon, QMessageBox::Warning);
}

}  // namespace
}  // namespace varo
