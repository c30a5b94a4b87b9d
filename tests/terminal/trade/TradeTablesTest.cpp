#include "terminal/trade/TradeTables.h"
#include "tests/terminal/support/SomeSecurities.h"

#include "terminal/ui/InterfaceLanguage.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace Terminal {
namespace {

OrderRecord orderAt(int hhmmss, const char *number)
{
    OrderRecord order;
    order.security = moutai;
    order.day = Trading::TradingDate::of(2024, 1, 2);
    order.time = Trading::ClockTime::ofNumber(hhmmss * 100);
    order.number = QLatin1String(number);
    order.price = 10;
    order.quantity = 300;
    return order;
}

TEST(TradeTablesOfOrders, ShowsTheNewestFirst)
{
    OrdersTable table;
    table.setOrders({orderAt(93100, "9"), orderAt(93100, "10"), orderAt(93000, "11")});
    EXPECT_EQ(table.record(0).number, QStringLiteral("10"));
    EXPECT_EQ(table.record(1).number, QStringLiteral("9"));
    EXPECT_EQ(table.rowOf(QStringLiteral("11")), 2);
    EXPECT_EQ(table.rowOf(QStringLiteral("12")), -1);
}

TEST(TradeTablesOfOrders, HasEachTitleInTheChosenLanguage)
{
    const OrdersTable table;
    InterfaceLanguage language;
    for (int column = 0; column < table.columnCount({}); ++column) {
        const auto title = [&] {
            return table.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        };
        language.set(QStringLiteral("en"));
        const QString english = title();
        language.set(QStringLiteral("zh"));
        EXPECT_NE(title(), english);
    }
}

TEST(TradeTablesOfOrders, AddsNewRowsWithoutTouchingTheOthers)
{
    OrdersTable table;
    table.setOrders({orderAt(93100, "1")});
    QSignalSpy resets(&table, &QAbstractItemModel::modelReset);
    QSignalSpy inserted(&table, &QAbstractItemModel::rowsInserted);
    table.setOrders({orderAt(93100, "1"), orderAt(93200, "2")});
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(table.rowCount({}), 2);
    table.setOrders({orderAt(93300, "3")});
    EXPECT_EQ(resets.count(), 1);
}

TEST(TradeTablesOfOrders, HasItsColumnsInTheOrderOfTheirNames)
{
    OrdersTable table;
    const auto title = [&table](OrderColumn column) {
        return table.headerData(static_cast<int>(column), Qt::Horizontal, Qt::DisplayRole).toString();
    };
    EXPECT_EQ(title(OrderColumn::Time), QStringLiteral("Time"));
    EXPECT_EQ(title(OrderColumn::Status), QStringLiteral("Status"));
    EXPECT_EQ(title(OrderColumn::Number), QStringLiteral("Number"));
    EXPECT_EQ(table.columnCount({}), static_cast<int>(OrderColumn::Number) + 1);
}

TEST(TradeTablesOfOrders, HidesQuantities)
{
    OrderRecord order = orderAt(93100, "1");
    order.dealt = 200;
    OrdersTable table;
    table.setOrders({order});
    table.setAmountsHidden(true);
    QStringList shown;
    for (int column = 0; column < table.columnCount({}); ++column) {
        shown.append(table.index(0, column).data().toString());
        shown.append(table.index(0, column).data(Qt::ToolTipRole).toString());
    }
    EXPECT_EQ(shown.filter(QStringLiteral("***")).size(), 4);
    EXPECT_FALSE(shown.contains(QStringLiteral("300")));
    EXPECT_FALSE(shown.contains(QStringLiteral("200")));
    EXPECT_TRUE(shown.contains(QStringLiteral("10.00"))) << "its price may be read";
}

const LastPrice ten{10.0, PriceOrigin::Close, Trading::TradingDate::of(2024, 1, 2).value()};

TEST(TradeTablesOfPositions, KnowsAProfitOnlyWithAPrice)
{
    PositionsTable table;
    table.setRecords({{{moutai, 200, 100, 9.5}, ten}, {{{}, 300, 300, 5.0}, std::nullopt}});
    const int profit = static_cast<int>(PositionColumn::Profit);
    EXPECT_EQ(table.index(0, profit).data().toString(), QStringLiteral("+100.00"));
    EXPECT_EQ(table.index(1, profit).data().toString(), QStringLiteral(u"–"));
    EXPECT_EQ(table.index(0, profit).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight, Qt::AlignRight);
}

TEST(TradeTablesOfPositions, HidesMoneyAndHoldings)
{
    PositionsTable table;
    table.setRecords({{{moutai, 200, 100, 9.5}, ten}});
    table.setAmountsHidden(true);
    QStringList shown;
    for (int column = 0; column < table.columnCount({}); ++column) {
        shown.append(table.index(0, column).data().toString());
    }
    EXPECT_EQ(shown.filter(QStringLiteral("***")).size(), 4);
    EXPECT_TRUE(shown.contains(moutai.code));
    EXPECT_TRUE(shown.contains(QStringLiteral("10.00"))) << "the market's price is nobody's secret";
}

} // namespace
} // namespace Terminal
