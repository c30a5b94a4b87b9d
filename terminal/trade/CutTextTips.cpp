#include "terminal/trade/CutTextTips.h"

#include "terminal/trade/RecordTable.h"

#include <QHelpEvent>
#include <QToolTip>

namespace Terminal {

namespace {

constexpr int mostRemembered = 5000; // texts

} // namespace

QSize CutTextTips::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (option.font != m_font || m_sizes.size() > mostRemembered) {
        m_sizes.clear();
        m_font = option.font;
    }
    const QString text = index.data().toString();
    auto size = m_sizes.find(text);
    if (size == m_sizes.end()) {
        size = m_sizes.insert(text, QStyledItemDelegate::sizeHint(option, index));
    }
    return *size;
}

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

} // namespace Terminal
