#include "terminal/trade/CutTextTips.h"
#include "terminal/trade/RecordView.h"

#include <gtest/gtest.h>

#include <QStandardItemModel>

namespace Terminal {
namespace {

class CutTextTipsMeasures : public ::testing::Test
{
protected:
    CutTextTipsMeasures()
    {
        model.setItem(0, 0, new QStandardItem(QStringLiteral("a text of some width")));
        model.setItem(1, 0, new QStandardItem(QStringLiteral("short")));
    }

    int width(int row) const { return cells.sizeHint(option, model.index(row, 0)).width(); }

    int widthOfTheStyle(int row) const
    {
        return QStyledItemDelegate().sizeHint(option, model.index(row, 0)).width();
    }

    QStandardItemModel model;
    QStyleOptionViewItem option;
    const CutTextTips cells;
};

TEST_F(CutTextTipsMeasures, EachTextAsTheStyleDoesAlsoTheSecondTime)
{
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(width(0), widthOfTheStyle(0));
        EXPECT_EQ(width(1), widthOfTheStyle(1));
    }
    EXPECT_NE(width(0), width(1));
}

TEST_F(CutTextTipsMeasures, ATextAnewInAnotherFont)
{
    const int before = width(0);
    option.font.setPixelSize(30);
    option.fontMetrics = QFontMetrics(option.font);
    EXPECT_GT(width(0), before);
    EXPECT_EQ(width(0), widthOfTheStyle(0));
}

TEST_F(CutTextTipsMeasures, ATextAnewInAnotherStyle)
{
    RecordView view(&model, 0);
    const int before = view.neededWidth();
    view.setStyleSheet(QStringLiteral("QTableView { font-size: 40px; }"));
    view.ensurePolished();
    EXPECT_GT(view.neededWidth(), before);
    view.setStyleSheet(QStringLiteral("QTableView::item { padding: 0 40px; }"));
    EXPECT_GT(view.neededWidth(), before);
}

} // namespace
} // namespace Terminal
