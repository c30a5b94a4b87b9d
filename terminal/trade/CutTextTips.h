#pragma once

#include <QFont>
#include <QHash>
#include <QStyledItemDelegate>

namespace Terminal {

/// Shows the tool tip of a cell only where the cell is too narrow for its text. For cells that have a text
/// and nothing else.
class CutTextTips : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

    /// Remembered by text: columns are fitted over and over, and measuring a text costs more than all else.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// To be called when the style is another: the same text may need other room.
    void forgetSizes() { m_sizes.clear(); }

private:
    mutable QHash<QString, QSize> m_sizes;
    mutable QFont m_font; ///< of the texts that are remembered
};

} // namespace Terminal
