#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "model/design.h"
#include "platform/dialogs.h"
#include "platform/qt/action_gate.h"
#include "screens/plot/large_plot_screen.h"
#include "screens/plot/overlay_files.h"

class QLabel;
class QPushButton;

namespace varo {

class SurfaceWidget;
class PlotCursorLayer;
class TuningPanel;

// The large plot screen: the response of the design over the sweep with its readout table,
// buttons that nudge C3 and L2, saved curves drawn over it, a live cursor and the exports. Every
// computation is the screen logic's; this class only routes and shows.
class FrmPlot : public QWidget {
    Q_OBJECT

  public:
    // `returnToDesign` is the Return button's way back.
    FrmPlot(Design& design, Dialogs& dialogs, std::function<void()> returnToDesign,
            QWidget* parent = nullptr);
    ~FrmPlot() override;

    const Surface& surface() const;
    const DesignResults& results() const { return design_.results(); }
    // The saved curves drawn since the last redraw.
    const OverlayCurves& overlays() const { return overlays_; }

    // The cursor at a logical X of the picture, as a mouse over the plot puts it there.
    void MoveCursorTo(float logicalX);
    // The cursor at the swept point nearest a point of the Smith chart's surface, as a mouse
    // over the chart puts it there.
    void MoveSmithCursorTo(float logicalX, float logicalY);
    // What the Smith chart shows (drawn whether or not it is switched on).
    const Surface& smithSurface() const;

  private:
    void BuildControls();
    QPushButton* AddButton(const char* name, const QString& caption, const QRectF& at,
                           const QString& description, const QKeySequence& shortcut,
                           qreal pointSize = 8.25);
    void ShowOverlayLegend(std::int16_t curve);
    QLabel* AddLabel(const char* name, const QString& caption, const QRectF& at,
                     qreal pointSize = 8.25);
    void OnClick(const char* name, std::function<void()> action);
    void ConnectCommands();

    // Runs one action to its end; what is asked meanwhile (from within a message box's own
    // event loop) is dropped.
    void RunAction(const std::function<void()>& action);
    void RedrawLargePlot();
    void ShowTuning();
    void DrawSmith();
    void ShowCursorAt(std::optional<float> frequency);
    void NudgeAndRedraw(Nudge nudge);
    void TuneAndRedraw(TankPart part, int position);
    void BackToDesignValues();
    void ShowSmith(bool shown);
    void BuildTuning();
    void GetOverlays();
    void ExportPicture();
    void ExportSweep();
    void ExportTouchstone();
    float ScreenHeightTwips() const;

    Design& design_;
    Dialogs& dialogs_;
    DialogReporter reporter_;
    std::function<void()> returnToDesign_;
    OverlayData overlay_;
    OverlayCurves overlays_;
    SurfaceWidget* background_ = nullptr;
    PlotCursorLayer* cursorLayer_ = nullptr;
    QLabel* summary_ = nullptr;
    QLabel* parts_ = nullptr;
    QLabel* cursorReadout_ = nullptr;
    std::array<QLabel*, 2> overlayLegends_{};  // transmission, return
    TuningPanel* tuning_ = nullptr;
    SurfaceWidget* smith_ = nullptr;
    std::optional<float> cursorFrequency_;
    ActionGate actions_{*this};
};

}  // namespace varo
