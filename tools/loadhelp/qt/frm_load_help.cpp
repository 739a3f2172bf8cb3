#include "tools/loadhelp/qt/frm_load_help.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <utility>

#include "platform/qt/replay.h"
#include "platform/qt/surface_widget.h"
#include "session/program_text.h"
#include "tools/loadhelp/swing_panel.h"

namespace varo {

namespace {

// The entries and their captions, left of the class choice.
constexpr float kCaptionLeft = 300;
constexpr float kCaptionRight = 3300;
constexpr float kEntryLeft = 3400;
constexpr float kEntryRight = 4900;
constexpr float kVoltageTop = 900;
constexpr float kPowerTop = 1400;
constexpr float kRowHeight = 320;

// The waveform panel's title: its font follows the screen's width.
constexpr QRectF kPlotTitleBox(8800, 1500, 2200, 300);
constexpr qreal kPlotTitlePointsPerTwip = 0.00055;

// The level labels stand left of the panel, each centred on its level.
constexpr float kLevelLabelLeft = 5600;
constexpr float kLevelLabelRight = 8400;
constexpr float kLevelLabelHalfHeight = 150;

struct ClassChoice {
    const char* name;
    const char* caption;
    ClassOption option;
};
constexpr std::array<ClassChoice, 4> kClassChoices{
    {{"Option1", "Class A; K=1.3", ClassOption::ClassA},
     {"Option2", "Class AB; K=1.6", ClassOption::ClassAB},
     {"Option3", "Class B; K=1.8", ClassOption::ClassB},
     {"Option4", "Class C; K=2", ClassOption::ClassC}}};

}  // namespace

FrmLoadHelp::FrmLoadHelp(DesignState& state, Dialogs& dialogs, std::function<void()> returnToDesign,
                         QWidget* parent)
    : QWidget(parent),
      state_(state),
      dialogs_(dialogs),
      returnToDesign_(std::move(returnToDesign)) {
    background_ = MountScreen(*this, "frmLoadHelp", FromText(ScreenCaption("Load Help screen")),
                              kLoadHelpWidth, kLoadHelpHeight);
    BuildControls();
    Connect();
    setMinimumSize(585, 280);
    FitToScreen(*this, QSize(1170, 560));

    ShowLoadHelpEntry(state_, *this);
    DrawSwingPanel(background_->surface());
    // Nothing to accept until a class is chosen.
    SetAcceptEnabled(false);
}

const Surface& FrmLoadHelp::surface() const {
    return background_->surface();
}

// ---- Building the screen ------------------------------------------------------------------

void FrmLoadHelp::BuildControls() {
    PlaceHeading(*background_, "VARO Load Help", LogicalBox(300, 150, 5500, 650));
    BuildEntries();
    BuildClassChoice();
    labels_[LoadHelpField::CurrentLoad] =
        PlaceLabel(*background_, "lblCurrentLoad", "Current plate load is",
                   LogicalBox(kCaptionLeft, 4100, 5500, 4400));
    labels_[LoadHelpField::NewLoad] = PlaceLabel(
        *background_, "lblLoad", "New load:", LogicalBox(kCaptionLeft, 4450, 5500, 4750));
    // What the design screen would make of the new load, beside the buttons, before Accept.
    QLabel* note = PlaceLabel(*background_, "lblLoadNote", "", LogicalBox(5700, 4450, 11650, 5400));
    note->setWordWrap(true);
    note->setStyleSheet(QStringLiteral("QLabel { color: #990000; }"));
    labels_[LoadHelpField::LimitNote] = note;
    BuildPanelLabels();
    BuildButtons();
}

void FrmLoadHelp::BuildEntries() {
    struct Row {
        const char* label;
        const char* caption;
        LoadHelpField field;
        float top;
    };
    for (const Row& row :
         {Row{"lblVoltage", "Peak plate swing, volts:", LoadHelpField::Voltage, kVoltageTop},
          Row{"lblPower", "RF power, RMS watts:", LoadHelpField::Power, kPowerTop}}) {
        QLabel* caption =
            PlaceLabel(*background_, row.label, row.caption,
                       LogicalBox(kCaptionLeft, row.top, kCaptionRight, row.top + kRowHeight));
        auto* entry = new QLineEdit(background_);
        entry->setObjectName(FromText(ControlName(row.field)));
        // A screen reader names the entry by its caption.
        entry->setAccessibleName(row.caption);
        background_->Place(
            entry, LogicalBox(kEntryLeft, row.top, kEntryRight, row.top + kRowHeight), 8.25);
        caption->setBuddy(entry);
        entries_[row.field] = entry;
    }
}

void FrmLoadHelp::BuildClassChoice() {
    classFrame_ = new QGroupBox(QStringLiteral("Class of operation"), background_);
    classFrame_->setObjectName("fraClass");
    auto* column = new QVBoxLayout(classFrame_);
    for (std::size_t i = 0; i < kClassChoices.size(); ++i) {
        auto* option = new QRadioButton(kClassChoices[i].caption, classFrame_);
        option->setObjectName(kClassChoices[i].name);
        column->addWidget(option);
        classOptions_[i] = option;
    }
    background_->Place(classFrame_, LogicalBox(kCaptionLeft, 1900, kEntryRight, 3950), 8.25);
}

void FrmLoadHelp::BuildPanelLabels() {
    PlaceLabel(*background_, "lblPlotTitle", "Instantaneous plate voltage", kPlotTitleBox,
               kPlotTitlePointsPerTwip * kLoadHelpWidth)
        ->setAlignment(Qt::AlignCenter);
    struct Level {
        const char* name;
        const char* caption;
        float y;
    };
    for (const Level& level : {Level{"lblTwiceSupply", "Twice supply voltage", kTwiceSupplyY},
                               Level{"lblSupply", "Supply voltage", kSupplyY},
                               Level{"lblZero", "Zero voltage", kZeroVoltY}}) {
        PlaceLabel(*background_, level.name, level.caption,
                   LogicalBox(kLevelLabelLeft, level.y - kLevelLabelHalfHeight, kLevelLabelRight,
                              level.y + kLevelLabelHalfHeight))
            ->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    // Beside the lower arrow, below the panel.
    PlaceLabel(*background_, "lblPeakSwing", "Peak plate swing",
               LogicalBox(9900, 4050, 11650, 4350));
}

void FrmLoadHelp::BuildButtons() {
    PlaceButton(*background_, "cmdAccept", "Accept and return",
                LogicalBox(kCaptionLeft, 4950, 2900, 5400));
    PlaceButton(*background_, "cmdExit", "Return", LogicalBox(3100, 4950, kEntryRight, 5400));
    QWidget* previous = entries_.at(LoadHelpField::Voltage);
    for (QWidget* next : std::initializer_list<QWidget*>{
             entries_.at(LoadHelpField::Power), classOptions_[0], classOptions_[1],
             classOptions_[2], classOptions_[3], findChild<QWidget*>("cmdAccept"),
             findChild<QWidget*>("cmdExit")}) {
        QWidget::setTabOrder(previous, next);
        previous = next;
    }
}

// ---- Routing ------------------------------------------------------------------------------

void FrmLoadHelp::Connect() {
    auto* accept = findChild<QPushButton*>("cmdAccept");
    for (QLineEdit* entry :
         {entries_.at(LoadHelpField::Voltage), entries_.at(LoadHelpField::Power)}) {
        // Only the user's typing: the recalculation's own rewriting of the text is no edit.
        connect(entry, &QLineEdit::textEdited, this, [this] { OnLoadEntryEdited(*this); });
        connect(entry, &QLineEdit::returnPressed, accept, [accept] {
            if (accept->isEnabled()) accept->click();
        });
    }
    for (std::size_t i = 0; i < kClassChoices.size(); ++i) {
        OnOptionChosen(*classOptions_[i], *this, [this, option = kClassChoices[i].option] {
            actions_.Run(
                [this, option] { OnClassOptionClicked(state_, help_, *this, dialogs_, option); });
        });
    }
    connect(accept, &QPushButton::clicked, this, [this] {
        actions_.Run([this] {
            AcceptPlateLoad(state_, help_, *this, dialogs_);
            returnToDesign_();
        });
    });
    new ReturnOnEscape(*this, *findChild<QPushButton*>("cmdExit"));
    connect(findChild<QPushButton*>("cmdExit"), &QPushButton::clicked, this,
            [this] { actions_.Run(returnToDesign_); });
}

// ---- LoadHelpForm -------------------------------------------------------------------------

std::string FrmLoadHelp::Text(LoadHelpField field) const {
    if (const auto entry = entries_.find(field); entry != entries_.end())
        return entry->second->text().toStdString();
    return labels_.at(field)->text().toStdString();
}

void FrmLoadHelp::SetText(LoadHelpField field, std::string_view text) {
    if (const auto entry = entries_.find(field); entry != entries_.end())
        entry->second->setText(FromText(text));
    else
        labels_.at(field)->setText(FromText(text));
}

ClassOption FrmLoadHelp::SelectedClass() const {
    for (std::size_t i = 0; i < kClassChoices.size(); ++i) {
        if (classOptions_[i]->isChecked()) return kClassChoices[i].option;
    }
    return ClassOption::None;
}

void FrmLoadHelp::ClearClassSelection() {
    // Exclusive options refuse to be unchecked one by one.
    for (QRadioButton* option : classOptions_) {
        option->setAutoExclusive(false);
        option->setChecked(false);
        option->setAutoExclusive(true);
    }
}

void FrmLoadHelp::SetAcceptEnabled(bool enabled) {
    findChild<QPushButton*>("cmdAccept")->setEnabled(enabled);
}

void FrmLoadHelp::SetClassChoiceEnabled(bool enabled) {
    classFrame_->setEnabled(enabled);
}

}  // namespace varo
