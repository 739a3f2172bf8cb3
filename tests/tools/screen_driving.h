#pragma once

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>
#include <string>

#include "platform/qt/surface_widget.h"

namespace varo::testing {

template <typename Control = QWidget>
Control* Find(const QWidget& screen, const char* name) {
    auto* control = screen.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) ADD_FAILURE() << "no control " << name;
    return control;
}

inline std::string TextOf(const QWidget& screen, const char* name) {
    if (auto* entry = screen.findChild<QLineEdit*>(QString::fromLatin1(name)))
        return entry->text().toStdString();
    return Find<QLabel>(screen, name)->text().toStdString();
}

inline void Key(QWidget* target, int key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(target, &press);
}

// Empties the entry and types `text` into it key by key, as the user would.
inline void Type(const QWidget& screen, const char* entryName, const std::string& text) {
    auto* entry = Find<QLineEdit>(screen, entryName);
    entry->selectAll();
    Key(entry, Qt::Key_Backspace);
    for (const QChar character : QString::fromStdString(text))
        Key(entry, 0, QString(character));
}

inline void Click(const QWidget& screen, const char* name) {
    Find<QAbstractButton>(screen, name)->click();
}

// What assistive technology does to a control: its first accessible action (Press for a
// button, Toggle for an option or a check box), not a click.
inline void ActAccessibly(const QWidget& screen, const char* name) {
    QAccessibleInterface* control = QAccessible::queryAccessibleInterface(Find(screen, name));
    control->actionInterface()->doAction(control->actionInterface()->actionNames().first());
}

// Resizes the screen to each size and expects no shown control over another.
inline void CheckLayoutAtSizes(QWidget& screen) {
    const QList<QWidget*> controls = screen.findChild<SurfaceWidget*>()->findChildren<QWidget*>(
        QString(), Qt::FindDirectChildrenOnly);
    for (const QSize size : {QSize(1200, 900), QSize(800, 600)}) {
        screen.resize(size);
        screen.show();
        QApplication::processEvents();
        for (qsizetype i = 0; i < controls.size(); ++i)
            for (qsizetype j = i + 1; j < controls.size(); ++j)
                EXPECT_FALSE(!controls[i]->isHidden() && !controls[j]->isHidden() &&
                             controls[i]->geometry().intersects(controls[j]->geometry()))
                    << controls[i]->objectName().toStdString() << " covers "
                    << controls[j]->objectName().toStdString() << " at " << size.width();
    }
}

}  // namespace varo::testing
