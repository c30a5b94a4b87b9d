#include "terminal/trade/CutTextTips.h"

#include <QHelpEvent>
#include <QToolTip>

namespace Terminal {

bool CutTextTips::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                            const QModelIndex &index)
{
    const bool isWhole = sizeHint(option, index).width() <= option.rect.width();
    if (event->type() == QEvent::ToolTip && isWhole) {
        QToolTip::hideText();
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

} // namespace Terminal
