#pragma once

#include <QStringList>
#include <QWidget>
#include <array>
#include <functional>

#include "core/tank_network.h"

class QDial;
class QGridLayout;
class QGroupBox;
class QLabel;
class QPushButton;

namespace varo {

// The column beside the large plot: a knob for each of C1, C2, L1 and L2, the way back to the
// design values, the switch between the dB plot and the Smith chart, and what the tube sees.
// It only shows and tells; the screen does the work.
class TuningPanel : public QWidget {
    Q_OBJECT

  public:
    explicit TuningPanel(QWidget* parent = nullptr);

    // Told of every step of a knob (by mouse, wheel, keys or assistive technology).
    std::function<void(TankPart part, int position)> knobTurned;
    std::function<void()> backToDesignValues;
    std::function<void(bool smith)> smithSwitched;

    // Sets a knob and its value without telling knobTurned.
    void ShowKnob(TankPart part, int position, const QString& value);
    void ShowTuned(bool tuned);
    void ShowTube(const QString& heading, const QStringList& lines);

  private:
    QDial* AddKnob(QGridLayout& grid, int index);
    QGroupBox* BuildTubeGroup();

    std::array<QDial*, 4> knobs_{};
    std::array<QLabel*, 4> values_{};
    QPushButton* back_ = nullptr;
    QGroupBox* tube_ = nullptr;
    std::array<QLabel*, 5> tubeLines_{};
};

}  // namespace varo
