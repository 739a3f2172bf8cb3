#include "screens/design/qt/frm_design.h"

#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/numtext.h"
#include "platform/qt/surface_widget.h"
#include "screens/design/design_inputs.h"
#include "screens/design/design_screen.h"
#include "screens/design/qt/up_down.h"
#include "session/program_text.h"

namespace varo {

namespace {

// Entry column, left of the panel where the schematic writes its row captions: each caption
// stands above its entry.
constexpr float kColumnLeft = 150;
constexpr float kColumnRight = 2100;
constexpr float kCaptionHeight = 220;
constexpr float kEntryRight = 1250;
constexpr float kEntryHeight = 290;
constexpr float kSpinnerWidth = 150;
constexpr float kAdjustWidth = 200;
constexpr float kAdjustGap = 25;
constexpr float kFirstCaptionY = 900;
constexpr float kRowStep = 780;
constexpr float kAcceptHeight = 400;

constexpr float kPhaseHeight = 480;

// Generator entry, beside "impedance here:".
constexpr float kGeneratorEntryLeft = kNoteX + 1450;
constexpr float kGeneratorEntryRight = kGeneratorEntryLeft + 900;
constexpr float kGeneratorEntryHeight = 230;

// The command row along the bottom edge.
constexpr float kCommandTop = 8600;
constexpr float kCommandBottom = 8930;
constexpr float kCommandLeft = 150;
constexpr float kCommandRight = 11850;
constexpr float kCommandGap = 100;

// UpDown3: 0.1 per step, the multiplier being the entry divided by 20, so 200 steps are 1x.
constexpr int kGeneratorStepsPerUnit = 200;
constexpr int kGeneratorSpinMaximum = 2000;
constexpr int kIntermediateSpinMaximum = 1000000;

// Entry rows, top to bottom, with the adjust buttons on the Q and intermediate rows.
enum EntryRowIndex { kFrequencyRow, kPlateRow, kLoadRow, kQRow, kIntermediateRow, kEntryRows };
constexpr float kMinusLeft = kEntryRight + 50;
constexpr float kPlusLeft = kMinusLeft + kAdjustWidth + kAdjustGap;
constexpr float kAdjustRight = kPlusLeft + kAdjustWidth;

QRectF Box(float left, float top, float right, float bottom) {
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

float CaptionTop(int row) {
    return kFirstCaptionY + static_cast<float>(row) * kRowStep;
}
float EntryTop(int row) {
    return CaptionTop(row) + kCaptionHeight;
}

// A control on an entry row, from `left` to `right`.
QRectF EntryBox(int row, float left, float right) {
    return Box(left, EntryTop(row), right, EntryTop(row) + kEntryHeight);
}

int SpinPosition(double value, int maximum) {
    if (!std::isfinite(value)) return 1;
    return static_cast<int>(std::lround(std::clamp(value, 1.0, static_cast<double>(maximum))));
}

QString FromText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

FrmDesign::FrmDesign(DesignState& state, Dialogs& dialogs, DesignSession& session, QWidget* parent)
    : QWidget(parent),
      state_(state),
      dialogs_(dialogs),
      session_(session),
      reporter_(dialogs, *this) {
    setObjectName("frmDesign");
    setWindowTitle(QStringLiteral("VARO - Version ") +
                   QString::fromUtf8(versionText.data(), versionText.size()) +
                   QStringLiteral(" - Design screen"));
    background_ = new SurfaceWidget(kDesignScreenWidth, kDesignScreenHeight, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(background_);
    BuildControls();
    ConnectEntries();
    ConnectCommands();
    SetTabOrder();
    setMinimumSize(600, 450);
    resize(1200, 900);
}

const Surface& FrmDesign::surface() const {
    return background_->surface();
}

// ---- Building the screen ------------------------------------------------------------------

QLabel* FrmDesign::AddLabel(const char* name, const QString& caption, const QRectF& at,
                            qreal pointSize) {
    auto* label = new QLabel(caption, background_);
    label->setObjectName(name);
    label->setFont(QFont("Arial"));
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    background_->Place(label, at, pointSize);
    return label;
}

QLineEdit* FrmDesign::AddEntry(DesignField field, const QString& spokenName, const QRectF& at) {
    auto* entry = new QLineEdit(background_);
    entry->setObjectName(FromText(ControlName(field)));
    entry->setAccessibleName(spokenName);
    background_->Place(entry, at, 8.25);
    entries_[field] = entry;
    return entry;
}

QPushButton* FrmDesign::AddButton(const char* name, const QString& caption, const QRectF& at) {
    auto* button = new QPushButton(caption, background_);
    button->setObjectName(name);
    button->setAutoDefault(false);
    background_->Place(button, at, 8.25);
    return button;
}

UpDown* FrmDesign::AddUpDown(const char* name, const QString& spokenName, const QRectF& at,
                             int minimum, int maximum) {
    auto* upDown = new UpDown(background_);
    upDown->setObjectName(name);
    upDown->SetSpokenName(spokenName);
    upDown->setRange(minimum, maximum);
    background_->Place(upDown, at);
    return upDown;
}

void FrmDesign::BuildControls() {
    auto* heading = AddLabel("lblHeading", "VARO Design", QRectF(150, 120, 3350, 420), 14);
    QFont headingFont = heading->font();
    headingFont.setBold(true);
    heading->setFont(headingFont);
    BuildEntryColumn();
    BuildGeneratorEntry();
    BuildCommandRow();
}

void FrmDesign::BuildEntryColumn() {
    struct EntryRow {
        const char* label;
        const char* caption;
        DesignField entry;
        float entryRight;
    };
    const std::array<EntryRow, kEntryRows> rows = {{
        {"lblFrequency", "Frequency (Hz):", DesignField::Frequency, kEntryRight},
        {"lblPlate", "Plate load (ohms):", DesignField::Plate, kEntryRight},
        {"lblNominalLoad", "Load impedance:", DesignField::NominalLoad, kEntryRight},
        {"lblQ", "Pi-section Q:", DesignField::Q, kEntryRight},
        // The intermediate entry shares its row with the spinner that drives its buddy.
        {"lblIntermediate", "Intermediate impedance:", DesignField::Intermediate,
         kEntryRight - kSpinnerWidth},
    }};
    for (int row = 0; row < kEntryRows; ++row) {
        // A screen reader names each entry by the caption above it.
        QLabel* caption = AddLabel(rows[row].label, rows[row].caption,
                                   Box(kColumnLeft, CaptionTop(row), kColumnRight, EntryTop(row)));
        caption->setBuddy(AddEntry(rows[row].entry, rows[row].caption,
                                   EntryBox(row, kColumnLeft, rows[row].entryRight)));
    }
    const float plateBelow = EntryTop(kPlateRow) + kEntryHeight;
    AddLabel("lblPlate2", "looking into network",
             Box(kColumnLeft, plateBelow + 10, kColumnRight, plateBelow + 210), 7.5);

    AddAdjustButtons("cmdQminus", "cmdQplus", "Pi-section Q", kQRow);
    AddAdjustButtons("cmdIntermediateMinus", "cmdIntermediatePlus", "Intermediate impedance",
                     kIntermediateRow);

    const QRectF spinner = EntryBox(kIntermediateRow, kEntryRight - kSpinnerWidth, kEntryRight);
    upDownIntermediate_ =
        AddUpDown("UpDown1", "Intermediate impedance (ohms)", spinner, 1, kIntermediateSpinMaximum);
    const QRectF spinnerEntry = EntryBox(kIntermediateRow, kColumnLeft, kEntryRight);
    AddEntry(DesignField::IntermediateSpinEntry, "Intermediate impedance spinner value",
             spinnerEntry)
        ->hide();
    // A second spinner pair the screen carries without a role of its own.
    AddUpDown("UpDown2", "Spare spinner", spinner, 0, 100)->hide();
    AddEntry(DesignField::SpareSpinEntry, "Spare spinner value", spinnerEntry)->hide();

    const float acceptTop = EntryTop(kIntermediateRow) + kEntryHeight + 300;
    const float acceptBottom = acceptTop + kAcceptHeight;
    AddButton("cmdDesign", "Accept", Box(kColumnLeft, acceptTop, kAdjustRight, acceptBottom))
        ->setDefault(true);
    phaseLabel_ = AddLabel(
        "lblPhase", "",
        Box(kColumnLeft, acceptBottom + 250, kColumnRight, acceptBottom + 250 + kPhaseHeight));
    phaseLabel_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void FrmDesign::AddAdjustButtons(const char* minusName, const char* plusName,
                                 const QString& quantity, int row) {
    QPushButton* minus =
        AddButton(minusName, "-", EntryBox(row, kMinusLeft, kMinusLeft + kAdjustWidth));
    minus->setToolTip("1 % down");
    minus->setAccessibleName(quantity + " down 1 %");
    QPushButton* plus = AddButton(plusName, "+", EntryBox(row, kPlusLeft, kAdjustRight));
    plus->setToolTip("1 % up");
    plus->setAccessibleName(quantity + " up 1 %");
}

void FrmDesign::BuildGeneratorEntry() {
    // Centred on the text line, and no taller than the line spacing allows.
    const float top = kGeneratorEntryY - 30;
    const float bottom = top + kGeneratorEntryHeight;
    const QRectF entry = Box(kGeneratorEntryLeft, top, kGeneratorEntryRight, bottom);
    AddEntry(DesignField::GeneratorOhms, "Generator output impedance (ohms)", entry);
    upDownGenerator_ =
        AddUpDown("UpDown3", "Generator output impedance",
                  Box(kGeneratorEntryRight, top, kGeneratorEntryRight + kSpinnerWidth, bottom), 1,
                  kGeneratorSpinMaximum);
    AddEntry(DesignField::GeneratorSpinEntry, "Generator spinner value", entry)->hide();
}

void FrmDesign::BuildCommandRow() {
    struct Command {
        const char* name;
        const char* caption;
    };
    const std::array<Command, 7> commands = {{{"cmdPlot", "See large plot"},
                                              {"cmdInductor", "Inductor design"},
                                              {"cmdLoadHelp", "Plate load help"},
                                              {"cmdPrint", "Print"},
                                              {"cmdQuarn", "Write Quarn"},
                                              {"cmdSpice", "Write LTspice"},
                                              {"cmdExit", "Exit"}}};
    const float width =
        (kCommandRight - kCommandLeft - kCommandGap * (commands.size() - 1)) / commands.size();
    float left = kCommandLeft;
    for (const Command& command : commands) {
        AddButton(command.name, command.caption,
                  QRectF(QPointF(left, kCommandTop), QPointF(left + width, kCommandBottom)));
        left += width + kCommandGap;
    }
}

void FrmDesign::SetTabOrder() {
    const std::array<const char*, 17> order = {"txtFrequency",
                                               "txtPlate",
                                               "txtNominalLoad",
                                               "txtQ",
                                               "cmdQminus",
                                               "cmdQplus",
                                               "txtIntermediate",
                                               "cmdIntermediateMinus",
                                               "cmdIntermediatePlus",
                                               "cmdDesign",
                                               "txtRinputMult",
                                               "cmdPlot",
                                               "cmdInductor",
                                               "cmdLoadHelp",
                                               "cmdPrint",
                                               "cmdQuarn",
                                               "cmdSpice"};
    QWidget* previous = nullptr;
    for (const char* name : order) {
        auto* widget = findChild<QWidget*>(name);
        if (previous != nullptr) QWidget::setTabOrder(previous, widget);
        previous = widget;
    }
    QWidget::setTabOrder(previous, findChild<QWidget*>("cmdExit"));
}

// ---- Routing ------------------------------------------------------------------------------

void FrmDesign::RunAction(const std::function<void()>& action) {
    if (actionRunning_) return;
    const QScopedValueRollback<bool> running(actionRunning_, true);
    action();
    ShowSpinnerPositions();
}

void FrmDesign::RunAfterEdit(const std::function<void()>& action) {
    QTimer::singleShot(0, this, [this, action] { RunAction(action); });
}

void FrmDesign::ConnectEntries() {
    auto* accept = findChild<QPushButton*>("cmdDesign");
    for (DesignField field : {DesignField::Frequency, DesignField::Intermediate,
                              DesignField::NominalLoad, DesignField::Plate, DesignField::Q}) {
        // User typing only: the logic rewrites these fields itself while validating.
        connect(Entry(field), &QLineEdit::textEdited, this, [this] { OnDesignEntryEdited(*this); });
    }
    for (DesignField field :
         {DesignField::Frequency, DesignField::Intermediate, DesignField::NominalLoad,
          DesignField::Plate, DesignField::Q, DesignField::GeneratorOhms}) {
        connect(Entry(field), &QLineEdit::returnPressed, accept, &QPushButton::click);
    }
    connect(Entry(DesignField::GeneratorOhms), &QLineEdit::textEdited, this, [this] {
        RunAfterEdit(
            [this] { OnGeneratorResistanceChanged(state_, *this, dialogs_, reporter_, *this); });
    });
    connect(Entry(DesignField::IntermediateSpinEntry), &QLineEdit::textEdited, this, [this] {
        RunAfterEdit(
            [this] { OnIntermediateSpinTextChanged(state_, *this, dialogs_, reporter_, *this); });
    });
    connect(upDownIntermediate_, &UpDown::valueChanged, this, [this](int value) {
        RunAction([this, value] {
            SetText(DesignField::IntermediateSpinEntry, PlainText(static_cast<float>(value)));
            OnIntermediateSpinTextChanged(state_, *this, dialogs_, reporter_, *this);
        });
    });
    connect(upDownGenerator_, &UpDown::valueChanged, this, [this](int position) {
        RunAction([this, position] {
            OnGeneratorSpinChanged(state_, *this, dialogs_, reporter_, *this, position);
        });
    });
}

void FrmDesign::ConnectCommands() {
    const auto onClick = [this](const char* name, std::function<void()> action) {
        connect(findChild<QPushButton*>(name), &QPushButton::clicked, this,
                [this, action] { RunAction(action); });
    };
    onClick("cmdDesign", [this] { AcceptDesign(state_, *this, dialogs_, reporter_, *this); });
    const std::array<std::pair<const char*, Adjustment>, 4> adjusters = {
        {{"cmdQminus", Adjustment::QMinus},
         {"cmdQplus", Adjustment::QPlus},
         {"cmdIntermediateMinus", Adjustment::IntermediateMinus},
         {"cmdIntermediatePlus", Adjustment::IntermediatePlus}}};
    for (const auto& [name, which] : adjusters) {
        onClick(name, [this, which = which] {
            AdjustDesign(state_, *this, dialogs_, reporter_, *this, which);
        });
    }
    onClick("cmdPlot", [this] {
        LeaveFor(&FrmDesign::requestPlot,
                 "The large plot screen is not yet available in this version.");
    });
    onClick("cmdInductor", [this] {
        LeaveFor(&FrmDesign::requestInductor,
                 "The inductor designer is not yet available in this version.");
    });
    onClick("cmdLoadHelp", [this] {
        LeaveFor(&FrmDesign::requestLoadHelp,
                 "The plate-load helper is not yet available in this version.");
    });
    onClick("cmdPrint", [this] {
        PrintDesign(state_, *this, dialogs_, reporter_, [this] {
            dialogs_.ShowMessage("Printing is not yet available in this version.");
        });
    });
    onClick("cmdQuarn", [this] { ExportQuarn(state_, *this, dialogs_, reporter_, session_); });
    onClick("cmdSpice", [this] { ExportLTspice(state_, dialogs_, reporter_, session_); });
    onClick("cmdExit", [this] {
        SaveSessionOnExit(state_, *this, dialogs_, reporter_, session_);
        emit requestExit();
    });
}

void FrmDesign::LeaveFor(void (FrmDesign::*request)(), const char* notYetAvailable) {
    PrepareToLeaveDesign(state_, reporter_);
    if (isSignalConnected(QMetaMethod::fromSignal(request))) {
        emit(this->*request)();
    } else {
        dialogs_.ShowMessage(notYetAvailable);
    }
}

void FrmDesign::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Coming back from another screen shows what the design now holds; a window restored by
    // the desktop changes nothing.
    if (!event->spontaneous()) LoadScreen();
}

void FrmDesign::LoadScreen() {
    RunAction([this] { LoadDesignScreen(state_, *this, reporter_, *this); });
}

void FrmDesign::ShowSpinnerPositions() {
    upDownIntermediate_->setValue(SpinPosition(state_.intermediateR, kIntermediateSpinMaximum));
    SetText(DesignField::IntermediateSpinEntry,
            PlainText(static_cast<float>(upDownIntermediate_->value())));
    upDownGenerator_->setValue(SpinPosition(
        static_cast<double>(state_.genMultiplier) * kGeneratorStepsPerUnit, kGeneratorSpinMaximum));
}

// ---- DesignForm ---------------------------------------------------------------------------

std::string FrmDesign::Text(DesignField field) const {
    return Entry(field)->text().toStdString();
}

void FrmDesign::SetText(DesignField field, std::string_view text) {
    Entry(field)->setText(FromText(text));
}

void FrmDesign::EnableAccept() {
    findChild<QPushButton*>("cmdDesign")->setEnabled(true);
}

// ---- DesignView ---------------------------------------------------------------------------

void FrmDesign::ShowResults(const DesignResults& results) {
    DrawDesignScreen(background_->surface(), state_, results);
    background_->update();
    phaseLabel_->setText(FromText(PhaseReadout(results)));
}

}  // namespace varo
