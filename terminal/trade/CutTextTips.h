#pragma once

#include <QStyledItemDelegate>

namespace Terminal {

/// Shows the tool tip of a cell only where the cell is too narrow for its text.
class CutTextTips : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};

} // namespace Terminal
