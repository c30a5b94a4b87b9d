#pragma once

#include <QTableView>

namespace Terminal {

class CutTextTips;

/// A table of records in the panel: whole rows, no grid, columns as wide as their texts. One of them takes
/// the room that the others leave; only there a text that is very long is cut and shown by a tool tip. Where
/// there is too little room for all columns, the table scrolls.
class RecordView : public QTableView
{
    Q_OBJECT

public:
    /// `model` must outlive the view.
    RecordView(QAbstractItemModel *model, int widestColumn);

    /// The width at which no column is cut but for a very long text in the widest.
    int neededWidth() const;

    /// Gives the columns their widths anew; to be called when they have other texts.
    void fitColumns();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    int neededWidth(int column) const;

    const int m_widestColumn;
    CutTextTips *m_cells; ///< owned by this widget
};

} // namespace Terminal
