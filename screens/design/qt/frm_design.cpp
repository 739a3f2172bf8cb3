#include "screens/design/qt/frm_design.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSettings>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "core/numtext.h"
#include "model/fixed_text.h"
#include "model/pictures/design_picture.h"
#include "model/pictures/report_pages.h"
#include "platform/qt/screen_helpers.h"
#include "platform/qt/surface_widget.h"
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

// The tank-loss Q entries, under the loss figures of the left column.
constexpr float kLossEntryHeight = 250;

// The command row along the bottom edge.
constexpr float kCommandTop = 8600;
constexpr float kCommandBottom = 8930;
constexpr float kCommandLeft = 150;
constexpr float kCommandRight = 11850;
constexpr float kCommandGap = 60;
constexpr float kCommandPadLetters = 3;  // room beside a caption, in letters

constexpr QSize kPreferredSize(1200, 900);
constexpr QSize kMinimumSize(600, 450);

// The Q values are the user's, not the design's: kept in the desktop's settings, apart from the
// last-session file.
constexpr const char* kCoilQKey = "tankLosses/coilQ";
constexpr const char* kCapacitorQKey = "tankLosses/capacitorQ";

// UpDown3: 0.1 per step, the multiplier being the entry divided by 20, so 200 steps are 1x.
constexpr int kGeneratorStepsPerUnit = 200;
constexpr int kGeneratorSpinMaximum = 2000;
constexpr int kIntermediateSpinMaximum = 1000000;

// Entry rows, top to bottom, with the adjust buttons on the Q and intermediate rows.
enum EntryRowIndex { kFrequencyRow, kPlateRow, kLoadRow, kQRow, kIntermediateRow, kEntryRows };
constexpr float kMinusLeft = kEntryRight + 50;
constexpr float kPlusLeft = kMinusLeft + kAdjustWidth + kAdjustGap;
constexpr float kAdjustRight = kPlusLeft + kAdjustWidth;

float CaptionTop(int row) {
    return kFirstCaptionY + static_cast<float>(row) * kRowStep;
}
float EntryTop(int row) {
    return CaptionTop(row) + kCaptionHeight;
}

// A control on an entry row, from `left` to `right`.
QRectF EntryBox(int row, float left, float right) {
    return LogicalBox(left, EntryTop(row), right, EntryTop(row) + kEntryHeight);
}

int SpinPosition(double value, int maximum) {
    if (!std::isfinite(value)) return 1;
    return static_cast<int>(std::lround(std::clamp(value, 1.0, static_cast<double>(maximum))));
}

// A Q kept in the user's settings; the default where the settings hold none or a value no part
// can have (edited by hand: "inf", "1e400", "-3").
double RememberedQ(const char* key, double fallback) {
    const double kept = QSettings(kSettingsOwner, kSettingsProgram).value(key, fallback).toDouble();
    return IsUsableQ(kept) ? kept : fallback;
}

}  // namespace

FrmDesign::FrmDesign(Design& design, Dialogs& dialogs, DesignSession& session, QWidget* parent)
    : QWidget(parent),
      design_(design),
      dialogs_(dialogs),
      session_(session),
      reporter_(dialogs, *this) {
    setObjectName("frmDesign");
    setWindowTitle(FromText(ScreenCaption("Design screen")));
    background_ = new SurfaceWidget(kDesignScreenWidth, kDesignScreenHeight, this);
    background_->SetFit(SurfaceFit::KeepAspect);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(background_);
    AddStatusLine(*this);
    BuildFileMenu();
    BuildControls();
    ConnectEntries();
    ConnectCommands();
    SetTabOrder();
    setMinimumSize(kMinimumSize);
    FitToScreen(*this, kPreferredSize);
}

const Surface& FrmDesign::surface() const {
    return background_->surface();
}

// ---- Building the screen ------------------------------------------------------------------

QLabel* FrmDesign::AddLabel(const char* name, const QString& caption, const QRectF& at,
                            qreal pointSize) {
    return PlaceLabel(*background_, name, caption, at, pointSize, "Arial");
}

QLineEdit* FrmDesign::AddEntry(DesignField field, const QString& spokenName, const QRectF& at) {
    auto* entry = new QLineEdit(background_);
    entry->setObjectName(FromText(ControlName(field)));
    entry->setAccessibleName(spokenName);
    background_->Place(entry, at, 8.25);
    entries_[field] = entry;
    return entry;
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
    PlaceHeading(*background_, "VARO Design", QRectF(150, 120, 3350, 420), "Arial");
    BuildEntryColumn();
    BuildGeneratorEntry();
    BuildCommandRow();
    BuildLossEntries();
    SetToolTips();
}

void FrmDesign::BuildLossEntries() {
    lossQ_ = {RememberedQ(kCoilQKey, TankQ{}.coil), RememberedQ(kCapacitorQKey, TankQ{}.capacitor)};
    design_.SetLossQ(lossQ_);
    const float bottom = kLossEntriesY + kLossEntryHeight;
    const auto addQEntry = [&](const char* labelName, const char* caption, const char* entryName,
                               float left, float entryLeft, double value) {
        QLabel* label =
            AddLabel(labelName, caption, LogicalBox(left, kLossEntriesY, entryLeft, bottom));
        auto* entry = new QLineEdit(FromText(PlainText(value)).trimmed(), background_);
        entry->setObjectName(entryName);
        entry->setAccessibleName(caption);
        background_->Place(entry, LogicalBox(entryLeft, kLossEntriesY, entryLeft + 550, bottom),
                           8.25);
        label->setBuddy(entry);
        return entry;
    };
    coilQEntry_ = addQEntry("lblCoilQ", "Coil Q:", "txtCoilQ", 250, 800, lossQ_.coil);
    capacitorQEntry_ =
        addQEntry("lblCapacitorQ", "Capacitor Q:", "txtCapacitorQ", 1450, 2500, lossQ_.capacitor);
    connect(coilQEntry_, &QLineEdit::editingFinished, this,
            [this] { OnLossQEdited(coilQEntry_, &TankQ::coil, kCoilQKey); });
    // Once a coil is wound on the inductor screen its own Q may stand for the coil Q.
    woundQCheck_ = new QCheckBox("Wound coils' Q", background_);
    woundQCheck_->setObjectName("chkWoundQ");
    background_->Place(woundQCheck_, LogicalBox(3150, kLossEntriesY, 4700, bottom), 8.25);
    connect(woundQCheck_, &QCheckBox::toggled, this, [this](bool use) {
        design_.UseWoundCoilQ(use);
        ShowResults();
        ShowTitle();
    });
    connect(capacitorQEntry_, &QLineEdit::editingFinished, this,
            [this] { OnLossQEdited(capacitorQEntry_, &TankQ::capacitor, kCapacitorQKey); });
}

void FrmDesign::SetToolTips() {
    struct Tip {
        const char* name;
        const char* text;
    };
    const std::array<Tip, 26> tips = {{
        {"txtFrequency", "Operating frequency; k and M suffixes allowed"},
        {"txtPlate", "Plate load resistance the network must present to the tube"},
        {"txtNominalLoad", "Load resistance, usually the antenna feed line"},
        {"txtQ", "Loaded Q of the pi section"},
        {"txtIntermediate", "Resistance between the pi and the L section"},
        {"UpDown1", "Step the intermediate resistance by 1 ohm"},
        {"txtRinputMult", "Generator output impedance used for the response plot"},
        {"UpDown3", "Step the generator output impedance"},
        {"cmdQminus", "Lower the pi-section Q by 1 %"},
        {"cmdQplus", "Raise the pi-section Q by 1 %"},
        {"cmdIntermediateMinus", "Lower the intermediate resistance by 1 %"},
        {"cmdIntermediatePlus", "Raise the intermediate resistance by 1 %"},
        {"cmdDesign", "Take in the entries and recalculate the design"},
        {"cmdPlot", "Show the response on the large plot"},
        {"cmdInductor", "Design the winding of L1 or L2"},
        {"cmdLoadHelp", "Work out the plate load; enter RF power and peak swing"},
        {"cmdBands", "Plan the tank for every band against the tube and the variable capacitors"},
        {"cmdLoadRange",
         "Re-tune the network for an antenna: one load, a measured file or an SWR circle"},
        {"cmdPrint", "Print the design report"},
        {"cmdQuarn", "Write the design as a Quarn circuit file"},
        {"cmdSpice", "Write the design as an LTspice schematic"},
        {"cmdSpiceNetlist", "Write the design as a SPICE netlist (.cir)"},
        {"cmdHelp", "About VARO"},
        {"cmdExit", "Save the inputs for the next run and quit"},
        {"txtCoilQ", "Unloaded Q of the coils, for the tank losses"},
        {"chkWoundQ", "Take each wound coil's own Q (from the inductor screen) for the losses"},
    }};
    for (const Tip& tip : tips)
        findChild<QWidget*>(tip.name)->setToolTip(tip.text);
    capacitorQEntry_->setToolTip("Unloaded Q of the capacitors, for the tank losses");
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
        QLabel* caption =
            AddLabel(rows[row].label, rows[row].caption,
                     LogicalBox(kColumnLeft, CaptionTop(row), kColumnRight, EntryTop(row)));
        caption->setBuddy(AddEntry(rows[row].entry, rows[row].caption,
                                   EntryBox(row, kColumnLeft, rows[row].entryRight)));
    }
    const float plateBelow = EntryTop(kPlateRow) + kEntryHeight;
    AddLabel("lblPlate2", "looking into network",
             LogicalBox(kColumnLeft, plateBelow + 10, kColumnRight, plateBelow + 210), 7.5);

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
    PlaceButton(*background_, "cmdDesign", "&Accept",
                LogicalBox(kColumnLeft, acceptTop, kAdjustRight, acceptBottom))
        ->setDefault(true);
    phaseLabel_ = AddLabel("lblPhase", "",
                           LogicalBox(kColumnLeft, acceptBottom + 250, kColumnRight,
                                      acceptBottom + 250 + kPhaseHeight));
    phaseLabel_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void FrmDesign::AddAdjustButtons(const char* minusName, const char* plusName,
                                 const QString& quantity, int row) {
    QPushButton* minus = PlaceButton(*background_, minusName, "-",
                                     EntryBox(row, kMinusLeft, kMinusLeft + kAdjustWidth));
    minus->setToolTip("1 % down");
    minus->setAccessibleName(quantity + " down 1 %");
    QPushButton* plus =
        PlaceButton(*background_, plusName, "+", EntryBox(row, kPlusLeft, kAdjustRight));
    plus->setToolTip("1 % up");
    plus->setAccessibleName(quantity + " up 1 %");
}

void FrmDesign::BuildGeneratorEntry() {
    // Centred on the text line, and no taller than the line spacing allows.
    const float top = kGeneratorEntryY - 30;
    const float bottom = top + kGeneratorEntryHeight;
    const QRectF entry = LogicalBox(kGeneratorEntryLeft, top, kGeneratorEntryRight, bottom);
    AddEntry(DesignField::GeneratorOhms, "Generator output impedance (ohms)", entry);
    upDownGenerator_ = AddUpDown(
        "UpDown3", "Generator output impedance",
        LogicalBox(kGeneratorEntryRight, top, kGeneratorEntryRight + kSpinnerWidth, bottom), 1,
        kGeneratorSpinMaximum);
    AddEntry(DesignField::GeneratorSpinEntry, "Generator spinner value", entry)->hide();
}

void FrmDesign::BuildCommandRow() {
    struct Command {
        const char* name;
        const char* caption;
    };
    // Each caption with its keyboard mnemonic (Alt and the underlined letter).
    const std::array<Command, 9> commands = {{{"cmdPlot", "See large &plot"},
                                              {"cmdInductor", "&Inductor design"},
                                              {"cmdLoadHelp", "Plate &load help"},
                                              {"cmdPrint", "P&rint"},
                                              {"cmdQuarn", "Write &Quarn"},
                                              {"cmdSpice", "Write LT&spice"},
                                              {"cmdSpiceNetlist", "Write SPI&CE"},
                                              {"cmdHelp", "&Help"},
                                              {"cmdExit", "E&xit"}}};
    // Each button as wide as its caption asks, sharing the row's width.
    float letters = 0;
    for (const Command& command : commands)
        letters += static_cast<float>(std::strlen(command.caption)) + kCommandPadLetters;
    const float perLetter =
        (kCommandRight - kCommandLeft - kCommandGap * (commands.size() - 1)) / letters;
    float left = kCommandLeft;
    for (const Command& command : commands) {
        const float width =
            (static_cast<float>(std::strlen(command.caption)) + kCommandPadLetters) * perLetter;
        PlaceButton(*background_, command.name, command.caption,
                    QRectF(QPointF(left, kCommandTop), QPointF(left + width, kCommandBottom)));
        left += width + kCommandGap;
    }
    // Beyond the original row: the band plan and the load range, in the free room under the
    // harmonic table.
    PlaceButton(*background_, "cmdBands", "&Band plan", LogicalBox(8800, 5650, 10400, 6050));
    PlaceButton(*background_, "cmdLoadRange", "Load ran&ge", LogicalBox(10450, 5650, 11850, 6050));
}

void FrmDesign::SetTabOrder() {
    const std::array<const char*, 24> order = {"txtFrequency",
                                               "txtPlate",
                                               "txtNominalLoad",
                                               "txtQ",
                                               "cmdQminus",
                                               "cmdQplus",
                                               "txtIntermediate",
                                               "UpDown1",
                                               "cmdIntermediateMinus",
                                               "cmdIntermediatePlus",
                                               "cmdDesign",
                                               "txtRinputMult",
                                               "cmdPlot",
                                               "cmdInductor",
                                               "cmdLoadHelp",
                                               "cmdPrint",
                                               "cmdQuarn",
                                               "cmdSpice",
                                               "cmdSpiceNetlist",
                                               "cmdBands",
                                               "cmdLoadRange",
                                               "txtCoilQ",
                                               "txtCapacitorQ",
                                               "cmdHelp"};
    QWidget* previous = nullptr;
    for (const char* name : order) {
        auto* widget = findChild<QWidget*>(name);
        if (previous != nullptr) QWidget::setTabOrder(previous, widget);
        previous = widget;
    }
    QWidget::setTabOrder(previous, findChild<QWidget*>("cmdExit"));
}

// ---- Routing ------------------------------------------------------------------------------

void FrmDesign::RunAction(const std::function<bool()>& action) {
    actions_.Run([this, &action] {
        if (action()) SetPending(false);
        ShowResults();
        ShowSpinnerPositions();
        ShowTitle();
    });
}

void FrmDesign::RunAfterEdit(const std::function<bool()>& action) {
    QTimer::singleShot(0, this, [this, action] { RunAction(action); });
}

void FrmDesign::ConnectEntries() {
    auto* accept = findChild<QPushButton*>("cmdDesign");
    for (DesignField field : {DesignField::Frequency, DesignField::Intermediate,
                              DesignField::NominalLoad, DesignField::Plate, DesignField::Q}) {
        // User typing only: the logic rewrites these fields itself while validating.
        connect(Entry(field), &QLineEdit::textEdited, this, [this, field] {
            MarkEdited(Entry(field));
            EnableAccept();
        });
    }
    for (DesignField field :
         {DesignField::Frequency, DesignField::Intermediate, DesignField::NominalLoad,
          DesignField::Plate, DesignField::Q, DesignField::GeneratorOhms}) {
        connect(Entry(field), &QLineEdit::returnPressed, accept, &QPushButton::click);
    }
    connect(Entry(DesignField::GeneratorOhms), &QLineEdit::textEdited, this, [this] {
        RunAfterEdit([this] {
            design_.GeneratorResistanceEntered(*this, dialogs_, reporter_);
            return true;
        });
    });
    connect(Entry(DesignField::IntermediateSpinEntry), &QLineEdit::textEdited, this, [this] {
        RunAfterEdit([this] {
            design_.IntermediateSpun(*this, dialogs_, reporter_);
            return true;
        });
    });
    connect(upDownIntermediate_, &UpDown::valueChanged, this, [this](int value) {
        RunAction([this, value] {
            SetText(DesignField::IntermediateSpinEntry, PlainText(static_cast<float>(value)));
            design_.IntermediateSpun(*this, dialogs_, reporter_);
            return true;
        });
    });
    connect(upDownGenerator_, &UpDown::valueChanged, this, [this](int position) {
        RunAction([this, position] {
            design_.GeneratorSpun(*this, dialogs_, reporter_, position);
            return true;
        });
    });
}

void FrmDesign::ConnectCommands() {
    // `tookEntriesIn`: the action validates, so the typed entries are in use afterwards.
    const auto onClick = [this](const char* name, bool tookEntriesIn,
                                std::function<void()> action) {
        connect(findChild<QPushButton*>(name), &QPushButton::clicked, this,
                [this, action, tookEntriesIn] {
                    RunAction([action, tookEntriesIn] {
                        action();
                        return tookEntriesIn;
                    });
                });
    };
    onClick("cmdDesign", true, [this] { design_.Accept(*this, dialogs_, reporter_); });
    const std::array<std::pair<const char*, Adjustment>, 4> adjusters = {
        {{"cmdQminus", Adjustment::QMinus},
         {"cmdQplus", Adjustment::QPlus},
         {"cmdIntermediateMinus", Adjustment::IntermediateMinus},
         {"cmdIntermediatePlus", Adjustment::IntermediatePlus}}};
    for (const auto& [name, which] : adjusters)
        onClick(name, true,
                [this, which = which] { design_.Adjust(*this, dialogs_, reporter_, which); });
    onClick("cmdPlot", false, [this] {
        LeaveFor(&FrmDesign::requestPlot,
                 "The large plot screen is not yet available in this version.");
    });
    onClick("cmdInductor", false, [this] {
        LeaveFor(&FrmDesign::requestInductor,
                 "The inductor designer is not yet available in this version.");
    });
    onClick("cmdLoadHelp", false, [this] {
        LeaveFor(&FrmDesign::requestLoadHelp,
                 "The plate-load helper is not yet available in this version.");
    });
    onClick("cmdBands", false, [this] {
        LeaveFor(&FrmDesign::requestBands, "The band plan is not yet available in this version.");
    });
    onClick("cmdLoadRange", false, [this] {
        LeaveFor(&FrmDesign::requestLoadRange,
                 "The load range is not yet available in this version.");
    });
    onClick("cmdPrint", true, [this] { PrintDesign(design_, *this, dialogs_, reporter_); });
    // Only a chosen file name reads the entries in; a cancelled dialog leaves them marked.
    connect(findChild<QPushButton*>("cmdQuarn"), &QPushButton::clicked, this, [this] {
        RunAction([this] {
            return ExportQuarn(design_, *this, dialogs_, reporter_, session_) !=
                   FileOutcome::Cancelled;
        });
    });
    onClick("cmdSpice", false, [this] { ExportLTspice(design_, dialogs_, reporter_, session_); });
    onClick("cmdSpiceNetlist", false,
            [this] { ExportSpiceNetlist(design_, dialogs_, reporter_, session_); });
    onClick("cmdHelp", false, [this] { ShowAbout(); });
    // A Cancel to the unsaved-changes question leaves the typed entries as they were.
    connect(findChild<QPushButton*>("cmdExit"), &QPushButton::clicked, this, [this] {
        RunAction([this] {
            if (!MayLeaveDesign()) return false;
            SaveSessionOnExit(design_, *this, dialogs_, reporter_, session_);
            exiting_ = true;
            emit requestExit();
            return true;
        });
    });
}

void FrmDesign::LeaveFor(void (FrmDesign::*request)(), const char* notYetAvailable) {
    design_.RecomputeNetwork(reporter_);
    if (isSignalConnected(QMetaMethod::fromSignal(request))) {
        emit(this->*request)();
    } else {
        dialogs_.ShowMessage(notYetAvailable);
    }
}

void FrmDesign::ShowAbout() {
    dialogs_.ShowMessage(
        "VARO " + std::string(versionText) +
            "\n\nDesigns the pi-L output network of a vacuum-tube transmitter: the component "
            "values and their reactances, the voltage and current each part must stand, the "
            "tank's losses, and the response over the band and at the harmonics. Designs can be "
            "printed and written for circuit simulators.\n\nLicence: MIT",
        "About VARO", MessageIcon::Information);
}

void FrmDesign::SetPending(bool pending) {
    pending_ = pending;
    ShowTitle();
    auto* accept = findChild<QPushButton*>("cmdDesign");
    QFont font = accept->font();
    font.setBold(pending);
    accept->setFont(font);
    accept->setAccessibleDescription(pending ? "Edited entries are not yet in use" : "");
    if (pending) return;
    for (const auto& [field, entry] : entries_)
        entry->setStyleSheet({});
}

void FrmDesign::MarkEdited(QLineEdit* entry) {
    entry->setStyleSheet(QStringLiteral("QLineEdit { background: #fff2b3; }"));
    SetPending(true);
}

void FrmDesign::OnLossQEdited(QLineEdit* entry, double TankQ::*which, const char* settingsKey) {
    std::string text = entry->text().toStdString();
    const double value = ParseEngNumber(text);
    if (IsUsableQ(value)) {
        lossQ_.*which = value;
        QSettings(kSettingsOwner, kSettingsProgram).setValue(settingsKey, value);
    }
    entry->setText(FromText(PlainText(lossQ_.*which)).trimmed());
    design_.SetLossQ(lossQ_);
    ShowResults();
    ShowTitle();
}

void FrmDesign::ShowLossQ() {
    coilQEntry_->setText(FromText(PlainText(lossQ_.coil)).trimmed());
    capacitorQEntry_->setText(FromText(PlainText(lossQ_.capacitor)).trimmed());
}

void FrmDesign::ShowWoundCoilQ() {
    const auto q = design_.WoundCoilQ();
    woundQCheck_->setEnabled(q[0].has_value() || q[1].has_value());
    const QSignalBlocker quiet(woundQCheck_);
    woundQCheck_->setChecked(design_.usesWoundCoilQ());
}

void FrmDesign::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Coming back from another screen shows what the design now holds; a window restored by
    // the desktop changes nothing.
    if (!event->spontaneous()) {
        LoadScreen();
        ShowWoundCoilQ();
        ShowTitle();
    }
}

void FrmDesign::LoadScreen() {
    RunAction([this] { return design_.Load(*this, reporter_); });
}

void FrmDesign::ShowSpinnerPositions() {
    upDownIntermediate_->setValue(
        SpinPosition(design_.state().intermediateR, kIntermediateSpinMaximum));
    SetText(DesignField::IntermediateSpinEntry,
            PlainText(static_cast<float>(upDownIntermediate_->value())));
    upDownGenerator_->setValue(
        SpinPosition(static_cast<double>(design_.state().genMultiplier) * kGeneratorStepsPerUnit,
                     kGeneratorSpinMaximum));
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

// ---- Results ------------------------------------------------------------------------------

void FrmDesign::ShowResults() {
    const DesignResults& results = design_.results();
    DrawDesignScreen(background_->surface(), design_.state(), results);
    background_->update();
    phaseLabel_->setText(FromText(PhaseReadout(results)));
}

}  // namespace varo
