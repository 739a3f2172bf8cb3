#pragma once

#include <QSizeF>
#include <string>

#include "core/design_state.h"
#include "platform/qt/surface_widget.h"
#include "platform/system.h"
#include "session/last_session.h"

class QKeyEvent;
class QScreen;

namespace varo {

// The author credit line of the welcome screen.
inline constexpr const char* kAuthorCreditText = "VARO \u2014 an amateur radio design tool";

// Font sizes the welcome screen asks for, from the size of the screen in twips.
inline float OpeningLabelPoints(float screenHeightTwips) {
    return 0.0012f * screenHeightTwips;
}
inline float OpeningButtonPoints(float screenWidthTwips) {
    return 0.00055f * screenWidthTwips;
}

// The screen's size in twips (1/1440 inch), from its pixels and logical dots per inch.
QSizeF ScreenSizeInTwips(const QScreen* screen);

// `frmOpening`, the welcome screen: sets the program-wide constants, lays itself out, draws the
// decorative network and reads the last-session file into `state`. The application decides
// what Start and Exit lead to.
class FrmOpening : public SurfaceWidget {
    Q_OBJECT

  public:
    FrmOpening(DesignState& state, const std::string& sessionFilePath, QWidget* parent = nullptr);
    // Reads the last-session file beside the executable.
    explicit FrmOpening(DesignState& state, QWidget* parent = nullptr)
        : FrmOpening(state, SessionFilePath(ExecutableFolder()), parent) {}

  signals:
    void startRequested();  // cmdEnter
    void exitRequested();   // cmdExit

  protected:
    // Enter and Return press the focused button, or else Start, the default button.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void SizeWindow();
    void PlaceControls(QSizeF screenTwips);

    DesignState& state_;
};

}  // namespace varo
