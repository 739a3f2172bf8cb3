#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QString>
#include <algorithm>

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
    QString body = FromText(text);
    body.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QMessageBox box(ToQtIcon(icon), FromText(title.empty() ? kProgramTitle : title), body,
                    QMessageBox::Ok, parent_);
    box.exec();
}

void QtDialogs::Beep() {
    QApplication::beep();
}

std::optional<std::string> QtDialogs::AskSaveFileName(const SaveDialogRequest& request) {
    QFileDialog dialog(parent_, FromText(request.title));
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.overwritePrompt);
    const QStringList filters = ToQtNameFilters(request.filter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        const qsizetype index =
            std::clamp<qsizetype>(request.filterIndex - 1, 0, filters.size() - 1);
        dialog.selectNameFilter(filters[index]);
    }
    if (!request.proposedName.empty()) dialog.selectFile(FromText(request.proposedName));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QStringList chosen = dialog.selectedFiles();
    if (chosen.isEmpty()) return std::nullopt;
    return chosen.front().toStdString();
}

}  // namespace varo
