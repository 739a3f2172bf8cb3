#include "platform/qt/qt_dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <utility>

#include "support/temp_folder.h"

namespace varo {
namespace {

TEST(ToQtNameFilters, TurnsBarSeparatedPairsIntoQtFilters) {
    const std::pair<const char*, QStringList> cases[] = {
        {"LTspice schematic files (*.ASC) | *.ASC", {"LTspice schematic files (*.ASC)"}},
        {"Overlay (*.S21)|*.S21|All files (*.*)|*.*", {"Overlay (*.S21)", "All files (*.*)"}},
        {"Text files|*.TXT", {"Text files (*.TXT)"}},
        {"|*.CFG", {"*.CFG"}},
        {"", {}},
    };
    for (const auto& [filter, expected] : cases)
        EXPECT_EQ(ToQtNameFilters(filter), expected) << filter;
}

// Runs `answer` on the modal dialog that the next exec() opens.
void WhenModalOpens(std::function<void(QWidget*)> answer) {
    QTimer::singleShot(0,
                       [answer = std::move(answer)] { answer(QApplication::activeModalWidget()); });
}

QStringList Listed(const QWidget* dialog) {
    QStringList names;
    const auto* list = dialog->findChild<QListWidget*>("lstEntries");
    for (int i = 0; list && i < list->count(); ++i)
        names.push_back(list->item(i)->text());
    return names;
}

// Filters match in either case; the next dialog opens in the folder chosen before.
TEST(QtDialogs, SaveDialogListsTheFolderAndGivesTheChosenPath) {
    testing::TempFolder folder;
    for (const char* name : {"b.kvf", "A.KVF", "c.txt"})
        testing::WriteBytes(folder.File(name), "x");
    std::filesystem::create_directory(folder.File("sub"));
    QtDialogs dialogs;
    QStringList shown, secondListing;
    WhenModalOpens([&](QWidget* dialog) {
        ASSERT_NE(dialog, nullptr);
        shown = {dialog->windowTitle(),
                 dialog->findChild<QComboBox*>("cboFileType")->currentText()};
        dialog->findChild<QLineEdit*>("txtFileName")->setText(QString::fromStdString(folder.str()));
        QMetaObject::invokeMethod(dialog, "accept");  // a folder's name opens the folder
        shown += Listed(dialog);
        dialog->findChild<QLineEdit*>("txtFileName")->setText("new.KVF");
        QMetaObject::invokeMethod(dialog, "accept");
    });
    const auto answer = dialogs.AskSaveFileName(
        {"Write Quarn File", "Quarn files (*.KVF)|*.KVF|All files (*.*)|*.*", 1, "", true});
    EXPECT_EQ(answer, folder.File("new.KVF"));
    EXPECT_EQ(shown,
              QStringList({"Write Quarn File", "Quarn files (*.KVF)", "sub/", "A.KVF", "b.kvf"}));

    // A screen reader's view of a listed name dies with the dialog, not with the program.
    QAccessible::Id listedName = 0;
    WhenModalOpens([&](QWidget* dialog) {
        secondListing = Listed(dialog);
        QAccessibleInterface* list =
            QAccessible::queryAccessibleInterface(dialog->findChild<QListWidget*>("lstEntries"));
        listedName = QAccessible::uniqueId(list->child(0));
        QMetaObject::invokeMethod(dialog, "reject");
    });
    EXPECT_EQ(dialogs.AskSaveFileName({"Write", "All files (*.*)|*.*", 1, "x", false}),
              std::nullopt);
    EXPECT_EQ(secondListing, QStringList({"sub/", "A.KVF", "b.kvf", "c.txt"}));
    EXPECT_NE(listedName, 0u);
    EXPECT_EQ(QAccessible::accessibleInterface(listedName), nullptr);
}

// A name typed without an extension takes the chosen type's, as save dialogs do.
TEST(QtDialogs, SaveDialogAddsTheTypesExtensionToANameWithout) {
    testing::TempFolder folder;
    const struct {
        const char* typed;
        const char* filter;
        std::string path;
    } cases[] = {{"amp", "VARO design (*.varo)|*.varo", folder.File("amp.varo")},
                 {"amp.txt", "VARO design (*.varo)|*.varo", folder.File("amp.txt")},
                 {"amp", "All files (*.*)|*.*", folder.File("amp")}};
    QtDialogs dialogs;
    for (const auto& c : cases) {
        WhenModalOpens([&](QWidget* dialog) {
            dialog->findChild<QLineEdit*>("txtFileName")
                ->setText(QString::fromStdString(folder.File(c.typed)));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        EXPECT_EQ(dialogs.AskSaveFileName({"Save", c.filter, 1, "", false}), c.path) << c.typed;
    }
}

// The open form takes only a file that is there; while it runs, a second file dialog answers
// as cancelled instead of opening over it.
TEST(QtDialogs, OpenDialogTakesOnlyAnExistingFileOneDialogAtATime) {
    testing::TempFolder folder;
    for (const char* name : {"aerial.s1p", "DIPOLE.S1P", "notes.txt"})
        testing::WriteBytes(folder.File(name), "x");
    QtDialogs dialogs;
    QStringList shown;
    std::optional<std::string> second = "not asked";
    WhenModalOpens([&](QWidget* dialog) {
        ASSERT_NE(dialog, nullptr);
        auto* name = dialog->findChild<QLineEdit*>("txtFileName");
        name->setText(QString::fromStdString(folder.str()));
        QMetaObject::invokeMethod(dialog, "accept");
        shown = {dialog->objectName(), dialog->findChild<QComboBox*>("cboFileType")->currentText()};
        shown += Listed(dialog);
        second = dialogs.AskOpenFileName({"Again", "*.txt"});
        name->setText("missing.s1p");
        QMetaObject::invokeMethod(dialog, "accept");  // refused: the dialog stays
        shown.push_back(dialog->isVisible() ? "still open" : "closed");
        name->setText("aerial.s1p");
        QMetaObject::invokeMethod(dialog, "accept");
    });
    const auto answer =
        dialogs.AskOpenFileName({"Open antenna file", "Touchstone one-port (*.s1p *.S1P)"});
    EXPECT_EQ(answer, folder.File("aerial.s1p"));
    EXPECT_EQ(second, std::nullopt);
    EXPECT_EQ(shown, QStringList({"openDialog", "Touchstone one-port (*.s1p *.S1P)", "aerial.s1p",
                                  "DIPOLE.S1P", "still open"}));
}

// No line wrapped; a failure's path and reason below the text.
TEST(QtDialogs, MessageBoxesShowEveryLineWhole) {
    const QString longLine = "Please check analysis starting and stopping frequencies";
    QStringList shown;
    int labelWidth = 0, lineWidth = 0;
    WhenModalOpens([&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        ASSERT_NE(box, nullptr);
        shown = {box->windowTitle(), box->text(), box->informativeText()};
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        const auto* label = box->findChild<QLabel*>("qt_msgbox_label");
        labelWidth = label->width();
        lineWidth = label->fontMetrics().horizontalAdvance(longLine);
        box->accept();
    });
    QtDialogs().ShowFailure("<b>one</b>\r\n" + longLine.toStdString(),
                            "/x/y.KVF: No such file or directory", {}, MessageIcon::Exclamation);
    EXPECT_EQ(shown, QStringList({"VARO", "<b>one</b>\n" + longLine,
                                  "/x/y.KVF: No such file or directory"}));
    EXPECT_GE(labelWidth, lineWidth);
}

// The screen a dialog belongs to can be closed and deleted while the dialog runs (assistive
// technology reaches windows a modal dialog blocks); the dialog goes with it and the call
// returns as cancelled instead of touching a deleted dialog.
TEST(QtDialogs, ADialogWhoseParentIsDeletedWhileItRunsReturnsAsCancelled) {
    const std::pair<const char*, std::function<bool(QtDialogs&)>> dialogs[] = {
        {"message", [](QtDialogs& on) { return on.ShowMessage("text"), true; }},
        {"failure", [](QtDialogs& on) { return on.ShowFailure("text", "detail"), true; }},
        {"save",
         [](QtDialogs& on) {
             return !on.AskSaveFileName({"Save", "*.txt", 1, "a", true});
         }},
        {"open",
         [](QtDialogs& on) {
             return !on.AskOpenFileName({"Open", "*.s1p"});
         }},
        {"print",
         [](QtDialogs& on) {
             return on.Print({"report", {}}).status == PrintOutcome::Status::Cancelled;
         }},
    };
    for (const auto& [name, open] : dialogs) {
        auto* screen = new QWidget;
        screen->setAttribute(Qt::WA_DeleteOnClose);
        screen->show();
        const QPointer<QWidget> watched = screen;
        QtDialogs onScreen(screen);
        WhenModalOpens([screen](QWidget* modal) {
            ASSERT_NE(modal, nullptr);
            screen->close();
            delete screen;
        });
        EXPECT_TRUE(open(onScreen)) << name;
        EXPECT_EQ(watched, nullptr) << name;
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << name;
        // The next dialog has no parent now and runs as usual.
        WhenModalOpens([](QWidget* modal) { modal->close(); });
        onScreen.ShowMessage("after");
    }
}

// The preview's Print opens a print dialog without "print to file" (PDFs come from "Save as
// PDF"; its hidden file browser cannot be pressed either), and what reaches the blocked preview
// meanwhile (a second Print, Save as PDF) opens nothing more.
TEST(QtDialogs, ThePreviewOpensOneDialogAtATimeAndNoPrintToFile) {
    const auto action = [](QWidget* preview, const QString& text) {
        for (QAction* candidate : preview->findChildren<QAction*>())
            if (candidate->text() == text) return candidate;
        return static_cast<QAction*>(nullptr);
    };
    bool printToFile = true;
    bool onlyTheChooserOpen = false;
    bool readable = false;
    WhenModalOpens([&](QWidget* preview) {
        ASSERT_NE(action(preview, "Print"), nullptr);
        // Opened to be read: most of the screen's height, the page as wide as the view.
        QApplication::processEvents();
        const auto* view = preview->findChild<QPrintPreviewWidget*>();
        readable = view != nullptr && view->zoomMode() == QPrintPreviewWidget::FitToWidth &&
                   preview->height() >= preview->screen()->availableGeometry().height() * 8 / 10;
        QTimer::singleShot(0, [&, preview] {
            auto* chooser = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(chooser, nullptr);
            const auto* browse = chooser->findChild<QAbstractButton*>("fileBrowser");
            printToFile = chooser->testOption(QAbstractPrintDialog::PrintToFile) ||
                          (browse != nullptr && browse->isEnabled());
            action(preview, "Print")->trigger();
            action(preview, "Save as PDF")->trigger();
            const QWidgetList shown = QApplication::topLevelWidgets();
            const auto dialogs = std::count_if(shown.begin(), shown.end(), [](QWidget* w) {
                return w->isVisible() && qobject_cast<QDialog*>(w) != nullptr;
            });
            onlyTheChooserOpen = QApplication::activeModalWidget() == chooser && dialogs == 2;
            chooser->reject();
            preview->close();
        });
        action(preview, "Print")->trigger();
    });
    QtDialogs dialogs;
    EXPECT_EQ(dialogs.Print({"report", {}}).status, PrintOutcome::Status::Cancelled);
    EXPECT_FALSE(printToFile);
    EXPECT_TRUE(onlyTheChooserOpen);
    EXPECT_TRUE(readable);
}

}  // namespace
}  // namespace varo
