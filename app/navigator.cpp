#include "app/navigator.h"

#include <QEvent>
#include <QWidget>
#include <array>
#include <utility>

#include "screens/design/qt/frm_design.h"
#include "session/qt/frm_opening.h"

namespace varo {

namespace {

using LeaveSignal = void (FrmDesign::*)();

struct Exit {
    Destination destination;
    LeaveSignal signal;
};

constexpr std::array<Exit, 5> kDesignExits{
    {{Destination::Plot, &FrmDesign::requestPlot},
     {Destination::Inductor, &FrmDesign::requestInductor},
     {Destination::LoadHelp, &FrmDesign::requestLoadHelp},
     {Destination::Bands, &FrmDesign::requestBands},
     {Destination::LoadRange, &FrmDesign::requestLoadRange}}};

}  // namespace

Navigator::Navigator(Dialogs& dialogs, std::function<void(QWidget*)> parentDialogsTo,
                     std::string sessionFilePath)
    : dialogs_(dialogs), parentDialogsTo_(std::move(parentDialogsTo)) {
    if (!parentDialogsTo_) parentDialogsTo_ = [](QWidget*) {};
    session_.sessionFilePath = std::move(sessionFilePath);
}

Navigator::~Navigator() {
    // The screens refer to the design and the dialogs, so they go first.
    parentDialogsTo_(nullptr);
    delete secondary_.data();
    delete designScreen_.data();
    delete opening_.data();
}

void Navigator::Register(Destination destination, ScreenFactory factory) {
    factories_[destination] = std::move(factory);
}

void Navigator::Start() {
    opening_ = new FrmOpening(design_.state(), session_.sessionFilePath);
    opening_->setAttribute(Qt::WA_DeleteOnClose);
    connect(opening_, &FrmOpening::startRequested, this, &Navigator::ShowDesign);
    // Leaving from the welcome screen writes nothing.
    connect(opening_, &FrmOpening::exitRequested, this, &Navigator::Finish);
    ShowInsteadOfCurrent(opening_);
}

void Navigator::ShowDesign() {
    if (designScreen_ == nullptr) designScreen_ = CreateDesign();
    ShowInsteadOfCurrent(designScreen_);
}

FrmDesign* Navigator::CreateDesign() {
    auto* design = new FrmDesign(design_, dialogs_, session_);
    // The design screen has written the last-session file by the time it asks to exit.
    connect(design, &FrmDesign::requestExit, this, &Navigator::Finish);
    for (const Exit& exit : kDesignExits) {
        if (!factories_.contains(exit.destination)) continue;
        connect(design, exit.signal, this,
                [this, destination = exit.destination] { Open(destination); });
    }
    return design;
}

void Navigator::Open(Destination destination) {
    const ScreenContext context{design_, dialogs_, [this] {
                                    if (secondary_ != nullptr) secondary_->close();
                                }};
    QWidget* screen = factories_.at(destination)(context);
    if (screen == nullptr) return;
    screen->setAttribute(Qt::WA_DeleteOnClose);
    // Closing the window by the desktop's own means is a Return too.
    screen->installEventFilter(this);
    secondary_ = screen;
    ShowInsteadOfCurrent(screen);
}

bool Navigator::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close && watched == secondary_.data()) {
        // The closing screen goes on closing by itself; the design screen shows before it has
        // gone, so the program never runs out of windows on the way back.
        secondary_ = nullptr;
        current_ = nullptr;
        ShowDesign();
    }
    return QObject::eventFilter(watched, event);
}

void Navigator::ShowInsteadOfCurrent(QWidget* next) {
    QPointer<QWidget> previous = current_;
    current_ = next;
    next->show();
    parentDialogsTo_(next);
    if (previous == nullptr || previous == next) return;
    // The design screen is kept, hidden, for its return; every other screen is discarded.
    if (previous == designScreen_)
        previous->hide();
    else
        previous->close();
}

void Navigator::Finish() {
    QPointer<QWidget> leaving = current_;
    current_ = nullptr;
    parentDialogsTo_(nullptr);
    if (leaving != nullptr) leaving->close();
    emit finished();
}

}  // namespace varo
