// Lists that overlays open, in a window.
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QMenu>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class OverlayLists : public OverlayWindow
{
};

TEST_F(OverlayLists, ListsADaysTradesAndClosesOnEscape)
{
    show({QStringLiteral("trades")});
    QStringList rows;
    whenOpen<QMenu>([&rows](QMenu *menu) {
        for (const QAction *const action : menu->actions()) {
            rows.append(action->text());
        }
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    click(onMark(lastMarkedBar()));
    EXPECT_EQ(rows, QStringList({QStringLiteral(u"买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                 QStringLiteral(u"卖出\t14:55:01\t成交价:1810.50\t成交量:1200"),
                                 QStringLiteral(u"卖出\t14:56:00\t成交价:9.10\t成交量:100")}));
    const std::string log = overlayLog();
    EXPECT_THAT(log, HasSubstr("press on bar " + std::to_string(lastMarkedBar())));
    EXPECT_THAT(log, HasSubstr("chose -1"));
}

TEST_F(OverlayLists, HidesAmountsInTheListOfTrades)
{
    show({QStringLiteral("trades")});
    m_window->overlays()->setAmountsHidden(true);
    QApplication::processEvents();
    QString row;
    whenOpen<QMenu>([&row](QMenu *menu) {
        row = menu->actions().constFirst()->text();
        menu->close();
    });
    click(onMark(lastMarkedBar()));
    EXPECT_EQ(row, QStringLiteral(u"买入\t09:30:15\t成交价:10.50\t成交量:***"));
}

TEST_F(OverlayLists, ListsTheTradesOfTheCombinedOverlay)
{
    show({QStringLiteral("combined-trades")});
    QStringList rows;
    whenOpen<QMenu>([&rows](QMenu *menu) {
        for (const QAction *const action : menu->actions()) {
            rows.append(action->text());
        }
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click({300, 300});
    EXPECT_EQ(rows, QStringList({QStringLiteral(u"买入\t00:00:00\t成交价:10.50\t成交量:300"),
                                 QStringLiteral(u"卖出\t00:00:00\t成交价:11.50\t成交量:100")}));
    EXPECT_THAT(overlayLog(), HasSubstr("chose 1"));
}

} // namespace
} // namespace Terminal
