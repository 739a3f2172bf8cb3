#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <string>

#include "model/design.h"
#include "platform/dialogs.h"
#include "screens/design/design_actions.h"

class QEvent;

namespace varo {

class FrmDesign;
class FrmOpening;

// The screens the design screen leads to.
enum class Destination { Plot, Inductor, LoadHelp, Bands, LoadRange };

// What a screen opened from the design screen is built with.
struct ScreenContext {
    Design& design;
    Dialogs& dialogs;
    // The screen's Return: the design screen shows again and this screen is discarded.
    std::function<void()> returnToDesign;
};

// Builds a top-level screen for one destination; the navigator takes it over.
using ScreenFactory = std::function<QWidget*(const ScreenContext&)>;

// Owns the one design and every screen, and switches between them: welcome screen, then the
// design screen, from which each registered destination opens and returns. Screens only ask
// to leave; one screen shows at a time, and dialogs belong to the screen that shows.
class Navigator : public QObject {
    Q_OBJECT

  public:
    // `parentDialogsTo` is told which window the dialogs belong to (nullptr: none).
    Navigator(Dialogs& dialogs, std::function<void(QWidget*)> parentDialogsTo,
              std::string sessionFilePath);
    ~Navigator() override;
    Navigator(const Navigator&) = delete;
    Navigator& operator=(const Navigator&) = delete;

    // Call before Start. A destination nobody registered keeps the design screen's "not yet
    // available" message.
    void Register(Destination destination, ScreenFactory factory);

    // Shows the welcome screen, which reads the last-session file into the design.
    void Start();

    // The screen that shows, or nullptr once the user has left.
    QWidget* currentScreen() const { return current_; }

  signals:
    // The user left the program through an Exit button.
    void finished();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ShowDesign();
    FrmDesign* CreateDesign();
    void Open(Destination destination);
    void ShowInsteadOfCurrent(QWidget* next);
    void Finish();

    Dialogs& dialogs_;
    std::function<void(QWidget*)> parentDialogsTo_;
    Design design_;
    DesignSession session_;
    std::map<Destination, ScreenFactory> factories_;
    QPointer<FrmOpening> opening_;
    QPointer<FrmDesign> designScreen_;
    QPointer<QWidget> secondary_;
    QPointer<QWidget> current_;
};

}  // namespace varo
