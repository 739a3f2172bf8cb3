// The design screen's design files: the File menu (Open, Save, Save As, recent designs), the
// title that names the open design, and leaving it (Exit, or the desktop's close) without losing
// unsaved work.
#include <QAction>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

#include "model/design_file.h"
#include "platform/qt/screen_helpers.h"
#include "screens/design/qt/frm_design.h"
#include "session/program_text.h"

namespace varo {

namespace {

constexpr const char* kRecentDesignsKey = "designFiles/recent";
constexpr int kMostRecentDesigns = 8;

std::string FileNameOf(const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).fileName().toStdString();
}

QStringList RecentDesigns() {
    return QSettings(kSettingsOwner, kSettingsProgram).value(kRecentDesignsKey).toStringList();
}

}  // namespace

void FrmDesign::BuildFileMenu() {
    auto* bar = new QMenuBar(this);
    bar->setObjectName("mnuBar");
    static_cast<QVBoxLayout*>(layout())->setMenuBar(bar);
    QMenu* file = bar->addMenu("&File");
    file->setObjectName("mnuFile");
    const auto addAction = [this, file](const char* name, const QString& caption,
                                        const QKeySequence& keys, std::function<bool()> run) {
        QAction* action = file->addAction(caption);
        action->setObjectName(name);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, [this, run] { RunAction(run); });
        return action;
    };
    addAction("mnuOpen", "&Open design...", QKeySequence::Open, [this] { return OpenDesign(); });
    addAction("mnuSave", "&Save design", QKeySequence::Save, [this] { return SaveDesign(); });
    addAction("mnuSaveAs", "Save design &as...", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
              [this] { return SaveDesignAs(); });
    recentMenu_ = file->addMenu("&Recent designs");
    recentMenu_->setObjectName("mnuRecent");
    connect(recentMenu_, &QMenu::aboutToShow, this, [this] { FillRecentMenu(); });
    FillRecentMenu();
}

void FrmDesign::FillRecentMenu() {
    recentMenu_->clear();
    const QStringList recent = RecentDesigns();
    recentMenu_->setEnabled(!recent.isEmpty());
    for (int i = 0; i < recent.size(); ++i) {
        const std::string path = recent[i].toStdString();
        QAction* action = recentMenu_->addAction(
            QString("&%1 %2").arg(i + 1).arg(QString::fromStdString(FileNameOf(path))));
        action->setToolTip(recent[i]);
        connect(action, &QAction::triggered, this, [this, path] {
            RunAction([this, path] { return MayLeaveDesign() && OpenDesignAt(path); });
        });
    }
}

void FrmDesign::RememberRecentDesign(const std::string& path) {
    QStringList recent = RecentDesigns();
    const QString entry = QString::fromStdString(path);
    recent.removeAll(entry);
    recent.prepend(entry);
    while (recent.size() > kMostRecentDesigns)
        recent.removeLast();
    QSettings(kSettingsOwner, kSettingsProgram).setValue(kRecentDesignsKey, recent);
}

bool FrmDesign::OpenDesign() {
    if (!MayLeaveDesign()) return false;
    const auto chosen = dialogs_.AskOpenFileName(DesignFileOpenRequest());
    return chosen && OpenDesignAt(*chosen);
}

bool FrmDesign::OpenDesignAt(const std::string& path) {
    if (!OpenDesignFile(design_, path, dialogs_)) return false;
    // The design file's Q stand for the entries; one saved without losses takes the screen's.
    if (design_.lossQ()) {
        lossQ_.coil = design_.lossQ()->coil;
        lossQ_.capacitor = design_.lossQ()->capacitor;
    }
    design_.SetLossQ(lossQ_);
    ShowLossQ();
    ShowWoundCoilQ();
    design_.Load(*this, reporter_);
    TakeDesignFile(path);
    return true;
}

bool FrmDesign::SaveDesign() {
    if (session_.designFilePath.empty()) return SaveDesignAs();
    SaveDesignTo(session_.designFilePath);
    return true;
}

bool FrmDesign::SaveDesignAs() {
    const std::string proposed =
        session_.designFilePath.empty() ? "design.varo" : FileNameOf(session_.designFilePath);
    const auto chosen = dialogs_.AskSaveFileName(DesignFileSaveRequest(proposed));
    if (!chosen) return false;
    SaveDesignTo(*chosen);
    return true;
}

// The typed entries taken in, the design saved whole; false (reported) when it was not.
bool FrmDesign::SaveDesignTo(const std::string& path) {
    design_.ValidateAndRecompute(*this, dialogs_, reporter_);
    if (!SaveDesignFileAs(design_, path, dialogs_)) return false;
    TakeDesignFile(path);
    return true;
}

// The design as it now stands is the one in `path`.
void FrmDesign::TakeDesignFile(const std::string& path) {
    session_.designFilePath = path;
    savedDesignText_ = DesignFileText(DesignFileOf(design_));
    RememberRecentDesign(path);
}

bool FrmDesign::HasUnsavedChanges() const {
    return !session_.designFilePath.empty() &&
           DesignFileText(DesignFileOf(design_)) != savedDesignText_;
}

bool FrmDesign::MayLeaveDesign() {
    if (session_.designFilePath.empty() || (!HasPendingEdits() && !HasUnsavedChanges()))
        return true;
    const std::string question = "The design \"" + FileNameOf(session_.designFilePath) +
                                 "\" has changes that are not saved.\r\nSave them first?";
    switch (dialogs_.AskKeepChanges(question)) {
        case KeepChanges::Save:
            return SaveDesignTo(session_.designFilePath);
        case KeepChanges::Discard:
            return true;
        case KeepChanges::Cancel:
            break;
    }
    return false;
}

void FrmDesign::ShowTitle() {
    std::string title = ScreenCaption("Design screen");
    if (!session_.designFilePath.empty()) {
        title += " - ";
        title += FileNameOf(session_.designFilePath);
        // Typed entries mark it at once: no need to compare the whole design at every key.
        if (HasPendingEdits() || HasUnsavedChanges()) title += " *";
    }
    setWindowTitle(FromText(title));
}

void FrmDesign::closeEvent(QCloseEvent* event) {
    if (exiting_) {
        QWidget::closeEvent(event);
        return;
    }
    // Exit's own handler decides; the window goes when it asks the program to end.
    event->ignore();
    findChild<QPushButton*>("cmdExit")->click();
}

}  // namespace varo
