#pragma once

#include <QAbstractButton>
#include <QEvent>
#include <QFont>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRectF>
#include <QScreen>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/qt/action_gate.h"
#include "platform/qt/surface_widget.h"

namespace varo {

// Where the screens keep their entries between runs: QSettings(kSettingsOwner, kSettingsProgram).
inline constexpr const char* kSettingsOwner = "VARO";
inline constexpr const char* kSettingsProgram = "VARO";

inline QString FromText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A logical (twip) rectangle from its edges.
inline QRectF LogicalBox(float left, float top, float right, float bottom) {
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

// A screen of its own window: `title` after the program's name and version, and a surface of
// the given logical size filling it with its shape kept, on which the controls are placed.
inline SurfaceWidget* MountScreen(QWidget& screen, const char* name, const QString& title,
                                  float logicalWidth, float logicalHeight) {
    screen.setObjectName(name);
    screen.setWindowTitle(title);
    auto* background = new SurfaceWidget(logicalWidth, logicalHeight, &screen);
    background->SetFit(SurfaceFit::KeepAspect);
    auto* layout = new QVBoxLayout(&screen);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(background);
    return background;
}

// Sizes a window to `preferred`, or smaller at the same shape where the screen it opens on (at
// its scale factor) leaves less room, so that the whole screen is in view without scrolling.
inline void FitToScreen(QWidget& window, QSize preferred) {
    // Title bar and borders the desktop adds around the window.
    constexpr QSize kWindowFrameAllowance(16, 48);
    const QScreen* where = window.screen();
    if (where != nullptr) {
        const QSize room = where->availableGeometry().size() - kWindowFrameAllowance;
        if (room.width() < preferred.width() || room.height() < preferred.height())
            preferred.scale(room, Qt::KeepAspectRatio);
    }
    window.resize(preferred.expandedTo(window.minimumSize()));
}

// A named label on the surface, its text left-aligned and centred vertically; `family` names
// its typeface where the desktop's own will not do.
inline QLabel* PlaceLabel(SurfaceWidget& background, const char* name, const QString& caption,
                          const QRectF& at, qreal pointSize = 8.25, const char* family = nullptr) {
    auto* label = new QLabel(caption, &background);
    label->setObjectName(name);
    if (family != nullptr) label->setFont(QFont(family));
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    background.Place(label, at, pointSize);
    return label;
}

// The screen's bold heading.
inline QLabel* PlaceHeading(SurfaceWidget& background, const QString& caption, const QRectF& at,
                            const char* family = nullptr) {
    constexpr qreal kHeadingPoints = 14;
    QLabel* heading = PlaceLabel(background, "lblHeading", caption, at, kHeadingPoints, family);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    return heading;
}

// A named button on the surface. Enter presses only the button a screen makes its default.
inline QPushButton* PlaceButton(SurfaceWidget& background, const char* name, const QString& caption,
                                const QRectF& at, qreal pointSize = 8.25,
                                const char* family = nullptr) {
    auto* button = new QPushButton(caption, &background);
    button->setObjectName(name);
    button->setAutoDefault(false);
    if (family != nullptr) button->setFont(QFont(family));
    background.Place(button, at, pointSize);
    return button;
}

// A control on the surface with its caption to the left: the caption names it to a screen
// reader, and its mnemonic (if any) moves to it.
template <typename Control>
Control* PlaceCaptioned(SurfaceWidget& background, const char* labelName, const char* name,
                        const char* caption, const QRectF& captionAt, const QRectF& at) {
    QLabel* label = PlaceLabel(background, labelName, caption, captionAt);
    auto* control = new Control(&background);
    control->setObjectName(name);
    control->setAccessibleName(caption);
    background.Place(control, at, 8.25);
    label->setBuddy(control);
    return control;
}

// A table's column headings from a list of C strings.
inline QStringList ColumnHeaders(const auto& captions) {
    QStringList headers;
    for (const char* caption : captions)
        headers.push_back(QString::fromUtf8(caption));
    return headers;
}

// A table on the surface, without row numbers, its columns as wide as their contents. Tab leaves
// it; the arrows move between its cells. A read-only table only shows.
inline QTableWidget* PlaceTable(SurfaceWidget& background, const char* name,
                                const QString& spokenName, const QStringList& headers,
                                const QRectF& at, bool readOnly) {
    auto* table = new QTableWidget(0, static_cast<int>(headers.size()), &background);
    table->setObjectName(name);
    table->setAccessibleName(spokenName);
    if (readOnly) table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setHorizontalHeaderLabels(headers);
    table->verticalHeader()->setVisible(false);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setStretchLastSection(true);
    background.Place(table, at, 8);
    return table;
}

// A read-only text box on the surface that Tab leaves.
inline QPlainTextEdit* PlaceNotes(SurfaceWidget& background, const char* name,
                                  const QString& spokenName, const QRectF& at) {
    auto* notes = new QPlainTextEdit(&background);
    notes->setObjectName(name);
    notes->setAccessibleName(spokenName);
    notes->setReadOnly(true);
    notes->setTabChangesFocus(true);
    background.Place(notes, at, 8);
    return notes;
}

// Escape on the screen, or on any control of it that leaves the key alone, presses the
// screen's Return button.
class ReturnOnEscape : public QObject {
  public:
    ReturnOnEscape(QWidget& screen, QAbstractButton& returnButton)
        : QObject(&screen), returnButton_(returnButton) {
        screen.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            returnButton_.click();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QAbstractButton& returnButton_;
};

// A line under the screen's surface that names the files the screen's last action wrote.
inline QLabel* AddStatusLine(QWidget& screen) {
    auto* status = new QLabel(&screen);
    status->setObjectName("lblStatus");
    status->setAccessibleName("Status");
    status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    status->setContentsMargins(6, 2, 6, 2);
    // One line high; a long path neither widens the window nor takes the surface's room.
    status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    if (auto* rows = qobject_cast<QVBoxLayout*>(screen.layout())) {
        rows->addWidget(status);
        rows->setStretch(0, 1);
    }
    return status;
}

// "Wrote /home/ham/amp.varo", or several paths joined.
inline QString WrittenFilesText(const std::vector<std::string>& paths) {
    QStringList names;
    for (const std::string& path : paths)
        names.push_back(QString::fromStdString(path));
    return QStringLiteral("Wrote ") + names.join(QStringLiteral(", "));
}

// Runs `chosen` when the option is picked: by a click (also on the option already picked, which
// picks it again) or by assistive technology, whose only action on an option is Toggle, which
// checks it without a click. A click on an option not yet picked runs it once, on the toggle.
inline void OnOptionChosen(QAbstractButton& option, QObject& context,
                           std::function<void()> chosen) {
    QObject::connect(&option, &QAbstractButton::toggled, &context, [chosen](bool checked) {
        if (checked) chosen();
    });
    // Checked before the press: the click changes nothing, so no toggle runs it.
    auto pickedBefore = std::make_shared<bool>(false);
    QObject::connect(&option, &QAbstractButton::pressed, &context,
                     [&option, pickedBefore] { *pickedBefore = option.isChecked(); });
    QObject::connect(&option, &QAbstractButton::clicked, &context, [chosen, pickedBefore] {
        if (*pickedBefore) chosen();
        *pickedBefore = false;
    });
}

// The Return button at the screen's bottom right: Escape presses it, and a press goes back
// through the screen's gate, so a hidden or blocked screen stays where it is.
inline QPushButton* PlaceReturnButton(QWidget& screen, SurfaceWidget& background,
                                      ActionGate& actions, std::function<void()> goBack, float top,
                                      float bottom) {
    auto* back =
        PlaceButton(background, "cmdExit", "Return", LogicalBox(10600, top, 11850, bottom));
    new ReturnOnEscape(screen, *back);
    QObject::connect(back, &QPushButton::clicked, &screen, [&actions, goBack = std::move(goBack)] {
        actions.Run([&goBack] {
            if (goBack) goBack();
        });
    });
    return back;
}

}  // namespace varo
