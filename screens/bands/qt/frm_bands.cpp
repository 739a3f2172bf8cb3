#include "screens/bands/qt/frm_bands.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <charconv>
#include <variant>

#include "model/pictures/band_chart.h"
#include "platform/qt/screen_helpers.h"
#include "platform/qt/surface_widget.h"
#include "session/program_text.h"

namespace varo {

namespace {

constexpr float kScreenWidth = 12000;
constexpr float kScreenHeight = 8600;
constexpr float kCaptionLeft = 150, kCaptionRight = 2950;
constexpr float kEntryLeft = 3000, kEntryRight = 3900;
constexpr float kFirstRow = 650, kRowStep = 380, kRowHeight = 320;
constexpr float kRightLeft = 4150, kRightRight = 11850;
constexpr ChartBox kChartBox{kRightLeft, 200, kRightRight, 4300};

struct EntryRow {
    const char* name;
    const char* caption;
    std::string BandFormText::*text;
};
constexpr std::array<EntryRow, 6> kEntryRows{{
    {"txtTubeC", "Tube output capacitance, pF:", &BandFormText::tubeCapacitance},
    {"txtStrayC", "Stray capacitance, pF:", &BandFormText::strayCapacitance},
    {"txtTuneMin", "Tuning capacitor min, pF:", &BandFormText::tuneMin},
    {"txtTuneMax", "Tuning capacitor max, pF:", &BandFormText::tuneMax},
    {"txtLoadMin", "Loading capacitor min, pF:", &BandFormText::loadMin},
    {"txtLoadMax", "Loading capacitor max, pF:", &BandFormText::loadMax},
}};

// Short headers, so the columns fit the screen's narrow table; the padders are in pF.
const std::array<const char*, 6> kBandColumns{"Use",      "Band",     "Low MHz",
                                              "High MHz", "Tune pad", "Load pad"};
const std::array<const char*, 8> kResultColumns{
    "Band", "Q", "L1, uH", "L2, uH", "Tuning, pF", "Loading, pF", "Worst harmonic", "Efficiency"};

float RowTop(int row) {
    return kFirstRow + kRowStep * static_cast<float>(row);
}

QString Fixed(double value, int decimals) {
    return QString::number(value, 'f', decimals);
}

QString Range(double a, double b) {
    return Fixed(std::min(a, b) / 1e-12, 1) + " - " + Fixed(std::max(a, b) / 1e-12, 1);
}

// ---- Keeping the entries between runs --------------------------------------------------------

BandFormText RememberedForm() {
    QSettings settings(kSettingsOwner, kSettingsProgram);
    settings.beginGroup("bandPlan");
    BandFormText form;
    for (const EntryRow& row : kEntryRows)
        form.*row.text = settings.value(row.name, QString::fromStdString(form.*row.text))
                             .toString()
                             .toStdString();
    form.conduction = static_cast<ConductionChoice>(
        std::clamp(settings.value("conduction", static_cast<int>(form.conduction)).toInt(), 0, 4));
    form.conductionDegrees =
        settings.value("conductionDegrees", QString::fromStdString(form.conductionDegrees))
            .toString()
            .toStdString();
    form.limit = static_cast<LimitChoice>(
        std::clamp(settings.value("limit", static_cast<int>(form.limit)).toInt(), 0, 2));
    form.limitDb =
        settings.value("limitDb", QString::fromStdString(form.limitDb)).toString().toStdString();
    const QStringList rows = settings.value("bands").toStringList();
    for (const QString& row : rows) {
        const QStringList cells = row.split(QLatin1Char('|'));
        if (cells.size() != 6) continue;
        form.bands.push_back({cells[0] == "1", cells[1].toStdString(), cells[2].toStdString(),
                              cells[3].toStdString(), cells[4].toStdString(),
                              cells[5].toStdString()});
    }
    if (form.bands.empty()) form.bands = DefaultBandRows();
    return form;
}

void RememberForm(const BandFormText& form) {
    QSettings settings(kSettingsOwner, kSettingsProgram);
    settings.beginGroup("bandPlan");
    for (const EntryRow& row : kEntryRows)
        settings.setValue(row.name, QString::fromStdString(form.*row.text));
    settings.setValue("conduction", static_cast<int>(form.conduction));
    settings.setValue("conductionDegrees", QString::fromStdString(form.conductionDegrees));
    settings.setValue("limit", static_cast<int>(form.limit));
    settings.setValue("limitDb", QString::fromStdString(form.limitDb));
    QStringList rows;
    for (const BandRowText& band : form.bands) {
        QString name = QString::fromStdString(band.name);
        name.remove(QLatin1Char('|'));
        rows.push_back(QStringList{band.used ? "1" : "0", name, QString::fromStdString(band.low),
                                   QString::fromStdString(band.high),
                                   QString::fromStdString(band.tunePadder),
                                   QString::fromStdString(band.loadPadder)}
                           .join(QLatin1Char('|')));
    }
    settings.setValue("bands", rows);
}

QString WorstHarmonic(const BandResult& band) {
    if (band.harmonics.empty()) return {};
    const auto worst = std::min_element(band.harmonics.begin(), band.harmonics.end(),
                                        [](const HarmonicEstimate& a, const HarmonicEstimate& b) {
                                            return a.marginDb < b.marginDb;
                                        });
    return QString::number(worst->n) + ": " + Fixed(worst->outputDbc, 1) + " dBc (" +
           Fixed(worst->marginDb, 1) + " dB)";
}

}  // namespace

FrmBands::FrmBands(Design& design, Dialogs& dialogs, std::function<void()> returnToDesign,
                   QWidget* parent)
    : QWidget(parent),
      design_(design),
      dialogs_(dialogs),
      returnToDesign_(std::move(returnToDesign)) {
    background_ = MountScreen(*this, "frmBands", FromText(ScreenCaption("Band Plan screen")),
                              kScreenWidth, kScreenHeight);
    AddStatusLine(*this);
    PlaceHeading(*background_, "VARO Band Plan", LogicalBox(150, 100, 3900, 520), "Arial");
    BuildEntries();
    BuildBandTable();
    BuildResults();
    BuildButtons();
    setMinimumSize(700, 500);
    FitToScreen(*this, QSize(1200, 860));
    ShowForm(RememberedForm());
    Replan(false);
}

const Surface& FrmBands::surface() const {
    return background_->surface();
}

// ---- Building the screen ----------------------------------------------------------------------

void FrmBands::BuildEntries() {
    int row = 0;
    for (const EntryRow& entryRow : kEntryRows) {
        auto* entry = PlaceCaptioned<QLineEdit>(
            *background_, (std::string("lbl") + (entryRow.name + 3)).c_str(), entryRow.name,
            entryRow.caption,
            LogicalBox(kCaptionLeft, RowTop(row), kCaptionRight, RowTop(row) + kRowHeight),
            LogicalBox(kEntryLeft, RowTop(row), kEntryRight, RowTop(row) + kRowHeight));
        entries_[entryRow.name] = entry;
        connect(entry, &QLineEdit::textEdited, this, [this] { Replan(false); });
        ++row;
    }
    const auto addChoice = [&](const char* name, const char* caption, const QStringList& items) {
        auto* box = PlaceCaptioned<QComboBox>(
            *background_, name, QString(name).replace("lbl", "cbo").toLatin1().constData(), caption,
            LogicalBox(kCaptionLeft, RowTop(row), 1500, RowTop(row) + kRowHeight),
            LogicalBox(1550, RowTop(row), 2950, RowTop(row) + kRowHeight));
        box->addItems(items);
        return box;
    };
    conduction_ =
        addChoice("lblConduction",
                  "Class:", {"A, 360 deg", "AB, 240 deg", "B, 180 deg", "C, 150 deg", "Other"});
    auto* degrees = new QLineEdit(background_);
    degrees->setObjectName("txtConduction");
    degrees->setAccessibleName("Conduction angle, degrees");
    background_->Place(degrees,
                       LogicalBox(3000, RowTop(row), kEntryRight, RowTop(row) + kRowHeight), 8.25);
    entries_["txtConduction"] = degrees;
    ++row;
    limit_ = addChoice("lblLimit", "Limit:", {"-43 dBc", "43 + 10 log P, 50 at most", "Typed, dB"});
    auto* limitDb = new QLineEdit(background_);
    limitDb->setObjectName("txtLimit");
    limitDb->setAccessibleName("Harmonic limit, dB below the carrier");
    background_->Place(limitDb,
                       LogicalBox(3000, RowTop(row), kEntryRight, RowTop(row) + kRowHeight), 8.25);
    entries_["txtLimit"] = limitDb;
    for (QLineEdit* entry : {degrees, limitDb})
        connect(entry, &QLineEdit::textEdited, this, [this] { Replan(false); });
    for (QComboBox* box : {conduction_, limit_})
        connect(box, &QComboBox::currentIndexChanged, this, [this] { Replan(false); });
}

void FrmBands::BuildBandTable() {
    bands_ = PlaceTable(*background_, "tblBands", "Bands", ColumnHeaders(kBandColumns),
                        LogicalBox(kCaptionLeft, RowTop(8) + 100, kEntryRight, 7900), false);
    connect(bands_, &QTableWidget::cellChanged, this, [this] { Replan(false); });
}

void FrmBands::BuildResults() {
    results_ = PlaceTable(*background_, "tblResults", "Plan by band", ColumnHeaders(kResultColumns),
                          LogicalBox(kRightLeft, 4400, kRightRight, 6900), true);
    notes_ = PlaceNotes(*background_, "txtNotes", "Notes and shortfalls",
                        LogicalBox(kRightLeft, 7000, kRightRight, 7900));
}

void FrmBands::BuildButtons() {
    const float top = 8050, bottom = 8450;
    auto* add =
        PlaceButton(*background_, "cmdAddBand", "&Add band", LogicalBox(150, top, 1400, bottom));
    auto* remove = PlaceButton(*background_, "cmdRemoveBand", "Re&move band",
                               LogicalBox(1450, top, 2700, bottom));
    auto* plan = PlaceButton(*background_, "cmdPlan", "&Plan", LogicalBox(2750, top, 3900, bottom));
    plan->setDefault(true);
    PlaceReturnButton(*this, *background_, actions_, returnToDesign_, top, bottom);
    connect(add, &QPushButton::clicked, this, [this] {
        actions_.Run([this] {
            AddBandRow({true, "new", "50", "54", "0", "0"});
            Replan(false);
        });
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        actions_.Run([this] {
            const int row = bands_->currentRow();
            if (row < 0) return;
            bands_->removeRow(row);
            Replan(false);
        });
    });
    connect(plan, &QPushButton::clicked, this, [this] { actions_.Run([this] { Replan(true); }); });
    for (const auto& [name, entry] : entries_)
        connect(entry, &QLineEdit::returnPressed, plan, &QPushButton::click);
}

// ---- The form and the plan ----------------------------------------------------------------------

void FrmBands::AddBandRow(const BandRowText& band) {
    const QScopedValueRollback<bool> filling(showing_, true);
    const int row = bands_->rowCount();
    bands_->insertRow(row);
    auto* used = new QTableWidgetItem;
    used->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    used->setCheckState(band.used ? Qt::Checked : Qt::Unchecked);
    bands_->setItem(row, 0, used);
    int column = 1;
    for (const std::string* text :
         {&band.name, &band.low, &band.high, &band.tunePadder, &band.loadPadder})
        bands_->setItem(row, column++, new QTableWidgetItem(QString::fromStdString(*text)));
}

void FrmBands::ShowForm(const BandFormText& form) {
    const QScopedValueRollback<bool> filling(showing_, true);
    for (const EntryRow& row : kEntryRows)
        entries_[row.name]->setText(QString::fromStdString(form.*row.text));
    conduction_->setCurrentIndex(static_cast<int>(form.conduction));
    entries_["txtConduction"]->setText(QString::fromStdString(form.conductionDegrees));
    limit_->setCurrentIndex(static_cast<int>(form.limit));
    entries_["txtLimit"]->setText(QString::fromStdString(form.limitDb));
    bands_->setRowCount(0);
    for (const BandRowText& band : form.bands)
        AddBandRow(band);
}

BandFormText FrmBands::FormText() const {
    BandFormText form;
    for (const EntryRow& row : kEntryRows)
        form.*row.text = entries_.at(row.name)->text().toStdString();
    form.conduction = static_cast<ConductionChoice>(std::max(conduction_->currentIndex(), 0));
    form.conductionDegrees = entries_.at("txtConduction")->text().toStdString();
    form.limit = static_cast<LimitChoice>(std::max(limit_->currentIndex(), 0));
    form.limitDb = entries_.at("txtLimit")->text().toStdString();
    const auto cell = [this](int row, int column) {
        const QTableWidgetItem* item = bands_->item(row, column);
        return item ? item->text().toStdString() : std::string();
    };
    for (int row = 0; row < bands_->rowCount(); ++row) {
        const QTableWidgetItem* used = bands_->item(row, 0);
        form.bands.push_back({used && used->checkState() == Qt::Checked, cell(row, 1), cell(row, 2),
                              cell(row, 3), cell(row, 4), cell(row, 5)});
    }
    return form;
}

void FrmBands::Replan(bool report) {
    if (showing_) return;
    const BandFormText form = FormText();
    entries_["txtConduction"]->setEnabled(form.conduction == ConductionChoice::Other);
    entries_["txtLimit"]->setEnabled(form.limit == LimitChoice::Typed);
    RememberForm(form);
    const auto read = ReadBandForm(form, design_.state());
    if (const auto* problems = std::get_if<std::vector<std::string>>(&read)) {
        design_.SetBandPlanInputs(std::nullopt);
        std::string text;
        for (const std::string& problem : *problems)
            text += problem + "\n";
        if (report) dialogs_.ShowMessage(text, "Band plan", MessageIcon::Exclamation);
        notes_->setPlainText(QString::fromStdString(text));
    } else {
        design_.SetBandPlanInputs(std::get<BandPlanInputs>(read));
    }
    ShowPlan();
}

void FrmBands::ShowPlan() {
    Surface& surface = background_->surface();
    surface.Clear();
    results_->setRowCount(0);
    if (const auto& plan = design_.results().bandPlan) {
        DrawBandChart(surface, kChartBox, *plan);
        QString notes;
        for (const BandResult& band : plan->bands) {
            const int row = results_->rowCount();
            results_->insertRow(row);
            const QStringList cells{
                QString::fromStdString(band.band.name) + (band.feasible() ? "" : " (short)"),
                band.designed ? Fixed(band.q, 1) : "-",
                band.designed ? Fixed(band.l1 * 1e6, 2) : "-",
                band.designed ? Fixed(band.l2 * 1e6, 2) : "-",
                band.designed ? Range(band.edges[0].tune, band.edges[1].tune) : "-",
                band.designed ? Range(band.edges[0].load, band.edges[1].load) : "-",
                WorstHarmonic(band),
                band.efficiencyPercent ? Fixed(*band.efficiencyPercent, 1) + " %" : "-"};
            for (int column = 0; column < cells.size(); ++column)
                results_->setItem(row, column, new QTableWidgetItem(cells[column]));
            for (const std::string& note : band.notes)
                notes += QString::fromStdString(band.band.name + ": " + note) + "\n";
            for (const std::string& shortfall : band.shortfalls)
                notes += QString::fromStdString(band.band.name + ": " + shortfall) + "\n";
        }
        for (const std::string& note : plan->notes)
            notes += QString::fromStdString(note) + "\n";
        notes_->setPlainText(notes);
    }
    background_->update();
}

}  // namespace varo
