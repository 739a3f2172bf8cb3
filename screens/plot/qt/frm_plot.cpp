#include "screens/plot/qt/frm_plot.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QVBoxLayout>
#include <memory>

#include "export/sweep_csv.h"
#include "export/touchstone.h"
#include "model/pictures/large_plot.h"
#include "model/pictures/smith_chart.h"
#include "platform/qt/screen_helpers.h"
#include "platform/qt/surface_widget.h"
#include "platform/system.h"
#include "screens/plot/qt/plot_exports.h"
#include "screens/plot/qt/tuning_panel.h"
#include "session/program_text.h"

namespace varo {

// Lies over the plot area: follows the mouse with a vertical line and says where it is, in the
// picture's logical X. The line is the screen's own, never part of the drawing or its exports.
class PlotCursorLayer : public QWidget {
  public:
    PlotCursorLayer(QWidget* parent, std::function<void(float)> moved, std::function<void()> left)
        : QWidget(parent), moved_(std::move(moved)), left_(std::move(left)) {
        setMouseTracking(true);
        setAttribute(Qt::WA_TransparentForMouseEvents, false);
        setAttribute(Qt::WA_NoSystemBackground);
    }

    // A logical X of the plot area, or nothing to hide the line.
    void ShowLineAt(std::optional<float> logicalX) {
        lineX_ = logicalX;
        update();
    }

  protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        const PlotArea& area = kLargePlotFrame.area;
        const double fraction = event->position().x() / std::max(1, width());
        moved_(static_cast<float>(area.left + fraction * area.width()));
    }
    void leaveEvent(QEvent*) override { left_(); }
    void paintEvent(QPaintEvent*) override {
        if (!lineX_) return;
        const PlotArea& area = kLargePlotFrame.area;
        const double x = (*lineX_ - area.left) / area.width() * width();
        QPainter painter(this);
        painter.setPen(QPen(QColor(0x33, 0x33, 0x66), 1, Qt::DashLine));
        painter.drawLine(QPointF(x, 0), QPointF(x, height()));
    }

  private:
    std::function<void(float)> moved_;
    std::function<void()> left_;
    std::optional<float> lineX_;
};

namespace {

// Tells where the pointer is over a widget, and when it leaves.
class PointerWatcher : public QObject {
  public:
    PointerWatcher(QWidget& watched, std::function<void(QPointF)> moved, std::function<void()> left)
        : QObject(&watched), moved_(std::move(moved)), left_(std::move(left)) {
        watched.setMouseTracking(true);
        watched.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseMove)
            moved_(static_cast<QMouseEvent*>(event)->position());
        if (event->type() == QEvent::Leave) left_();
        return false;
    }

  private:
    std::function<void(QPointF)> moved_;
    std::function<void()> left_;
};

// The Smith chart covers the dB plot with its scales, up to the readout table, and has that
// shape.
constexpr float kSmithLeft = 1700, kSmithTop = 760, kSmithRight = 11400, kSmithBottom = 7300;
constexpr float kSmithWidth = kSmithRight - kSmithLeft;
constexpr float kSmithHeight = kSmithBottom - kSmithTop;

// The left column: the parts the nudges change, the buttons, the legend and the cursor readout.
constexpr float kColumnLeft = 100;
constexpr float kColumnRight = 1650;  // up to the dB scale's labels
constexpr float kColumnMiddle = (kColumnLeft + kColumnRight) / 2;
constexpr float kHalfGap = 25;
constexpr float kButtonHeight = 350;
constexpr qreal kSmallCaption = 7;

QRectF FullRow(float top) {
    return LogicalBox(kColumnLeft, top, kColumnRight, top + kButtonHeight);
}
QRectF LeftHalf(float top) {
    return LogicalBox(kColumnLeft, top, kColumnMiddle - kHalfGap, top + kButtonHeight);
}
QRectF RightHalf(float top) {
    return LogicalBox(kColumnMiddle + kHalfGap, top, kColumnRight, top + kButtonHeight);
}

QString ColourStyle(Colour colour) {
    return QStringLiteral("color: %1").arg(ToQColor(colour).name());
}

}  // namespace

FrmPlot::FrmPlot(Design& design, Dialogs& dialogs, std::function<void()> returnToDesign,
                 QWidget* parent)
    : QWidget(parent),
      design_(design),
      dialogs_(dialogs),
      reporter_(dialogs),
      returnToDesign_(std::move(returnToDesign)) {
    setObjectName("frmPlot");
    setWindowTitle(FromText(ScreenCaption("Large Plot screen")));
    background_ = new SurfaceWidget(kLargePlotScreenWidth, kLargePlotScreenHeight, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* plotAndKnobs = new QHBoxLayout;
    plotAndKnobs->addWidget(background_, 1);
    layout->addLayout(plotAndKnobs);
    AddStatusLine(*this);
    BuildControls();
    ConnectCommands();
    // Made after the plot's own controls, so that Tab reaches the knobs after the left column.
    tuning_ = new TuningPanel(this);
    plotAndKnobs->addWidget(tuning_);
    BuildTuning();
    setMinimumSize(600 + tuning_->width(), 450);
    FitToScreen(*this, QSize(1200 + tuning_->width(), 900));
    summary_->setText(FromText(LargePlotSummary(design_.state())));
    RedrawLargePlot();
}

FrmPlot::~FrmPlot() = default;

const Surface& FrmPlot::surface() const {
    return background_->surface();
}

// ---- Building the screen ------------------------------------------------------------------

QLabel* FrmPlot::AddLabel(const char* name, const QString& caption, const QRectF& at,
                          qreal pointSize) {
    return PlaceLabel(*background_, name, caption, at, pointSize, "Arial");
}

QPushButton* FrmPlot::AddButton(const char* name, const QString& caption, const QRectF& at,
                                const QString& description, const QKeySequence& shortcut,
                                qreal pointSize) {
    QPushButton* button =
        PlaceButton(*background_, name, caption, at, pointSize, "Microsoft Sans Serif");
    // The caption stays the spoken name; what the button does is its description.
    button->setAccessibleDescription(description);
    button->setToolTip(description);
    if (!shortcut.isEmpty()) {
        button->setShortcut(shortcut);
        button->setToolTip(description + " (" + shortcut.toString(QKeySequence::NativeText) + ")");
    }
    return button;
}

void FrmPlot::BuildControls() {
    PlaceHeading(*background_, "VARO Design", LogicalBox(150, 60, 3500, 420), "Arial");
    summary_ = AddLabel("lblSummary", "", LogicalBox(150, 450, 11900, 720));
    // The part values are the column's widest texts.
    parts_ = AddLabel("lblComponents", "", LogicalBox(kColumnLeft, 1000, kColumnRight, 1450),
                      kSmallCaption);
    parts_->setAccessibleName("L-section parts");

    AddButton("cmdCLdown", "CL-1%", LeftHalf(1500), "C3 down", QKeySequence("Ctrl+Down"));
    AddButton("cmdCLup", "CL+1%", RightHalf(1500), "C3 up", QKeySequence("Ctrl+Up"));
    AddButton("cmdLLdown", "LL-1%", LeftHalf(1900), "L2 down", QKeySequence("Alt+Down"));
    AddButton("cmdLLup", "LL+1%", RightHalf(1900), "L2 up", QKeySequence("Alt+Up"));
    AddButton("cmdSave", "Save", LeftHalf(2400), "Save overlay files", QKeySequence::Save);
    AddButton("cmdGet", "Get", RightHalf(2400), "Get overlay files", QKeySequence("Ctrl+G"));
    // The export captions are long too.
    AddButton("cmdExportPlot", "Export &plot...", FullRow(2900), "Export the plot as PNG or SVG",
              {}, kSmallCaption);
    AddButton("cmdExportCsv", "Export &CSV...", FullRow(3300), "Export the sweep as CSV", {},
              kSmallCaption);
    AddButton("cmdExportTouchstone", "Export &Touchstone...", FullRow(3700),
              "Export Touchstone S-parameters", {}, kSmallCaption);

    AddLabel("lblTransmission", "Transmission", LogicalBox(kColumnLeft, 4250, kColumnRight, 4500))
        ->setStyleSheet(ColourStyle(kTransmissionCurve));
    AddLabel("lblReturn", "Return", LogicalBox(kColumnLeft, 4500, kColumnRight, 4750))
        ->setStyleSheet(ColourStyle(kReturnCurve));
    // The saved curves drawn by Get: each names its file and when it was saved.
    const std::array<std::pair<const char*, Colour>, 2> overlayLegends{
        {{"lblOverlayTransmission", kOverlayTransmission}, {"lblOverlayReturn", kOverlayReturn}}};
    for (std::size_t i = 0; i < overlayLegends.size(); ++i) {
        const float top = 4780 + 420 * static_cast<float>(i);
        QLabel* legend =
            AddLabel(overlayLegends[i].first, "",
                     LogicalBox(kColumnLeft, top, kColumnRight, top + 400), kSmallCaption);
        legend->setStyleSheet(ColourStyle(overlayLegends[i].second));
        legend->setWordWrap(true);
        legend->setVisible(false);
        overlayLegends_[i] = legend;
    }
    cursorReadout_ =
        AddLabel("lblCursor", "", LogicalBox(kColumnLeft, 5650, kColumnRight, 6950), 7.5);
    cursorReadout_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    cursorReadout_->setWordWrap(true);
    cursorReadout_->setAccessibleName("Cursor readout");

    AddButton("cmdExit", "Return", LogicalBox(kColumnLeft, 8450, kColumnRight, 8850),
              "Return to the design screen", QKeySequence(Qt::Key_Escape));

    cursorLayer_ = new PlotCursorLayer(
        background_, [this](float x) { MoveCursorTo(x); }, [this] { ShowCursorAt(std::nullopt); });
    const PlotArea& area = kLargePlotFrame.area;
    background_->Place(cursorLayer_, LogicalBox(area.left, area.top, area.right, area.bottom));
}

// The knobs' column, and the Smith chart lying over the plot area while it is switched on.
void FrmPlot::BuildTuning() {
    tuning_->knobTurned = [this](TankPart part, int position) {
        RunAction([this, part, position] { TuneAndRedraw(part, position); });
    };
    tuning_->backToDesignValues = [this] { RunAction([this] { BackToDesignValues(); }); };
    tuning_->smithSwitched = [this](bool shown) { ShowSmith(shown); };
    smith_ = new SurfaceWidget(kSmithWidth, kSmithHeight, background_);
    smith_->setObjectName("picSmith");
    smith_->setAccessibleName("Smith chart of the input impedance");
    smith_->SetFit(SurfaceFit::KeepAspect);
    background_->Place(smith_, LogicalBox(kSmithLeft, kSmithTop, kSmithRight, kSmithBottom));
    QPalette white = smith_->palette();
    white.setColor(QPalette::Window, Qt::white);
    smith_->setPalette(white);
    smith_->setAutoFillBackground(true);
    smith_->setVisible(false);
    new PointerWatcher(
        *smith_,
        [this](QPointF at) {
            const QPointF logical = smith_->WidgetToLogical(at);
            MoveSmithCursorTo(static_cast<float>(logical.x()), static_cast<float>(logical.y()));
        },
        [this] { ShowCursorAt(std::nullopt); });
}

void FrmPlot::OnClick(const char* name, std::function<void()> action) {
    connect(findChild<QPushButton*>(name), &QPushButton::clicked, this,
            [this, action = std::move(action)] { RunAction(action); });
}

void FrmPlot::ConnectCommands() {
    const std::pair<const char*, Nudge> nudges[] = {{"cmdCLdown", Nudge::CapacitorDown},
                                                    {"cmdCLup", Nudge::CapacitorUp},
                                                    {"cmdLLdown", Nudge::InductorDown},
                                                    {"cmdLLup", Nudge::InductorUp}};
    for (const auto& [name, nudge] : nudges)
        OnClick(name, [this, nudge = nudge] { NudgeAndRedraw(nudge); });
    OnClick("cmdSave",
            [this] { WriteOverlayFiles(design_.state(), CurrentDirectory(), dialogs_); });
    OnClick("cmdGet", [this] { GetOverlays(); });
    OnClick("cmdExportPlot", [this] { ExportPicture(); });
    OnClick("cmdExportCsv", [this] { ExportSweep(); });
    OnClick("cmdExportTouchstone", [this] { ExportTouchstone(); });
    OnClick("cmdExit", [this] {
        if (returnToDesign_) returnToDesign_();
    });
}

// ---- Actions ------------------------------------------------------------------------------

void FrmPlot::RunAction(const std::function<void()>& action) {
    actions_.Run(action);
}

float FrmPlot::ScreenHeightTwips() const {
    const QScreen* shown = screen();
    if (shown == nullptr || !(shown->logicalDotsPerInchY() > 0)) return 0;
    return static_cast<float>(shown->geometry().height() * 1440.0 / shown->logicalDotsPerInchY());
}

// The curves, the readout rows and every value shown follow the design as it now stands; the
// cursor stays where it was and reads the new curves.
void FrmPlot::RedrawLargePlot() {
    Surface& surface = background_->surface();
    surface.Clear();
    design_.SweepAsLaidOut(reporter_);
    overlays_ = {};
    for (QLabel* legend : overlayLegends_)
        legend->setVisible(false);
    DrawLargePlot(surface, design_.state(), design_.results(), ScreenHeightTwips());
    parts_->setText(FromText(NudgedPartsText(design_.state())));
    ShowTuning();
    ShowCursorAt(cursorFrequency_);
    background_->update();
}

void FrmPlot::ShowTuning() {
    const DesignState& state = design_.state();
    for (const KnobControl& knob : kKnobs) {
        const double factor = design_.TuningFactor(knob.part);
        tuning_->ShowKnob(knob.part, KnobPosition(factor),
                          FromText(KnobValueText(state, knob.part, factor)));
    }
    tuning_->ShowTuned(design_.Tuned());
    QStringList lines;
    if (const auto& view = design_.results().input) {
        for (const std::string& line : TubeViewLines(*view))
            lines.push_back(FromText(line));
    } else {
        lines.push_back(QStringLiteral("The network cannot be analysed at this frequency."));
    }
    tuning_->ShowTube(FromText(TubeViewHeading(state)), lines);
}

void FrmPlot::DrawSmith() {
    Surface& surface = smith_->surface();
    surface.Clear();
    const auto& view = design_.results().input;
    if (view) {
        const auto index = cursorFrequency_
                               ? SweptIndexNear(design_.results().sweep, *cursorFrequency_)
                               : std::nullopt;
        DrawInputSmithChart(surface, ChartBox{0, 0, kSmithWidth, kSmithHeight}, *view, index);
    }
    smith_->update();
}

void FrmPlot::NudgeAndRedraw(Nudge nudge) {
    if (design_.NudgePart(nudge, reporter_)) RedrawLargePlot();
}

void FrmPlot::TuneAndRedraw(TankPart part, int position) {
    if (design_.TunePart(part, KnobFactor(position), reporter_)) RedrawLargePlot();
}

void FrmPlot::BackToDesignValues() {
    design_.RestoreDesignValues();
    RedrawLargePlot();
}

void FrmPlot::ShowSmith(bool shown) {
    smith_->setVisible(shown);
    cursorLayer_->setVisible(!shown);
    // The curves' legend names the dB plot's colours.
    for (const char* legend : {"lblTransmission", "lblReturn"})
        findChild<QLabel*>(legend)->setVisible(!shown);
    if (shown) {
        smith_->raise();
        DrawSmith();
    }
}

void FrmPlot::GetOverlays() {
    ReadOverlayFiles(
        design_.state(), overlay_, CurrentDirectory(), dialogs_,
        [this](std::int16_t last, float topDb, float floorDb, std::int16_t curve) {
            const DesignState& state = design_.state();
            DrawOverlay(background_->surface(), kLargePlotFrame, state, overlay_.overlayValue, last,
                        topDb, floorDb, curve);
            const auto count = static_cast<std::size_t>(last + 1);
            overlays_.at(static_cast<std::size_t>(curve)) = OverlayCurve{
                {state.sweepFrequency.begin(), state.sweepFrequency.begin() + count},
                {overlay_.overlayValue.begin(), overlay_.overlayValue.begin() + count}};
            ShowOverlayLegend(curve);
            background_->update();
        });
}

// "Saved Data.S21, 2026-11-24 05:12": the file the curve came from and when it was saved.
void FrmPlot::ShowOverlayLegend(std::int16_t curve) {
    const std::string_view name = curve == 0 ? kOverlayTransmissionFile : kOverlayReturnFile;
    const QFileInfo file(QDir(QString::fromStdString(CurrentDirectory()))
                             .filePath(QString::fromUtf8(name.data(), name.size())));
    QLabel* legend = overlayLegends_.at(static_cast<std::size_t>(curve));
    legend->setText(QStringLiteral("Saved %1, %2")
                        .arg(file.fileName(),
                             file.lastModified().toString(QStringLiteral("yyyy-MM-dd hh:mm"))));
    legend->setVisible(true);
}

void FrmPlot::ExportPicture() {
    const auto path = dialogs_.AskSaveFileName(PictureSaveRequest());
    if (!path) return;
    // What is shown: the dB plot with the screen's summary, or the Smith chart as it stands.
    const Surface picture = smith_->isVisible()
                                ? smith_->surface()
                                : PictureForExport(surface(), LargePlotSummary(design_.state()));
    WritePictureFile(picture, *path, dialogs_);
}

void FrmPlot::ExportSweep() {
    const auto path = dialogs_.AskSaveFileName(CsvSaveRequest());
    if (path) WriteSweepCsvFile(design_.results().sweep, *path, dialogs_);
}

void FrmPlot::ExportTouchstone() {
    const auto path = dialogs_.AskSaveFileName(TouchstoneSaveRequest());
    if (!path) return;
    // At the swept frequencies, not at those an overlay file left in the shared sweep.
    const SweepTable& sweep = design_.results().sweep;
    auto design = std::make_unique<DesignState>(design_.state());
    std::copy(sweep.frequency.begin(), sweep.frequency.end(), design->sweepFrequency.begin());
    WriteTouchstoneFile(*design, *path, dialogs_);
}

const Surface& FrmPlot::smithSurface() const {
    return smith_->surface();
}

void FrmPlot::MoveCursorTo(float logicalX) {
    ShowCursorAt(CursorFrequency(design_.results().sweep, logicalX));
}

void FrmPlot::MoveSmithCursorTo(float logicalX, float logicalY) {
    const auto& view = design_.results().input;
    const SweepTable& sweep = design_.results().sweep;
    const auto index = view ? NearestSweptPoint(ChartBox{0, 0, kSmithWidth, kSmithHeight}, *view,
                                                logicalX, logicalY)
                            : std::nullopt;
    ShowCursorAt(index && *index < sweep.size() ? std::optional(sweep.frequency[*index])
                                                : std::nullopt);
}

// The readout and the line on the plot (or the cross on the Smith chart) for a frequency of
// the sweep; nothing hides them.
void FrmPlot::ShowCursorAt(std::optional<float> frequency) {
    const SweepTable& sweep = design_.results().sweep;
    const std::string text = frequency ? CursorReadoutTextAt(sweep, overlays_, *frequency) : "";
    cursorFrequency_ = text.empty() ? std::nullopt : frequency;
    cursorLayer_->ShowLineAt(cursorFrequency_ ? CursorX(sweep, *cursorFrequency_) : std::nullopt);
    cursorReadout_->setText(FromText(text));
    if (smith_->isVisible()) DrawSmith();
}

}  // namespace varo
