#include "screens/plot/qt/tuning_panel.h"

#include <QDial>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/plot/large_plot_screen.h"

namespace varo {

namespace {

// A dial whose Home key brings the part back to its design value; End, which would throw it to
// twice its value, does nothing.
class TuningKnob : public QDial {
  public:
    using QDial::QDial;

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Home) {
            setValue(0);
            event->accept();
            return;
        }
        if (event->key() == Qt::Key_End) {
            event->accept();
            return;
        }
        QDial::keyPressEvent(event);
    }
};

constexpr const char* kTubeLineNames[] = {"lblTubeImpedance", "lblTubeReflection", "lblTubeVswr",
                                          "lblTubeCurrent", "lblTubePower"};
constexpr int kKnobColumns = 2;
// The widest line the column holds without wrapping, in the panel's font.
constexpr const char* kWidestLine = "Plate current, fundamental: 12.345 A peak";

std::size_t KnobIndex(TankPart part) {
    for (std::size_t i = 0; i < std::size(kKnobs); ++i)
        if (kKnobs[i].part == part) return i;
    return 0;
}

}  // namespace

TuningPanel::TuningPanel(QWidget* parent) : QWidget(parent) {
    setObjectName("fraTuning");
    auto* column = new QVBoxLayout(this);
    auto* knobs = new QGroupBox(tr("Tuning"), this);
    knobs->setObjectName("fraKnobs");
    auto* grid = new QGridLayout(knobs);
    for (int i = 0; i < static_cast<int>(std::size(kKnobs)); ++i)
        AddKnob(*grid, i);
    column->addWidget(knobs);

    back_ = new QPushButton(tr("Back to design values"), this);
    back_->setObjectName("cmdDesignValues");
    back_->setToolTip(tr("Every part back to the value the design gave it"));
    back_->setAccessibleDescription(back_->toolTip());
    back_->setEnabled(false);
    connect(back_, &QPushButton::clicked, this, [this] {
        if (backToDesignValues) backToDesignValues();
    });
    column->addWidget(back_);

    // Its caption names the view a press brings.
    auto* smith = new QPushButton(tr("Smith chart"), this);
    smith->setObjectName("cmdSmith");
    smith->setToolTip(tr("Switch between the dB plot and a Smith chart of the input impedance"));
    smith->setAccessibleDescription(smith->toolTip());
    connect(smith, &QPushButton::clicked, this, [this, smith] {
        const bool toSmith = smith->text() == tr("Smith chart");
        smith->setText(toSmith ? tr("dB plot") : tr("Smith chart"));
        if (smithSwitched) smithSwitched(toSmith);
    });
    column->addWidget(smith);

    column->addWidget(BuildTubeGroup());
    column->addStretch(1);
    setFixedWidth(fontMetrics().horizontalAdvance(QString::fromLatin1(kWidestLine)) +
                  8 * fontMetrics().averageCharWidth());
}

QDial* TuningPanel::AddKnob(QGridLayout& grid, int index) {
    const KnobControl& knob = kKnobs[index];
    auto* dial = new TuningKnob(this);
    dial->setObjectName(knob.name);
    dial->setRange(-kKnobSteps, kKnobSteps);
    dial->setSingleStep(kKnobFineStep);
    dial->setPageStep(kKnobCoarseStep);
    dial->setNotchesVisible(true);
    dial->setWrapping(false);
    dial->setFocusPolicy(Qt::StrongFocus);
    dial->setMinimumSize(fontMetrics().height() * 4, fontMetrics().height() * 4);
    dial->setAccessibleName(QString::fromLatin1(knob.caption));
    dial->setAccessibleDescription(
        tr("Arrow keys 0.2 %, Page Up and Page Down 3 %, Home the design value"));
    auto* caption = new QLabel(QString::fromLatin1(knob.caption), this);
    caption->setBuddy(dial);
    caption->setAlignment(Qt::AlignHCenter);
    auto* value = new QLabel(this);
    value->setObjectName(QString::fromLatin1(knob.name).replace("dial", "lbl") + "Value");
    value->setAlignment(Qt::AlignHCenter);
    value->setWordWrap(true);
    const int row = (index / kKnobColumns) * 3, col = index % kKnobColumns;
    grid.addWidget(caption, row, col);
    grid.addWidget(dial, row + 1, col, Qt::AlignHCenter);
    grid.addWidget(value, row + 2, col);
    connect(dial, &QDial::valueChanged, this, [this, part = knob.part](int position) {
        if (knobTurned) knobTurned(part, position);
    });
    knobs_[index] = dial;
    values_[index] = value;
    return dial;
}

QGroupBox* TuningPanel::BuildTubeGroup() {
    tube_ = new QGroupBox(this);
    tube_->setObjectName("fraTube");
    auto* lines = new QVBoxLayout(tube_);
    for (std::size_t i = 0; i < tubeLines_.size(); ++i) {
        auto* line = new QLabel(tube_);
        line->setObjectName(kTubeLineNames[i]);
        line->setWordWrap(true);
        line->setTextInteractionFlags(Qt::TextSelectableByMouse);
        lines->addWidget(line);
        tubeLines_[i] = line;
    }
    return tube_;
}

void TuningPanel::ShowKnob(TankPart part, int position, const QString& value) {
    const std::size_t index = KnobIndex(part);
    const QSignalBlocker quiet(knobs_[index]);
    knobs_[index]->setValue(position);
    values_[index]->setText(value);
}

void TuningPanel::ShowTuned(bool tuned) {
    back_->setEnabled(tuned);
}

void TuningPanel::ShowTube(const QString& heading, const QStringList& lines) {
    tube_->setTitle(heading);
    tube_->setAccessibleName(heading);
    for (std::size_t i = 0; i < tubeLines_.size(); ++i) {
        const bool shown = i < static_cast<std::size_t>(lines.size());
        tubeLines_[i]->setText(shown ? lines[static_cast<int>(i)] : QString());
        tubeLines_[i]->setVisible(shown);
    }
}

}  // namespace varo
