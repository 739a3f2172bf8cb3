#include "tools/inductor/qt/frm_inductor.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <utility>

#include "platform/qt/replay.h"
#include "platform/qt/surface_widget.h"
#include "session/program_text.h"
#include "tools/inductor/coil_as_built.h"
#include "tools/inductor/coil_drawing.h"
#include "tools/inductor/winding_page.h"

namespace varo {

namespace {

// Rows of captions and entries or results, under the schematic on the left.
constexpr float kCaptionLeft = 150;
constexpr float kCaptionRight = 3100;
constexpr float kValueLeft = 3200;
constexpr float kValueRight = 5000;
constexpr float kNoteRight = 6900;
constexpr float kFirstRowTop = 3450;
constexpr float kRowStep = 400;
constexpr float kRowHeight = 320;

float RowTop(int row) {
    return kFirstRowTop + static_cast<float>(row) * kRowStep;
}
QRectF CaptionBox(int row) {
    return LogicalBox(kCaptionLeft, RowTop(row), kCaptionRight, RowTop(row) + kRowHeight);
}
QRectF ValueBox(int row) {
    return LogicalBox(kValueLeft, RowTop(row), kValueRight, RowTop(row) + kRowHeight);
}

// The coil as built, under the formula's figures: a heading, then two columns of three rows,
// the right one beside the drawings' column.
constexpr float kAsBuiltTop = 8450;
constexpr float kAsBuiltValueRight = 7100;
constexpr float kAsBuiltRightCaption = 7300;
constexpr float kAsBuiltRightValue = 9400;
constexpr float kAsBuiltRightEnd = 11900;
constexpr int kAsBuiltRowsPerColumn = 3;
constexpr float kButtonsTop = 10700;

float AsBuiltRowTop(int row) {
    return kAsBuiltTop + static_cast<float>(row + 1) * kRowStep;
}
std::pair<QRectF, QRectF> AsBuiltBoxes(int index) {
    const bool right = index >= kAsBuiltRowsPerColumn;
    const float top = AsBuiltRowTop(index % kAsBuiltRowsPerColumn);
    const float bottom = top + kRowHeight;
    if (right) {
        return {LogicalBox(kAsBuiltRightCaption, top, kAsBuiltRightValue - 100, bottom),
                LogicalBox(kAsBuiltRightValue, top, kAsBuiltRightEnd, bottom)};
    }
    return {LogicalBox(kCaptionLeft, top, kCaptionRight, bottom),
            LogicalBox(kValueLeft, top, kAsBuiltValueRight, bottom)};
}

// The labels that name the display unit, in the order of UnitCaptions.
constexpr std::array<const char*, 5> kUnitCaptionLabels = {"lblFormDiameter", "lblFormLength",
                                                           "Label6", "Label8", "Label14"};
// What a calculation fills in, shown only once there is something to show; the as-built values
// are those of kAsBuiltRows, beside their heading and note here.
constexpr std::array<const char*, 10> kResultLabels = {
    "Label7",        "Label9",         "Label11",  "Label15",    "Label17",
    "lblResistance", "lblQuarterWave", "lblShape", "lblAsBuilt", "lblAsBuiltNote"};

constexpr std::string_view kChooseInductor = "Choose the inductor to wind first: L1 or L2.";

enum OptionIndex { kInchesOption, kCentimetresOption, kL2Option, kL1Option };

}  // namespace

FrmInductor::FrmInductor(const DesignState& state, CoilState& coil, Dialogs& dialogs,
                         std::function<void()> returnToDesign, WoundHandler onWound,
                         QWidget* parent)
    : QWidget(parent),
      state_(state),
      coil_(coil),
      dialogs_(dialogs),
      returnToDesign_(std::move(returnToDesign)),
      onWound_(std::move(onWound)) {
    background_ =
        MountScreen(*this, "frmInductor", FromText(ScreenCaption("Inductor Design screen")),
                    kInductorScreenWidth, kInductorScreenHeight);
    AddStatusLine(*this);
    BuildControls();
    Connect();
    setMinimumSize(600, 565);
    FitToScreen(*this, QSize(1200, 1130));
    LoadScreen();
}

const Surface& FrmInductor::surface() const {
    return background_->surface();
}

// ---- Building the screen ------------------------------------------------------------------

QLabel* FrmInductor::AddLabel(const char* name, const QString& caption, const QRectF& at,
                              qreal pointSize) {
    QLabel* label = PlaceLabel(*background_, name, caption, at, pointSize);
    labels_[name] = label;
    return label;
}

QLineEdit* FrmInductor::AddEntry(CoilField field, const QRectF& at) {
    auto* entry = new QLineEdit(background_);
    entry->setObjectName(FromText(ControlName(field)));
    background_->Place(entry, at, 8.25);
    entries_[field] = entry;
    return entry;
}

QRadioButton* FrmInductor::AddOption(QWidget* frame, const char* name, const QString& caption) {
    auto* option = new QRadioButton(caption, frame);
    option->setObjectName(name);
    frame->layout()->addWidget(option);
    return option;
}

void FrmInductor::BuildControls() {
    PlaceHeading(*background_, "VARO - Inductor Design", LogicalBox(150, 100, 6500, 600));
    BuildChoices();
    AddLabel("Label1", "Enter two and only two of these; third will be computed",
             LogicalBox(kCaptionLeft, 3050, kNoteRight, 3370));
    BuildRows();
    BuildAsBuiltRows();
    BuildButtons();
}

void FrmInductor::BuildChoices() {
    const auto addFrame = [this](const char* name, const QString& caption, const QRectF& at) {
        auto* frame = new QGroupBox(caption, background_);
        frame->setObjectName(name);
        // Tight margins: at the smallest window the two choices still fit their frame.
        auto* rows = new QVBoxLayout(frame);
        rows->setContentsMargins(6, 0, 6, 0);
        rows->setSpacing(0);
        background_->Place(frame, at, 8.25);
        return frame;
    };
    QGroupBox* units = addFrame("Frame1", "Units", LogicalBox(150, 800, 2700, 1750));
    options_[kInchesOption] = AddOption(units, "Option1", "Inches");
    options_[kCentimetresOption] = AddOption(units, "Option2", "Centimetres");
    QGroupBox* inductor = addFrame("Frame2", "Inductor", LogicalBox(150, 1900, 2700, 2850));
    options_[kL1Option] = AddOption(inductor, "Option4", "L1 (pi section)");
    options_[kL2Option] = AddOption(inductor, "Option3", "L2 (L section)");
}

void FrmInductor::BuildRows() {
    struct EntryRow {
        const char* label;
        const char* caption;
        CoilField entry;
    };
    const std::array<EntryRow, 4> entryRows{
        {{"lblFormDiameter", "Diameter:", CoilField::Diameter},
         {"lblFormLength", "Length:", CoilField::Length},
         {"Label4", "Turns:", CoilField::Turns},
         {"lblActualGauge", "Actual gauge:", CoilField::Gauge}}};
    int row = 0;
    for (const EntryRow& entryRow : entryRows) {
        QLabel* caption = AddLabel(entryRow.label, entryRow.caption, CaptionBox(row));
        caption->setBuddy(AddEntry(entryRow.entry, ValueBox(row)));
        ++row;
    }
    struct ResultRow {
        const char* caption;
        const char* captionText;
        const char* value;
    };
    const std::array<ResultRow, 7> resultRows{
        {{"Label6", "Turns per:", "Label7"},
         {"Label8", "Wire length:", "Label9"},
         {"Label10", "Critical gauge:", "Label11"},
         {"Label14", "Wire diameter:", "Label15"},
         {"Label16", "Percent fill:", "Label17"},
         {"lblResistanceCaption", "DC resistance (ohms): ", "lblResistance"},
         {"lblQuarterWaveCaption", "Quarter-wave frequency: ", "lblQuarterWave"}}};
    for (const ResultRow& resultRow : resultRows) {
        AddLabel(resultRow.caption, resultRow.captionText, CaptionBox(row));
        AddLabel(resultRow.value, "", ValueBox(row))->setAutoFillBackground(true);
        ++row;
    }
    QLabel* shape = AddLabel(
        "lblShape", "",
        LogicalBox(kCaptionLeft, RowTop(row), kNoteRight, RowTop(row) + 1.5f * kRowHeight));
    shape->setWordWrap(true);
}

void FrmInductor::BuildAsBuiltRows() {
    AddLabel("lblAsBuilt", "",
             LogicalBox(kCaptionLeft, kAsBuiltTop, kNoteRight, kAsBuiltTop + kRowHeight));
    int index = 0;
    for (const AsBuiltRow& row : kAsBuiltRows) {
        const auto [captionBox, valueBox] = AsBuiltBoxes(index++);
        AddLabel(row.captionLabel, row.caption, captionBox);
        QLabel* value = AddLabel(row.valueLabel, "", valueBox);
        value->setAutoFillBackground(true);
    }
    const float noteTop = AsBuiltRowTop(kAsBuiltRowsPerColumn);
    QLabel* note =
        AddLabel("lblAsBuiltNote", "",
                 LogicalBox(kCaptionLeft, noteTop, kAsBuiltRightEnd, noteTop + 1.5f * kRowHeight));
    note->setWordWrap(true);
}

void FrmInductor::BuildButtons() {
    const auto addButton = [this](const char* name, const char* caption, float left) {
        return PlaceButton(*background_, name, caption,
                           LogicalBox(left, kButtonsTop, left + 2000, kButtonsTop + 400));
    };
    addButton("cmdCompute", "Compute", 150);
    addButton("cmdPrint", "Print", 2350);
    addButton("cmdExit", "Return", 4550);
    // Tab follows the screen: the two choices, the entries top to bottom, the buttons.
    QWidget* previous = nullptr;
    for (QWidget* next : std::initializer_list<QWidget*>{
             options_[kInchesOption], options_[kL1Option], entries_.at(CoilField::Diameter),
             entries_.at(CoilField::Length), entries_.at(CoilField::Turns),
             entries_.at(CoilField::Gauge), findChild<QWidget*>("cmdCompute"),
             findChild<QWidget*>("cmdPrint"), findChild<QWidget*>("cmdExit")}) {
        if (previous != nullptr) QWidget::setTabOrder(previous, next);
        previous = next;
    }
}

void FrmInductor::Connect() {
    auto* compute = findChild<QPushButton*>("cmdCompute");
    for (const auto& [field, entry] : entries_) {
        // Every change, typed or shown by the calculation, is read back into its field.
        connect(entry, &QLineEdit::textChanged, this, [this, field = field](const QString& text) {
            OnWindingEntryChanged(coil_, field, text.toStdString());
        });
        connect(entry, &QLineEdit::returnPressed, compute, &QPushButton::click);
    }
    const std::array<std::pair<OptionIndex, std::function<void()>>, 4> choices{
        {{kInchesOption, [this] { ChooseUnit(kInches); }},
         {kCentimetresOption, [this] { ChooseUnit(kCentimetres); }},
         {kL1Option, [this] { ChooseInductor(1); }},
         {kL2Option, [this] { ChooseInductor(2); }}}};
    for (const auto& [index, choose] : choices) {
        OnOptionChosen(*options_[index], *this, [this, choose = choose] { actions_.Run(choose); });
    }
    connect(compute, &QPushButton::clicked, this, [this] { actions_.Run([this] { Compute(); }); });
    connect(findChild<QPushButton*>("cmdPrint"), &QPushButton::clicked, this,
            [this] { actions_.Run([this] { PrintWindingData(windings_, dialogs_); }); });
    new ReturnOnEscape(*this, *findChild<QPushButton*>("cmdExit"));
    connect(findChild<QPushButton*>("cmdExit"), &QPushButton::clicked, this,
            [this] { actions_.Run(returnToDesign_); });
}

// ---- The screen's operations --------------------------------------------------------------

bool FrmInductor::DesignHasLSection() const {
    return state_.intermediateR != state_.loadR;
}

void FrmInductor::LoadScreen() {
    options_[coil_.unitSystem == kCentimetres ? kCentimetresOption : kInchesOption]->setChecked(
        true);
    ShowUnitCaptions();
    coil_.unitsLocked = false;
    coil_.inductorChoice = 0;
    EmptyResults();
    labels_.at("lblActualGauge")->setVisible(false);
    entries_.at(CoilField::Gauge)->setVisible(false);
    if (!DesignHasLSection()) {
        options_[kL2Option]->setEnabled(false);
        options_[kL1Option]->setChecked(true);
        ClearCoil(coil_);
        coil_.inductorChoice = 1;
        // The only inductor there is: it is the one wound from the start.
        coil_.targetInductance = state_.L1;
    }
    findChild<QPushButton*>("cmdPrint")->setEnabled(false);
    Redraw();
}

void FrmInductor::ChooseUnit(std::int16_t unitSystem) {
    coil_.unitSystem = unitSystem;
    ShowUnitCaptions();
    pictured_.reset();
    Redraw();
}

void FrmInductor::ChooseInductor(std::int16_t choice) {
    coil_.inductorChoice = choice;
    for (QLineEdit* entry : {entries_.at(CoilField::Diameter), entries_.at(CoilField::Length),
                             entries_.at(CoilField::Turns), entries_.at(CoilField::Gauge)})
        entry->clear();
    ClearCoil(coil_);
    EmptyResults();
    coil_.targetInductance = choice == 1 ? state_.L1 : state_.L2;
    pictured_.reset();
    Redraw();
}

void FrmInductor::Compute() {
    if (coil_.inductorChoice == 0) {
        dialogs_.ShowMessage(kChooseInductor);
        return;
    }
    const bool computed = ComputeCoil(coil_, *this, dialogs_);
    options_[kInchesOption]->setEnabled(!coil_.unitsLocked);
    options_[kCentimetresOption]->setEnabled(!coil_.unitsLocked);
    if (!computed) return;
    ShowResults();
    // Taken after the results are shown: the turns are read back from their entry.
    pictured_ = coil_;
    windings_[coil_.inductorChoice - 1] = coil_;
    if (onWound_) onWound_(coil_.inductorChoice, coil_);
    findChild<QPushButton*>("cmdPrint")->setEnabled(PrintAllowed(windings_, DesignHasLSection()));
    Redraw();
}

void FrmInductor::ShowUnitCaptions() {
    const std::array<std::string, 5> captions = UnitCaptions(coil_.unitSystem);
    for (std::size_t i = 0; i < captions.size(); ++i)
        labels_.at(kUnitCaptionLabels[i])->setText(FromText(captions[i]));
}

void FrmInductor::ShowResults() {
    const CoilResultTexts texts = ResultTexts(coil_);
    entries_.at(CoilField::Turns)->setText(FromText(texts.turns));
    const std::array<std::pair<const char*, const std::string*>, 8> shown{
        {{"Label7", &texts.turnsPerUnit},
         {"Label9", &texts.wireLength},
         {"Label11", &texts.criticalGauge},
         {"Label15", &texts.wireDiameter},
         {"Label17", &texts.percentFill},
         {"lblResistance", &texts.resistance},
         {"lblQuarterWave", &texts.quarterWave},
         {"lblShape", &texts.shapeNote}}};
    for (const auto& [name, text] : shown) {
        labels_.at(name)->setText(FromText(*text));
        labels_.at(name)->setVisible(true);
    }
    QPalette fill = labels_.at("Label17")->palette();
    fill.setColor(QPalette::Window,
                  ToQColor(coil_.fillMarkedRed ? kFillWarningColour : kFillNormalColour));
    labels_.at("Label17")->setPalette(fill);
    labels_.at("lblActualGauge")->setVisible(true);
    entries_.at(CoilField::Gauge)->setVisible(true);
    ShowAsBuilt();
}

void FrmInductor::ShowAsBuilt() {
    const AsBuiltTexts texts = AsBuiltTextsOf(coil_, state_.frequency);
    const auto show = [this](const char* name, const std::string& text) {
        labels_.at(name)->setText(FromText(text));
        labels_.at(name)->setVisible(true);
    };
    show("lblAsBuilt", texts.heading);
    for (const AsBuiltRow& row : kAsBuiltRows)
        show(row.valueLabel, texts.*row.text);
    show("lblAsBuiltNote", texts.note);
}

void FrmInductor::EmptyResults() {
    const auto empty = [this](const char* name) {
        labels_.at(name)->clear();
        labels_.at(name)->setVisible(false);
    };
    for (const char* name : kResultLabels)
        empty(name);
    for (const AsBuiltRow& row : kAsBuiltRows)
        empty(row.valueLabel);
}

void FrmInductor::Redraw() {
    DrawInductorScreen(background_->surface(), state_, pictured_ ? &*pictured_ : nullptr);
    background_->update();
}

// ---- CoilForm -----------------------------------------------------------------------------

std::string FrmInductor::Text(CoilField field) const {
    if (const auto entry = entries_.find(field); entry != entries_.end())
        return entry->second->text().toStdString();
    return labels_.at(std::string(ControlName(field)))->text().toStdString();
}

void FrmInductor::SetText(CoilField field, std::string_view text) {
    if (const auto entry = entries_.find(field); entry != entries_.end())
        entry->second->setText(FromText(text));
    else
        labels_.at(std::string(ControlName(field)))->setText(FromText(text));
}

void FrmInductor::FocusGaugeEntry() {
    entries_.at(CoilField::Gauge)->setVisible(true);
    entries_.at(CoilField::Gauge)->setFocus();
}

}  // namespace varo
