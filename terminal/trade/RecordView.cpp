#include "terminal/trade/RecordView.h"

#include "terminal/trade/CutTextTips.h"

#include <QEvent>
#include <QHeaderView>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int rowPixels = 24;
constexpr int narrowestColumn = 48;
constexpr int widestText = 170;
constexpr int rowsThatTellWidths = 50; ///< from the first one in view on: a list may have thousands

} // namespace

RecordView::RecordView(QAbstractItemModel *model, int widestColumn)
    : m_widestColumn(widestColumn),
      m_cells(new CutTextTips(this))
{
    setModel(model);
    setItemDelegate(m_cells);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false); // Tab leaves the table
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(rowPixels);
    horizontalHeader()->setMinimumSectionSize(narrowestColumn);
    horizontalHeader()->setResizeContentsPrecision(rowsThatTellWidths);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(widestColumn, QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
}

int RecordView::neededWidth() const
{
    int width = 0;
    for (int column = 0; column < model()->columnCount(); ++column) {
        width += isColumnHidden(column) ? 0 : neededWidth(column);
    }
    return width;
}

int RecordView::neededWidth(int column) const
{
    const int header = horizontalHeader()->sectionSizeHint(column);
    const int cells = sizeHintForColumn(column);
    return std::max(
        {header, column == m_widestColumn ? std::min(cells, widestText) : cells, narrowestColumn});
}

void RecordView::fitColumns()
{
    const bool isNarrow = neededWidth() > viewport()->width();
    horizontalHeader()->setSectionResizeMode(m_widestColumn,
                                             isNarrow ? QHeaderView::Fixed : QHeaderView::Stretch);
    if (isNarrow) {
        horizontalHeader()->resizeSection(m_widestColumn, neededWidth(m_widestColumn));
    }
}

void RecordView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::StyleChange) {
        m_cells->forgetSizes(); // first: the columns are fitted in it
    }
    QTableView::changeEvent(event);
}

void RecordView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

} // namespace Terminal
