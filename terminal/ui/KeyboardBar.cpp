#include "terminal/ui/KeyboardBar.h"

#include <QActionEvent>

namespace Terminal {

void KeyboardBar::actionEvent(QActionEvent *event)
{
    QToolBar::actionEvent(event);
    QWidget *const button = widgetForAction(event->action());
    if (event->type() == QEvent::ActionAdded && button != nullptr && button->inherits("QToolButton")) {
        button->setFocusPolicy(Qt::TabFocus);
    }
}

} // namespace Terminal
