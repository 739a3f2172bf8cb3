#include "screens/design/qt/frm_design.h"

#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/network.h"
#include "core/numtext.h"
#include "platform/qt/surface_widget.h"
#include "screens/design/design_inputs.h"
#include "screens/design/qt/up_down.h"
#include "screens/design/schematic.h"
#include "screens/design/small_plot.h"
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

// Section phases, then component values under the caption panel.
constexpr float kPhaseHeight = 480;
constexpr float kValuesHeaderY = 6420;
constexpr float kValuesFirstRowY = 6660;
constexpr float kValuesRowStep = 220;
constexpr float kValuesNameX = 250;
constexpr float kValuesValueX = 800;
constexpr float kValuesReactanceX = 1900;

// Generator entry, beside "impedance here:".
constexpr float kGeneratorEntryLeft = kExplanationX + 1450;
constexpr float kGeneratorEntryRight = kGeneratorEntryLeft + 900;
constexpr float kGeneratorEntryHeight = 230;

// The command row along the bottom edge.
constexpr float kCommandTop = 8600;
constexpr float kCommandBottom = 8930;
constexpr float kCommandLeft = 150;
constexpr float kCommandRight = 11850;
constexpr float kCommandGap = 100;

constexpr const char* kSurfaceFont = "Arial";
constexpr float kSurfacePointSize = 8;

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

struct ComponentRow {
    const char* name;
    std::string value;
    float reactance;
};

void DrawComponentValues(Surface& surface, const DesignState& state) {
    surface.SetFont(kSurfaceFont, kSurfacePointSize, true);
    surface.Text(kValuesNameX, kValuesHeaderY, "Part");
    surface.Text(kValuesValueX, kValuesHeaderY, "Value");
    surface.Text(kValuesReactanceX, kValuesHeaderY, "Reactance");
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    const std::array<ComponentRow, 5> rows = {{{"C1", FormatFarad(state.C1), state.xC1},
                                               {"L1", FormatHenry(state.L1), state.xL1},
                                               {"C2", FormatFarad(state.C2), state.xC2},
                                               {"L2", FormatHenry(state.L2), state.xL2},
                                               {"C3", FormatFarad(state.C3), state.xC3}}};
    float y = kValuesFirstRowY;
    for (const ComponentRow& row : rows) {
        surface.Text(kValuesNameX, y, row.name);
        surface.Text(kValuesValueX, y, row.value);
        surface.Text(kValuesReactanceX, y, FormatNumber(row.reactance) + "ohms");
        y += kValuesRowStep;
    }
}

QString PhaseText(const DesignState& state) {
    const std::string text = "Pi phase: " + FormatNumber(state.piPhase) +
                             "deg.\nL phase: " + FormatNumber(state.lPhase) + "deg.";
    return QString::fromStdString(text);
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

QLineEdit* FrmDesign::AddEntry(const char* name, const QRectF& at) {
    auto* entry = new QLineEdit(background_);
    entry->setObjectName(name);
    background_->Place(entry, at, 8.25);
    return entry;
}

QPushButton* FrmDesign::AddButton(const char* name, const QString& caption, const QRectF& at) {
    auto* button = new QPushButton(caption, background_);
    button->setObjectName(name);
    button->setAutoDefault(false);
    background_->Place(button, at, 8.25);
    return button;
}

UpDown* FrmDesign::AddUpDown(const char* name, const QRectF& at, int minimum, int maximum) {
    auto* upDown = new UpDown(background_);
    upDown->setObjectName(name);
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
        const char* entry;
        float entryRight;
    };
    const std::array<EntryRow, kEntryRows> rows = {{
        {"lblFrequency", "Frequency (Hz):", "txtFrequency", kEntryRight},
        {"lblPlate", "Plate load (ohms):", "txtPlate", kEntryRight},
        {"lblNominalLoad", "Load impedance:", "txtNominalLoad", kEntryRight},
        {"lblQ", "Pi-section Q:", "txtQ", kEntryRight},
        // The intermediate entry shares its row with the spinner that drives its buddy.
        {"lblIntermediate", "Intermediate impedance:", "txtIntermediate",
         kEntryRight - kSpinnerWidth},
    }};
    for (int row = 0; row < kEntryRows; ++row) {
        AddLabel(rows[row].label, rows[row].caption,
                 Box(kColumnLeft, CaptionTop(row), kColumnRight, EntryTop(row)));
        AddEntry(rows[row].entry, EntryBox(row, kColumnLeft, rows[row].entryRight));
    }
    const float plateBelow = EntryTop(kPlateRow) + kEntryHeight;
    AddLabel("lblPlate2", "looking into network",
             Box(kColumnLeft, plateBelow + 10, kColumnRight, plateBelow + 210), 7.5);

    AddAdjustButtons("cmdQminus", "cmdQplus", kQRow);
    AddAdjustButtons("cmdIntermediateMinus", "cmdIntermediatePlus", kIntermediateRow);

    const QRectF spinner = EntryBox(kIntermediateRow, kEntryRight - kSpinnerWidth, kEntryRight);
    upDownIntermediate_ = AddUpDown("UpDown1", spinner, 1, kIntermediateSpinMaximum);
    AddEntry("txtUpDown1", EntryBox(kIntermediateRow, kColumnLeft, kEntryRight))->hide();
    // A second spinner pair the screen carries without a role of its own.
    AddUpDown("UpDown2", spinner, 0, 100)->hide();
    AddEntry("txtUpDown2", EntryBox(kIntermediateRow, kColumnLeft, kEntryRight))->hide();

    const float acceptTop = EntryTop(kIntermediateRow) + kEntryHeight + 300;
    const float acceptBottom = acceptTop + kAcceptHeight;
    AddButton("cmdDesign", "Accept", Box(kColumnLeft, acceptTop, kAdjustRight, acceptBottom))
        ->setDefault(true);
    phaseLabel_ = AddLabel(
        "lblPhase", "",
        Box(kColumnLeft, acceptBottom + 250, kColumnRight, acceptBottom + 250 + kPhaseHeight));
    phaseLabel_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void FrmDesign::AddAdjustButtons(const char* minusName, const char* plusName, int row) {
    AddButton(minusName, "-", EntryBox(row, kMinusLeft, kMinusLeft + kAdjustWidth))
        ->setToolTip("1 % down");
    AddButton(plusName, "+", EntryBox(row, kPlusLeft, kAdjustRight))->setToolTip("1 % up");
}

void FrmDesign::BuildGeneratorEntry() {
    // Centred on the text line, and no taller than the line spacing allows.
    const float top = kGeneratorEntryY - 30;
    const float bottom = top + kGeneratorEntryHeight;
    AddEntry("txtRinputMult", Box(kGeneratorEntryLeft, top, kGeneratorEntryRight, bottom));
    upDownGenerator_ = AddUpDown(
        "UpDown3", Box(kGeneratorEntryRight, top, kGeneratorEntryRight + kSpinnerWidth, bottom), 1,
        kGeneratorSpinMaximum);
    AddEntry("txtRinputMultEntry", Box(kGeneratorEntryLeft, top, kGeneratorEntryRight, bottom))
        ->hide();
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

void FrmDesign::ConnectEntries() {
    auto* accept = findChild<QPushButton*>("cmdDesign");
    for (const char* name :
         {"txtFrequency", "txtIntermediate", "txtNominalLoad", "txtPlate", "txtQ"}) {
        // User typing only: the logic rewrites these fields itself while validating.
        connect(Entry(name), &QLineEdit::textEdited, this, [this] { OnDesignEntryEdited(*this); });
    }
    for (const char* name : {"txtFrequency", "txtIntermediate", "txtNominalLoad", "txtPlate",
                             "txtQ", "txtRinputMult"}) {
        connect(Entry(name), &QLineEdit::returnPressed, accept, &QPushButton::click);
    }
    connect(Entry("txtRinputMult"), &QLineEdit::textEdited, this, [this] {
        if (OnGeneratorResistanceChanged(state_, *this, dialogs_, reporter_, *this))
            ShowDesignReadouts();
    });
    connect(Entry("txtUpDown1"), &QLineEdit::textEdited, this, [this] {
        OnIntermediateSpinTextChanged(state_, *this, dialogs_, reporter_, *this);
        ShowDesignReadouts();
    });
    connect(upDownIntermediate_, &UpDown::valueChanged, this, [this](int value) {
        SetFieldText("txtUpDown1", PlainText(static_cast<float>(value)));
        OnIntermediateSpinTextChanged(state_, *this, dialogs_, reporter_, *this);
        ShowDesignReadouts();
    });
    connect(upDownGenerator_, &UpDown::valueChanged, this, [this](int position) {
        OnGeneratorSpinChanged(state_, *this, dialogs_, reporter_, *this, position);
        ShowDesignReadouts();
    });
}

void FrmDesign::ConnectCommands() {
    const auto onClick = [this](const char* name, auto action) {
        connect(findChild<QPushButton*>(name), &QPushButton::clicked, this, action);
    };
    onClick("cmdDesign", [this] {
        AcceptDesign(state_, *this, dialogs_, reporter_, *this);
        ShowDesignReadouts();
    });
    const std::array<std::pair<const char*, Adjustment>, 4> adjusters = {
        {{"cmdQminus", Adjustment::QMinus},
         {"cmdQplus", Adjustment::QPlus},
         {"cmdIntermediateMinus", Adjustment::IntermediateMinus},
         {"cmdIntermediatePlus", Adjustment::IntermediatePlus}}};
    for (const auto& [name, which] : adjusters) {
        onClick(name, [this, which] {
            AdjustDesign(state_, *this, dialogs_, reporter_, *this, which);
            ShowDesignReadouts();
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
    PrepareToLeaveDesign(state_, dialogs_, reporter_);
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
    ShowDesignInputs(state_, *this);
    AcceptDesign(state_, *this, dialogs_, reporter_, *this);
    ShowDesignReadouts();
}

void FrmDesign::ShowDesignReadouts() {
    phaseLabel_->setText(PhaseText(state_));
    upDownIntermediate_->setValue(SpinPosition(state_.intermediateR, kIntermediateSpinMaximum));
    SetFieldText("txtUpDown1", PlainText(static_cast<float>(upDownIntermediate_->value())));
    upDownGenerator_->setValue(SpinPosition(
        static_cast<double>(state_.genMultiplier) * kGeneratorStepsPerUnit, kGeneratorSpinMaximum));
}

// ---- DesignForm ---------------------------------------------------------------------------

QLineEdit* FrmDesign::Entry(std::string_view control) const {
    return findChild<QLineEdit*>(QString::fromUtf8(control.data(), control.size()));
}

std::string FrmDesign::FieldText(std::string_view control) const {
    const QLineEdit* entry = Entry(control);
    return entry != nullptr ? entry->text().toStdString() : std::string();
}

void FrmDesign::SetFieldText(std::string_view control, std::string_view text) {
    if (QLineEdit* entry = Entry(control))
        entry->setText(QString::fromUtf8(text.data(), text.size()));
}

void FrmDesign::EnableButton(std::string_view control) {
    const QString name = QString::fromUtf8(control.data(), control.size());
    if (auto* button = findChild<QPushButton*>(name)) button->setEnabled(true);
}

// ---- DesignRedraw -------------------------------------------------------------------------

void FrmDesign::DrawSchematic() {
    // Every redraw repaints the whole picture, so the list starts afresh instead of growing.
    Surface& surface = background_->surface();
    surface.Clear();
    varo::DrawSchematic(surface, state_);
    background_->update();
}

void FrmDesign::ShowStresses() {
    Surface& surface = background_->surface();
    DrawComponentValues(surface, state_);
    const StressDisplay display = varo::ShowStresses(state_, reporter_);
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    for (const PlacedText& placed : display.texts) {
        surface.Text(static_cast<float>(placed.x), static_cast<float>(placed.y), placed.text);
    }
    background_->update();
}

void FrmDesign::DrawSmallPlot() {
    DesignResults results;
    results.gridFrequencies = BuildGridFrequencies(state_);
    results.harmonics = AnalyzeHarmonics(state_, reporter_);
    varo::DrawSmallPlot(background_->surface(), state_, results);
    background_->update();
}

}  // namespace varo
