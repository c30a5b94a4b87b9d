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

protected:
    /// A selected row is seen without a frame around one of its cells, which would dim its text.
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace Terminal
