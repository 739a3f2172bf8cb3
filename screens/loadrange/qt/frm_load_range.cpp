#include "screens/loadrange/qt/frm_load_range.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTableWidget>
#include <algorithm>
#include <variant>

#include "model/fixed_text.h"
#include "model/pictures/smith_chart.h"
#include "platform/qt/screen_helpers.h"
#include "platform/qt/surface_widget.h"
#include "platform/textfile.h"
#include "screens/loadrange/load_range_text.h"
#include "session/program_text.h"

namespace varo {

namespace {

constexpr float kScreenWidth = 12000;
constexpr float kScreenHeight = 8600;
// The left column is narrower than the band plan's, so that the ten columns of the table fit.
constexpr float kCaptionLeft = 150, kCaptionRight = 1350;
constexpr float kEntryLeft = 1400, kEntryRight = 3300;
constexpr float kFirstRow = 650, kRowStep = 380, kRowHeight = 320;
constexpr float kRightLeft = 3500, kRightRight = 11850;
constexpr float kSmithTop = 3350, kSmithBottom = 7900;

constexpr const char* kSettingsGroup = "loadRange";
constexpr const char* kMessageTitle = "Load range";
constexpr const char* kAntennaFilter = "Touchstone one-port (*.s1p *.S1P)";

float RowTop(int row) {
    return kFirstRow + kRowStep * static_cast<float>(row);
}

QRectF CaptionBox(int row) {
    return LogicalBox(kCaptionLeft, RowTop(row), kCaptionRight, RowTop(row) + kRowHeight);
}

QRectF EntryBox(int row) {
    return LogicalBox(kEntryLeft, RowTop(row), kEntryRight, RowTop(row) + kRowHeight);
}

std::string Remembered(const QSettings& settings, const char* key, const std::string& fallback) {
    return settings.value(key, QString::fromStdString(fallback)).toString().toStdString();
}

LoadRangeFormText RememberedForm() {
    QSettings settings(kSettingsOwner, kSettingsProgram);
    settings.beginGroup(kSettingsGroup);
    LoadRangeFormText form;
    const int lastKind = static_cast<int>(kLoadKindNames.size()) - 1;
    form.kind = static_cast<LoadKindChoice>(
        std::clamp(settings.value("kind", static_cast<int>(form.kind)).toInt(), 0, lastKind));
    form.swr = Remembered(settings, "swr", form.swr);
    form.phases = Remembered(settings, "phases", form.phases);
    form.load = Remembered(settings, "load", form.load);
    return form;
}

void RememberForm(const LoadRangeFormText& form, const std::string& antennaFile) {
    QSettings settings(kSettingsOwner, kSettingsProgram);
    settings.beginGroup(kSettingsGroup);
    settings.setValue("kind", static_cast<int>(form.kind));
    settings.setValue("swr", QString::fromStdString(form.swr));
    settings.setValue("phases", QString::fromStdString(form.phases));
    settings.setValue("load", QString::fromStdString(form.load));
    settings.setValue("antennaFile", QString::fromStdString(antennaFile));
}

std::string RememberedAntennaFile() {
    QSettings settings(kSettingsOwner, kSettingsProgram);
    settings.beginGroup(kSettingsGroup);
    return settings.value("antennaFile").toString().toStdString();
}

// `where` is the file's path and the reason, or the line at fault and what is wrong there.
std::string AntennaFileFailure(const std::string& where) {
    std::string text("We could not read the antenna file ");
    text += where;
    text += "\nThe load as it was is kept.";
    return text;
}

}  // namespace

FrmLoadRange::FrmLoadRange(Design& design, Dialogs& dialogs, std::function<void()> returnToDesign,
                           QWidget* parent)
    : QWidget(parent),
      design_(design),
      dialogs_(dialogs),
      returnToDesign_(std::move(returnToDesign)) {
    background_ = MountScreen(*this, "frmLoadRange", FromText(ScreenCaption("Load Range screen")),
                              kScreenWidth, kScreenHeight);
    AddStatusLine(*this);
    PlaceHeading(*background_, "VARO Load Range", LogicalBox(150, 100, kEntryRight, 520), "Arial");
    BuildEntries();
    BuildResults();
    BuildButtons();
    setMinimumSize(700, 500);
    FitToScreen(*this, QSize(1200, 860));
    if (const std::string path = RememberedAntennaFile(); !path.empty())
        ReadAntennaFile(path, false);
    ShowAntennaFile();
    ShowForm(RememberedForm());
    Rework(false);
}

const Surface& FrmLoadRange::smithSurface() const {
    return smith_->surface();
}

// ---- Building the screen ----------------------------------------------------------------------

// The items go in before the box is connected: adding the first one chooses it.
QComboBox* FrmLoadRange::AddChoice(int row, const char* name, const char* caption,
                                   const QStringList& items) {
    auto* box = PlaceCaptioned<QComboBox>(*background_, (std::string("lbl") + (name + 3)).c_str(),
                                          name, caption, CaptionBox(row), EntryBox(row));
    box->addItems(items);
    connect(box, &QComboBox::currentIndexChanged, this, [this] { Rework(false); });
    return box;
}

QLineEdit* FrmLoadRange::AddEntry(int row, const char* name, const char* caption) {
    auto* entry = PlaceCaptioned<QLineEdit>(*background_, (std::string("lbl") + (name + 3)).c_str(),
                                            name, caption, CaptionBox(row), EntryBox(row));
    connect(entry, &QLineEdit::textEdited, this, [this] { Rework(false); });
    return entry;
}

void FrmLoadRange::BuildEntries() {
    kind_ = AddChoice(0, "cboKind", "Re-tune for:", ColumnHeaders(kLoadKindNames));
    swr_ = AddChoice(1, "cboSwr", "SWR circle:", ColumnHeaders(kSwrChoices));
    phases_ = AddEntry(2, "txtPhases", "Phases:");
    load_ = AddEntry(3, "txtLoadZ", "Load, ohms:");
    auto* open = PlaceButton(*background_, "cmdOpenLoad", "&Open antenna file...",
                             LogicalBox(kCaptionLeft, RowTop(4), kEntryRight, RowTop(4) + 360));
    connect(open, &QPushButton::clicked, this,
            [this] { actions_.Run([this] { OpenAntennaFile(); }); });
    loadFile_ = PlaceLabel(*background_, "lblLoadFile", "",
                           LogicalBox(kCaptionLeft, RowTop(5) + 40, kEntryRight, kSmithTop - 60));
    loadFile_->setWordWrap(true);
    loadFile_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void FrmLoadRange::BuildResults() {
    const ChartBox box{0, 0, kEntryRight - kCaptionLeft, kSmithBottom - kSmithTop};
    smith_ = new SurfaceWidget(box.right, box.bottom, background_);
    smith_->setObjectName("picSmith");
    smith_->setAccessibleName("Smith chart of the loads");
    smith_->SetFit(SurfaceFit::KeepAspect);
    background_->Place(smith_, LogicalBox(kCaptionLeft, kSmithTop, kEntryRight, kSmithBottom));
    loads_ = PlaceTable(*background_, "tblLoads", "Loads re-tuned", ColumnHeaders(kLoadColumns),
                        LogicalBox(kRightLeft, 200, kRightRight, 5500), true);
    worst_ = PlaceNotes(*background_, "txtWorst", "Worst cases and cover",
                        LogicalBox(kRightLeft, 5600, kRightRight, 7900));
}

void FrmLoadRange::BuildButtons() {
    const float top = 8050, bottom = 8450;
    auto* workOut = PlaceButton(*background_, "cmdWorkOut", "&Work out",
                                LogicalBox(kEntryRight - 1250, top, kEntryRight, bottom));
    workOut->setDefault(true);
    PlaceReturnButton(*this, *background_, actions_, returnToDesign_, top, bottom);
    connect(workOut, &QPushButton::clicked, this,
            [this] { actions_.Run([this] { Rework(true); }); });
    for (QLineEdit* entry : {phases_, load_})
        connect(entry, &QLineEdit::returnPressed, workOut, &QPushButton::click);
}

// ---- The form, the antenna file and the range ------------------------------------------------

void FrmLoadRange::ShowForm(const LoadRangeFormText& form) {
    const QScopedValueRollback<bool> filling(showing_, true);
    kind_->setCurrentIndex(static_cast<int>(form.kind));
    // A remembered SWR the choices do not offer falls back to the default.
    const int swr = swr_->findText(QString::fromStdString(form.swr));
    swr_->setCurrentIndex(swr >= 0 ? swr : swr_->findText(kDefaultSwrChoice));
    phases_->setText(QString::fromStdString(form.phases));
    load_->setText(QString::fromStdString(form.load));
}

LoadRangeFormText FrmLoadRange::FormText() const {
    LoadRangeFormText form;
    form.kind = static_cast<LoadKindChoice>(std::max(kind_->currentIndex(), 0));
    form.swr = swr_->currentText().toStdString();
    form.phases = phases_->text().toStdString();
    form.load = load_->text().toStdString();
    return form;
}

void FrmLoadRange::OpenAntennaFile() {
    const auto path = dialogs_.AskOpenFileName({"Open antenna file", kAntennaFilter});
    if (!path || !ReadAntennaFile(*path, true)) return;
    {
        const QScopedValueRollback<bool> filling(showing_, true);
        kind_->setCurrentIndex(static_cast<int>(LoadKindChoice::Measured));
    }
    Rework(false);
}

bool FrmLoadRange::ReadAntennaFile(const std::string& path, bool report) {
    std::string failure;
    try {
        measured_ = ReadOnePortTouchstone(path).points;
        measuredPath_ = path;
        ShowAntennaFile();
        return true;
    } catch (const FileError& error) {  // what() is the path and the reason
        failure = AntennaFileFailure(error.what());
    } catch (const LoadFileError& error) {
        failure = AntennaFileFailure(path + ": " + error.what());
    }
    if (report) dialogs_.ShowMessage(failure, kMessageTitle, MessageIcon::Exclamation);
    ShowAntennaFile();
    return false;
}

void FrmLoadRange::ShowAntennaFile() {
    if (measuredPath_.empty() || measured_.empty()) {
        loadFile_->setText("No antenna file is open.");
        loadFile_->setToolTip({});
        return;
    }
    const QString path = QString::fromStdString(measuredPath_);
    std::string points = std::to_string(measured_.size());
    points += measured_.size() == 1 ? " point, " : " points, ";
    points += FixedText(measured_.front().frequency / 1e6, 3);
    points += " to ";
    points += FixedText(measured_.back().frequency / 1e6, 3);
    points += " MHz";
    loadFile_->setText(QFileInfo(path).fileName() + ": " + QString::fromStdString(points));
    loadFile_->setToolTip(path);
}

void FrmLoadRange::Rework(bool report) {
    if (showing_) return;
    const LoadRangeFormText form = FormText();
    const bool circle = form.kind == LoadKindChoice::SwrCircle;
    swr_->setEnabled(circle);
    phases_->setEnabled(circle);
    load_->setEnabled(form.kind == LoadKindChoice::OneLoad);
    RememberForm(form, measuredPath_);
    const auto read = ReadLoadRangeForm(form, measured_, design_.state());
    std::string problems;
    if (const auto* named = std::get_if<std::vector<std::string>>(&read)) {
        design_.SetLoadRange(std::nullopt);
        for (const std::string& problem : *named)
            problems += problem + "\n";
        if (report) dialogs_.ShowMessage(problems, kMessageTitle, MessageIcon::Exclamation);
    } else {
        design_.SetLoadRange(std::get<LoadRangeRequest>(read));
    }
    ShowRange(problems);
}

void FrmLoadRange::ShowRange(const std::string& problems) {
    Surface& surface = smith_->surface();
    surface.Clear();
    loads_->clearSpans();
    loads_->setRowCount(0);
    const auto& result = design_.results().loadRange;
    if (result) {
        DrawSmithChart(surface, ChartBox{0, 0, surface.width(), surface.height()}, *result,
                       design_.state().loadR);
        FillTable(*result);
    }
    worst_->setPlainText(QString::fromStdString(result ? LoadRangeSummary(*result) : problems));
    smith_->update();
}

void FrmLoadRange::FillTable(const LoadRangeResult& result) {
    loads_->horizontalHeaderItem(0)->setText(QString::fromStdString(FirstColumnHeading(result)));
    const std::vector<LoadRowText> rows = LoadRows(result);
    loads_->setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        const LoadRowText& text = rows[row];
        for (int column = 0; column < static_cast<int>(text.cells.size()); ++column)
            loads_->setItem(row, column,
                            new QTableWidgetItem(QString::fromStdString(text.cells[column])));
        if (!text.matched)
            loads_->setSpan(row, kProblemColumn, 1,
                            static_cast<int>(kLoadColumns.size()) - kProblemColumn);
    }
}

}  // namespace varo
