// What keyboard and screen reader find in a window.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QScrollArea>
#include <QTest>

#include <set>
#include <string>
#include <vector>

namespace Terminal {

inline std::string nameOfControl(const QWidget *widget)
{
    return (QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') + widget->objectName())
        .toStdString();
}

/// Controls below `root` that the keyboard can have and a screen reader would call nothing.
inline std::vector<std::string> namelessControls(const QWidget &root)
{
    std::vector<std::string> found;
    for (QWidget *const widget : root.findChildren<QWidget *>()) {
        const bool isControl = widget->isVisibleTo(&root) && (widget->focusPolicy() & Qt::TabFocus) != 0;
        QAccessibleInterface *const seen =
            isControl ? QAccessible::queryAccessibleInterface(widget) : nullptr;
        const bool isInside = widget->objectName().startsWith(QLatin1String("qt_spinbox")) ||
                              qobject_cast<QComboBox *>(widget->parentWidget()) != nullptr;
        if (seen != nullptr && !isInside && seen->text(QAccessible::Name).isEmpty()) {
            found.push_back(nameOfControl(widget));
        }
    }
    return found;
}

/// What Tab comes to, from `first` on until it is there again.
inline std::set<const QWidget *> reachedByTab(QWidget *first)
{
    std::set<const QWidget *> widgets;
    constexpr int longestWay = 200;
    first->setFocus();
    for (int step = 0; step < longestWay; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (!widgets.insert(QApplication::focusWidget()).second) {
            break;
        }
    }
    return widgets;
}

/// As Tab does.
inline void bringIntoView(QWidget *control)
{
    for (QWidget *around = control->parentWidget(); around != nullptr; around = around->parentWidget()) {
        if (auto *const area = qobject_cast<QScrollArea *>(around)) {
            area->ensureWidgetVisible(control);
        }
    }
}

/// Of the controls that Tab comes to from `first`, those that look the same with the keyboard and without.
/// Requires that the window of `root` is the active one.
inline std::vector<std::string> controlsWithUnseenFocus(QWidget *root, QWidget *first)
{
    std::vector<std::string> found;
    for (const QWidget *const reached : reachedByTab(first)) {
        auto *const control = const_cast<QWidget *>(reached); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        bringIntoView(control);
        control->setFocus(Qt::TabFocusReason);
        const QImage focused = root->grab().toImage();
        control->clearFocus();
        if (root->grab().toImage() == focused) {
            found.push_back(nameOfControl(control));
        }
    }
    return found;
}

} // namespace Terminal
