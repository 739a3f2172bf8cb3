#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QScopedValueRollback>
#include <QScreen>
#include <QString>
#include <QTextStream>
#include <algorithm>

#include "platform/qt/guarded_dialog.h"

namespace varo {

namespace {

QString FromText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QMessageBox::Icon ToQtIcon(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Critical:
            return QMessageBox::Critical;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Information:
            return QMessageBox::Information;
        case MessageIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QString WithLineFeeds(std::string_view text) {
    return FromText(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

// Qt wraps a message box's text at a width of its own choosing, which can leave one word on a
// line; a label at least as wide as its longest line keeps the lines as the program broke them.
// A paragraph longer than a comfortable line (about 80 characters, and never past the width the
// box itself allows) wraps instead: a wider label would be cut at the box's right edge.
void WidenToLongestLine(QMessageBox& box) {
    const QScreen* screen = box.screen();
    const int screenShare = screen ? screen->availableGeometry().width() / 2 : 600;
    for (const char* name : {"qt_msgbox_label", "qt_msgbox_informativelabel"}) {
        auto* label = box.findChild<QLabel*>(QLatin1String(name));
        if (!label) continue;
        const int most = std::min(screenShare, label->fontMetrics().averageCharWidth() * 80);
        int widest = 0;
        for (const QString& line : label->text().split(QLatin1Char('\n')))
            widest = std::max(widest, label->fontMetrics().horizontalAdvance(line));
        label->setWordWrap(true);
        label->setMinimumWidth(std::min(widest + 1, most));
    }
}

}  // namespace

QStringList ToQtNameFilters(std::string_view filter) {
    const QStringList parts = FromText(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        const QString description = parts[i].trimmed();
        const QString pattern = i + 1 < parts.size() ? parts[i + 1].trimmed() : QString();
        if (description.isEmpty() && pattern.isEmpty()) continue;
        if (pattern.isEmpty() ||
            description.contains(QLatin1Char('(') + pattern + QLatin1Char(')')))
            filters.push_back(description);
        else if (description.isEmpty())
            filters.push_back(pattern);
        else
            filters.push_back(description + QStringLiteral(" (") + pattern + QLatin1Char(')'));
    }
    return filters;
}

void QtDialogs::ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    ShowBox(text, {}, title, icon);
}

void QtDialogs::ShowFailure(std::string_view text, std::string_view detail, std::string_view title,
                            MessageIcon icon) {
    ShowBox(text, detail, title, icon);
}

void QtDialogs::ShowBox(std::string_view text, std::string_view detail, std::string_view title,
                        MessageIcon icon) {
    GuardedDialog<QMessageBox> box(ToQtIcon(icon), FromText(title.empty() ? kProgramTitle : title),
                                   WithLineFeeds(text), QMessageBox::Ok, parent_.data());
    box->setTextFormat(Qt::PlainText);  // shown exactly as given, whatever it contains
    if (!detail.empty()) box->setInformativeText(WithLineFeeds(detail));
    WidenToLongestLine(*box.get());
    box.Exec();
}

KeepChanges QtDialogs::AskKeepChanges(std::string_view text) {
    GuardedDialog<QMessageBox> box(
        QMessageBox::Question, FromText(kProgramTitle), WithLineFeeds(text),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent_.data());
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(QMessageBox::Save);
    box->setEscapeButton(QMessageBox::Cancel);
    WidenToLongestLine(*box.get());
    // A dialog whose parent went away answers Cancel: nothing is left unasked.
    box.Exec();
    if (box.get() == nullptr) return KeepChanges::Cancel;
    switch (box->standardButton(box->clickedButton())) {
        case QMessageBox::Save:
            return KeepChanges::Save;
        case QMessageBox::Discard:
            return KeepChanges::Discard;
        default:
            return KeepChanges::Cancel;
    }
}

void QtDialogs::Beep() {
    QApplication::beep();
}

void QtDialogs::BeepFailure(std::string_view detail) {
    QTextStream(stderr) << FromText(detail) << Qt::endl;
    Beep();
}

std::optional<std::string> QtDialogs::AskSaveFileName(const SaveDialogRequest& request) {
    return RunFileDialog(FromText(request.title), request.filter, request.filterIndex - 1,
                         FromText(request.proposedName), request.overwritePrompt,
                         FileDialogPurpose::Save);
}

std::optional<std::string> QtDialogs::AskOpenFileName(const OpenDialogRequest& request) {
    return RunFileDialog(FromText(request.title), request.filter, 0, QString(), false,
                         FileDialogPurpose::Open);
}

// One file dialog at a time: one asked for while another runs (from a timer, or by assistive
// technology reaching a blocked window) answers as cancelled.
std::optional<std::string> QtDialogs::RunFileDialog(const QString& title, std::string_view filter,
                                                    int filterIndex, const QString& proposedName,
                                                    bool overwritePrompt,
                                                    FileDialogPurpose purpose) {
    if (fileDialogOpen_) return std::nullopt;
    const QScopedValueRollback<bool> open(fileDialogOpen_, true);
    GuardedDialog<SaveDialog> dialog(parent_.data(), title, ToQtNameFilters(filter), filterIndex,
                                     lastFolder_.isEmpty() ? QDir::currentPath() : lastFolder_,
                                     proposedName, overwritePrompt, purpose);
    if (dialog.Exec() != QDialog::Accepted) return std::nullopt;
    lastFolder_ = QFileInfo(dialog->chosenPath()).absolutePath();
    return dialog->chosenPath().toStdString();
}

}  // namespace varo
