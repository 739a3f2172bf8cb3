#pragma once

#include <QDialog>
#include <QDir>
#include <QStringList>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace varo {

// Whether a file dialog names a file to write or an existing file to read.
enum class FileDialogPurpose { Save, Open };

// A save (or open) dialog built from plain widgets. It lists the folder itself, synchronously,
// instead of through a file-system model: that model's background updates and deferred sorting
// outlived the dialogs they belonged to, and the accessibility layer kept indexes into them. Files
// match the chosen filter in either case of letters; the filter texts show as given.
class SaveDialog : public QDialog {
    Q_OBJECT
  public:
    SaveDialog(QWidget* parent, const QString& title, const QStringList& nameFilters,
               int filterIndex, const QString& folder, const QString& proposedName,
               bool overwritePrompt, FileDialogPurpose purpose = FileDialogPurpose::Save);

    QString chosenPath() const { return chosenPath_; }
    QString folder() const { return folder_.absolutePath(); }

  public slots:
    void accept() override;

  private:
    void ShowFolder(const QDir& folder);
    void ListFolder();
    void OnItemActivated(QListWidgetItem* item);
    bool ConfirmOverwrite(const QString& path);

    QLabel* folderText_;
    QListWidget* entries_;
    QLineEdit* fileName_;
    QComboBox* fileType_;
    QDir folder_;
    QString chosenPath_;
    bool overwritePrompt_;
    FileDialogPurpose purpose_;
};

// The wildcard patterns inside a Qt name filter's parentheses: "Quarn files (*.KVF)" gives
// {"*.KVF"}; a filter without parentheses is itself the pattern list.
QStringList FilterPatterns(const QString& nameFilter);

}  // namespace varo
