#include "screens/design/qt/up_down.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

namespace varo {

namespace {

constexpr int kPageSteps = 10;
constexpr int kWheelNotch = 120;  // one notch of a mouse wheel, in eighths of a degree

QToolButton* MakeArrow(QWidget* parent, const char* name, Qt::ArrowType arrow) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return button;
}

}  // namespace

UpDown::UpDown(QWidget* parent)
    : QWidget(parent),
      up_(MakeArrow(this, "up", Qt::UpArrow)),
      down_(MakeArrow(this, "down", Qt::DownArrow)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(up_);
    layout->addWidget(down_);
    setFocusPolicy(Qt::StrongFocus);
    connect(up_, &QToolButton::clicked, this, [this] { stepBy(1); });
    connect(down_, &QToolButton::clicked, this, [this] { stepBy(-1); });
}

void UpDown::SetSpokenName(const QString& name) {
    setAccessibleName(name);
    up_->setAccessibleName(name + QStringLiteral(" up"));
    down_->setAccessibleName(name + QStringLiteral(" down"));
}

void UpDown::setRange(int minimum, int maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    value_ = std::clamp(value_, minimum_, maximum_);
}

void UpDown::setValue(int value) {
    value_ = std::clamp(value, minimum_, maximum_);
}

void UpDown::stepBy(int steps) {
    const int stepped = std::clamp(value_ + steps, minimum_, maximum_);
    if (stepped == value_) return;
    value_ = stepped;
    emit valueChanged(value_);
}

void UpDown::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            stepBy(1);
            break;
        case Qt::Key_Down:
            stepBy(-1);
            break;
        case Qt::Key_PageUp:
            stepBy(kPageSteps);
            break;
        case Qt::Key_PageDown:
            stepBy(-kPageSteps);
            break;
        default:
            QWidget::keyPressEvent(event);
            return;
    }
    event->accept();
}

void UpDown::wheelEvent(QWheelEvent* event) {
    // Fine-grained wheels and touchpads report parts of a notch; they add up to whole steps.
    wheelAngle_ += event->angleDelta().y();
    const int steps = wheelAngle_ / kWheelNotch;
    wheelAngle_ -= steps * kWheelNotch;
    if (steps != 0) stepBy(steps);
    event->accept();
}

}  // namespace varo
