#include "platform/qt/save_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/guarded_dialog.h"

namespace varo {

namespace {

// A folder may hold more names than anyone reads in a list; the first ones are enough.
constexpr int kMostListedEntries = 5000;

// Folders are listed first, marked by a trailing slash.
constexpr int kIsFolderRole = Qt::UserRole;

QPushButton* AddButton(QHBoxLayout* row, const QString& caption, const char* name) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    row->addWidget(button);
    return button;
}

}  // namespace

QStringList FilterPatterns(const QString& nameFilter) {
    const qsizetype open = nameFilter.lastIndexOf(QLatin1Char('('));
    const qsizetype close = nameFilter.lastIndexOf(QLatin1Char(')'));
    const QString patterns =
        open >= 0 && close > open ? nameFilter.mid(open + 1, close - open - 1) : nameFilter;
    return patterns.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

SaveDialog::SaveDialog(QWidget* parent, const QString& title, const QStringList& nameFilters,
                       int filterIndex, const QString& folder, const QString& proposedName,
                       bool overwritePrompt, FileDialogPurpose purpose)
    : QDialog(parent),
      folderText_(new QLabel),
      entries_(new QListWidget),
      fileName_(new QLineEdit(proposedName)),
      fileType_(new QComboBox),
      overwritePrompt_(overwritePrompt),
      purpose_(purpose) {
    const bool opening = purpose == FileDialogPurpose::Open;
    const QString typeCaption = opening ? tr("Files of type") : tr("Save as type");
    setWindowTitle(title);
    setObjectName(opening ? QStringLiteral("openDialog") : QStringLiteral("saveDialog"));
    folderText_->setObjectName(QStringLiteral("lblFolder"));
    folderText_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    folderText_->setMinimumWidth(0);
    folderText_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    entries_->setObjectName(QStringLiteral("lstEntries"));
    entries_->setAccessibleName(tr("Folders and files"));
    fileName_->setObjectName(QStringLiteral("txtFileName"));
    fileName_->setAccessibleName(tr("File name"));
    fileType_->setObjectName(QStringLiteral("cboFileType"));
    fileType_->setAccessibleName(typeCaption);
    fileType_->addItems(nameFilters);
    fileType_->setCurrentIndex(
        std::clamp<int>(filterIndex, 0, std::max<int>(0, fileType_->count() - 1)));

    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(folderText_, 1);
    QPushButton* up = AddButton(folderRow, tr("Up"), "cmdUp");
    auto* buttons = new QDialogButtonBox(
        (opening ? QDialogButtonBox::Open : QDialogButtonBox::Save) | QDialogButtonBox::Cancel);
    auto* form = new QFormLayout;
    form->addRow(tr("File name:"), fileName_);
    form->addRow(typeCaption + QLatin1Char(':'), fileType_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(folderRow);
    layout->addWidget(entries_, 1);
    layout->addLayout(form);
    layout->addWidget(buttons);
    resize(560, 420);

    connect(up, &QPushButton::clicked, this, [this] {
        QDir parentFolder = folder_;
        if (parentFolder.cdUp()) ShowFolder(parentFolder);
    });
    connect(entries_, &QListWidget::itemActivated, this, &SaveDialog::OnItemActivated);
    connect(entries_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item && !item->data(kIsFolderRole).toBool()) fileName_->setText(item->text());
    });
    connect(fileType_, &QComboBox::currentIndexChanged, this, &SaveDialog::ListFolder);
    connect(buttons, &QDialogButtonBox::accepted, this, &SaveDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SaveDialog::reject);
    ShowFolder(QDir(folder));
    fileName_->setFocus();
}

void SaveDialog::ShowFolder(const QDir& folder) {
    folder_ = QDir(folder.absolutePath());
    folderText_->setText(QDir::toNativeSeparators(folder_.absolutePath()));
    folderText_->setToolTip(folderText_->text());
    ListFolder();
}

void SaveDialog::ListFolder() {
    entries_->clear();
    const QFileInfoList folders =
        folder_.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
    QDir files(folder_.absolutePath());
    files.setNameFilters(FilterPatterns(fileType_->currentText()));
    // Without QDir::CaseSensitive the patterns match lower-case names too.
    const QFileInfoList matches =
        files.entryInfoList(QDir::Files | QDir::System, QDir::Name | QDir::IgnoreCase);
    int listed = 0;
    for (const QFileInfoList* group : {&folders, &matches}) {
        for (const QFileInfo& entry : *group) {
            if (++listed > kMostListedEntries) return;
            const bool isFolder = group == &folders;
            auto* item = new QListWidgetItem(
                entry.fileName() + (isFolder ? QStringLiteral("/") : QString()), entries_);
            item->setData(kIsFolderRole, isFolder);
        }
    }
}

void SaveDialog::OnItemActivated(QListWidgetItem* item) {
    if (!item->data(kIsFolderRole).toBool()) {
        accept();
        return;
    }
    QDir inner = folder_;
    if (inner.cd(item->text().chopped(1))) ShowFolder(inner);
}

namespace {

// The chosen type's extension ("*.varo" -> ".varo") after a name typed without one, as a save
// dialog does; a type of any name ("*.*") adds nothing.
QString WithTypeExtension(const QString& name, const QStringList& patterns) {
    if (!QFileInfo(name).suffix().isEmpty()) return name;
    for (const QString& pattern : patterns) {
        const QString extension = pattern.mid(1);  // ".varo" of "*.varo"
        if (pattern.startsWith(QLatin1String("*.")) && extension.size() > 1 &&
            !extension.contains(QLatin1Char('*')) && !extension.contains(QLatin1Char('?')))
            return name + extension;
    }
    return name;
}

}  // namespace

// A name that is a folder opens it; anything else is the file, relative to the folder shown.
// A file to open must be there; a file to save takes the type's extension when it has none.
void SaveDialog::accept() {
    const QString name = fileName_->text().trimmed();
    if (name.isEmpty()) {
        QApplication::beep();
        return;
    }
    QString path = QDir::cleanPath(folder_.absoluteFilePath(QDir::fromNativeSeparators(name)));
    if (QFileInfo(path).isDir()) {
        ShowFolder(QDir(path));
        fileName_->clear();
        return;
    }
    if (purpose_ == FileDialogPurpose::Open && !QFileInfo(path).isFile()) {
        QApplication::beep();
        return;
    }
    if (purpose_ == FileDialogPurpose::Save)
        path = WithTypeExtension(path, FilterPatterns(fileType_->currentText()));
    if (overwritePrompt_ && QFileInfo::exists(path) && !ConfirmOverwrite(path)) return;
    chosenPath_ = path;
    QDialog::accept();
}

bool SaveDialog::ConfirmOverwrite(const QString& path) {
    GuardedDialog<QMessageBox> box(
        QMessageBox::Warning, windowTitle(),
        tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(path).fileName()),
        QMessageBox::Yes | QMessageBox::No, this);
    box->setDefaultButton(QMessageBox::No);
    // Should this dialog go away meanwhile (taking the box along), the answer is No and the
    // caller touches nothing of it.
    return box.Exec() == QMessageBox::Yes;
}

}  // namespace varo
