#pragma once

#include <QWidget>

class QKeyEvent;
class QToolButton;
class QWheelEvent;

namespace varo {

// A pair of arrow buttons that step a whole number within a range, standing beside the entry it
// drives. Only the user's steps are signalled; setValue() is silent, so the screen can follow
// the design without starting another recalculation.
class UpDown : public QWidget {
    Q_OBJECT

  public:
    explicit UpDown(QWidget* parent = nullptr);

    // What a screen reader calls the spinner; its arrows are that name with " up" and " down".
    void SetSpokenName(const QString& name);

    void setRange(int minimum, int maximum);
    void setValue(int value);
    int value() const { return value_; }
    int minimum() const { return minimum_; }
    int maximum() const { return maximum_; }

    // What one press of the up arrow (+1) or the down arrow (-1) does.
    void stepBy(int steps);

  signals:
    void valueChanged(int value);

  protected:
    // Up and Down step by one, Page Up and Page Down by ten; the wheel steps a notch at a time.
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    QToolButton* up_;
    QToolButton* down_;
    int minimum_ = 0;
    int maximum_ = 100;
    int value_ = 0;
    int wheelAngle_ = 0;  // eighths of a degree not yet stepped
};

}  // namespace varo
