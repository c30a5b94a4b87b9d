#pragma once

#include <QStyle>
#include <QVariant>
#include <QWidget>

namespace Terminal {

/// Changes a property that the style sheet selects by.
inline void setStyleProperty(QWidget *widget, const char *name, const QString &value)
{
    if (widget->property(name).toString() != value) {
        widget->setProperty(name, value);
        widget->style()->unpolish(widget);
        widget->style()->polish(widget);
    }
}

} // namespace Terminal
