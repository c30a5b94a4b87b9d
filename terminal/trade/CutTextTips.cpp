#include "terminal/trade/CutTextTips.h"

#include "terminal/trade/RecordTable.h"

#include <QHelpEvent>
#include <QToolTip>

namespace Terminal {

bool CutTextTips::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                            const QModelIndex &index)
{
    const bool isWhole = sizeHint(option, index).width() <= option.rect.width();
    if (event->type() == QEvent::ToolTip && isWhole && !index.data(hasOwnTip).toBool()) {
        QToolTip::hideText();
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

void CutTextTips::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->state.testFlag(QStyle::State_Selected)) {
        option->state.setFlag(QStyle::State_HasFocus, false);
    }
}

} // namespace Terminal
