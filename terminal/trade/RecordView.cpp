#include "terminal/trade/RecordView.h"

#include "terminal/trade/CutTextTips.h"

#include <QHeaderView>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int rowPixels = 24;
constexpr int narrowestColumn = 48;

} // namespace

RecordView::RecordView(QAbstractItemModel *model, int widestColumn)
{
    setModel(model);
    setItemDelegate(new CutTextTips(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false); // Tab leaves the table
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(rowPixels);
    horizontalHeader()->setMinimumSectionSize(narrowestColumn);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(widestColumn, QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
}

int RecordView::neededWidth() const
{
    int width = 0;
    for (int column = 0; column < model()->columnCount(); ++column) {
        width += std::max(
            {horizontalHeader()->sectionSizeHint(column), sizeHintForColumn(column), narrowestColumn});
    }
    return width;
}

} // namespace Terminal
