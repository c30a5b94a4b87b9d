#include "terminal/trades/TradesTable.h"

#include "terminal/trade/TradeTables.h"
#include "trading/Money.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(TradesTable)
};

QColor sideColour(const AccountTrade &trade, const ChartTheme &theme)
{
    return trade.isBuy() ? theme.rise : theme.fall;
}

/// With as many decimals as it has: funds have three.
QString priceOf(const AccountTrade &trade)
{
    return Trading::Money::ofYuan(trade.price).value_or(Trading::Money()).text();
}

bool isSameTrade(const AccountTrade &one, const AccountTrade &other)
{
    return one.day == other.day && one.time == other.time && one.orderNumber == other.orderNumber &&
           one.price == other.price && one.quantity == other.quantity && one.side == other.side;
}

std::vector<TradesTable::Column> tradeColumns()
{
    return {
        {TradeColumn::Day, [] { return Texts::tr("Date"); }, Qt::AlignLeft,
         [](const AccountTrade &trade) { return trade.day.dashedText(); }},
        {TradeColumn::Time, [] { return Texts::tr("Time"); }, Qt::AlignLeft,
         [](const AccountTrade &trade) { return trade.time.colonText(); }},
        {TradeColumn::Side, [] { return Texts::tr("Side"); }, Qt::AlignLeft,
         [](const AccountTrade &trade) { return sideText(trade.side); }, sideColour},
        {TradeColumn::Quantity, [] { return Texts::tr("Quantity"); }, Qt::AlignRight,
         [](const AccountTrade &trade) { return QString::number(trade.quantity); }, nullptr, true},
        {TradeColumn::Price, [] { return Texts::tr("Price"); }, Qt::AlignRight, priceOf},
        {TradeColumn::Amount, [] { return Texts::tr("Amount"); }, Qt::AlignRight,
         [](const AccountTrade &trade) { return amountText(trade.amount); }, nullptr, true},
        {TradeColumn::Order, [] { return Texts::tr("Order"); }, Qt::AlignRight,
         [](const AccountTrade &trade) { return trade.orderNumber; }},
    };
}

} // namespace

TradesTable::TradesTable() : RecordTable(tradeColumns(), isSameTrade) {}

void TradesTable::setTrades(const Trades &trades)
{
    setRecords(Trades(trades.rbegin(), trades.rend()));
}

} // namespace Terminal
