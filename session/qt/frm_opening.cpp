#include "session/qt/frm_opening.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QString>
#include <algorithm>

#include "platform/qt/screen_helpers.h"
#include "platform/qt/surface_widget.h"
#include "session/program_text.h"
#include "session/qt/opening_picture.h"

namespace varo {

namespace {

constexpr qreal kTwipsPerInch = 1440;
// The sizes the font rules give are meant for a window of 12000 x 9000 twips, but the rules
// grow with the screen while the controls do not. They are kept between a legible minimum and
// what the controls' boxes hold, so a large screen does not clip the texts.
constexpr qreal kMinimumPoints = 8;
constexpr qreal kMaximumLabelPoints = 14;
constexpr qreal kMaximumButtonPoints = 10;
// The buttons stand over the right end of the lower labels' boxes: texts stop short of them.
constexpr qreal kButtonColumnLeft = 7500;
constexpr qreal kButtonColumnTop = 6500;
constexpr qreal kTextMargin = 250;

// The part of a label's box that its text may use.
QSizeF TextRoom(const QRectF& box) {
    QSizeF room = box.size();
    if (box.bottom() > kButtonColumnTop)
        room.setWidth(std::min(room.width(), kButtonColumnLeft - kTextMargin - box.left()));
    return room;
}

QFont ArialFont() {
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif);
    return font;
}

// The largest size up to `wanted` points at which `text` fits a box of the given twips.
qreal FittingPoints(const QString& text, const QSizeF& boxTwips, qreal wanted) {
    qreal points = wanted;
    while (points > kMinimumPoints) {
        QFont font = ArialFont();
        font.setPixelSize(static_cast<int>(points * kUnitsPerPoint));  // sized in twips
        const QFontMetricsF metrics(font);
        if (metrics.horizontalAdvance(text) <= boxTwips.width() &&
            metrics.height() <= boxTwips.height())
            break;
        points -= 0.25;
    }
    return std::max(points, kMinimumPoints);
}

}  // namespace

QSizeF ScreenSizeInTwips(const QScreen* screen) {
    if (screen == nullptr) return QSizeF(kOpeningWidth, kOpeningHeight);
    const QSize pixels = screen->geometry().size();
    return QSizeF(pixels.width() * kTwipsPerInch / screen->logicalDotsPerInchX(),
                  pixels.height() * kTwipsPerInch / screen->logicalDotsPerInchY());
}

FrmOpening::FrmOpening(DesignState& state, const std::string& sessionFilePath, QWidget* parent)
    : SurfaceWidget(kOpeningWidth, kOpeningHeight, parent), state_(state) {
    InitialiseConstants(state_);
    setObjectName(QStringLiteral("frmOpening"));
    setWindowTitle(FromText(ScreenCaption("Welcome !")));
    setAccessibleDescription(QStringLiteral("Picture of a pi-L transmitter output network"));
    SizeWindow();
    PlaceControls(ScreenSizeInTwips(screen()));
    Surface& picture = surface();
    picture.Clear();
    DrawOpeningPanels(picture);
    DrawNetworkPicture(picture);
    picture.SetLineWidth(1);
    ReadLastSession(state_, sessionFilePath);
}

void FrmOpening::SizeWindow() {
    const QScreen* display = screen();
    const qreal dpiX = display != nullptr ? display->logicalDotsPerInchX() : 96;
    const qreal dpiY = display != nullptr ? display->logicalDotsPerInchY() : 96;
    FitToScreen(*this, QSize(qRound(kOpeningWidth * dpiX / kTwipsPerInch),
                             qRound(kOpeningHeight * dpiY / kTwipsPerInch)));
}

void FrmOpening::PlaceControls(QSizeF screenTwips) {
    auto* image = new SurfaceWidget(kTitleImageWidth, kTitleImageHeight, this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setAccessibleName(QStringLiteral("VARO title picture"));
    DrawTitleImage(image->surface());
    Place(image, QRectF(2400, 1000, 3000, 1000));

    const qreal labelPoints =
        std::clamp<qreal>(OpeningLabelPoints(static_cast<float>(screenTwips.height())),
                          kMinimumPoints, kMaximumLabelPoints);
    const auto addLabel = [&](const char* name, const QString& caption, QRectF box) {
        auto* label = new QLabel(caption, this);
        label->setObjectName(QString::fromLatin1(name));
        label->setFont(ArialFont());
        Place(label, box, FittingPoints(caption, TextRoom(box), labelPoints));
    };
    addLabel("lblVersion", QStringLiteral("Version ") + FromText(versionText),
             QRectF(2600, 6500, 2000, 360));
    addLabel("lblCredit", QString::fromUtf8(kAuthorCreditText), QRectF(2600, 6800, 6000, 360));
    addLabel("lblCopyright", FromText(ownerNoticeText), QRectF(2600, 7100, 5000, 360));
    addLabel("lblCredit1", QStringLiteral("The transmitter output network"),
             QRectF(2600, 5000, 6000, 360));
    addLabel("lblCredit2", QStringLiteral("design and analysis program"),
             QRectF(2600, 5300, 6000, 360));

    const qreal buttonPoints =
        std::clamp<qreal>(OpeningButtonPoints(static_cast<float>(screenTwips.width())),
                          kMinimumPoints, kMaximumButtonPoints);
    const auto addButton = [&](const char* name, const QString& caption, QRectF box) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QString::fromLatin1(name));
        button->setFont(ArialFont());
        Place(button, box, buttonPoints);
        return button;
    };
    QPushButton* enter =
        addButton("cmdEnter", QStringLiteral("Start"), QRectF(7500, 6500, 1500, 330));
    QPushButton* leave =
        addButton("cmdExit", QStringLiteral("Exit"), QRectF(7500, 7000, 1500, 330));
    enter->setDefault(true);
    connect(enter, &QPushButton::clicked, this, &FrmOpening::startRequested);
    connect(leave, &QPushButton::clicked, this, &FrmOpening::exitRequested);
}

void FrmOpening::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // A button that has the keyboard focus is the one Enter means.
        auto* focused = qobject_cast<QPushButton*>(focusWidget());
        (focused != nullptr ? focused : findChild<QPushButton*>(QStringLiteral("cmdEnter")))
            ->click();
        return;
    }
    SurfaceWidget::keyPressEvent(event);
}

}  // namespace varo
