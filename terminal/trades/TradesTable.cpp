#include "terminal/trades/TradesTable.h"

#include "terminal/chart/text/FigureText.h"
#include "terminal/trade/TradeTables.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(TradesTable)
};

QColor sideColour(const Trade &trade, const ChartTheme &theme)
{
    return trade.isBuy() ? theme.rise : theme.fall;
}

bool isSameTrade(const Trade &one, const Trade &other)
{
    return one.day == other.day && one.time == other.time && one.orderNumber == other.orderNumber &&
           one.price == other.price && one.quantity == other.quantity && one.side == other.side;
}

std::vector<TradesTable::Column> tradeColumns()
{
    return {
        {TradeColumn::Day, [] { return Texts::tr("Date"); }, Qt::AlignLeft,
         [](const Trade &trade) { return trade.day.dashedText(); }},
        {TradeColumn::Time, [] { return Texts::tr("Time"); }, Qt::AlignLeft,
         [](const Trade &trade) { return trade.time.colonText(); }},
        {TradeColumn::Side, [] { return Texts::tr("Side"); }, Qt::AlignLeft,
         [](const Trade &trade) { return sideText(trade.side); }, sideColour},
        {TradeColumn::Quantity, [] { return Texts::tr("Quantity"); }, Qt::AlignRight,
         [](const Trade &trade) { return QString::number(trade.quantity); }, nullptr, true},
        {TradeColumn::Price, [] { return Texts::tr("Price"); }, Qt::AlignRight,
         [](const Trade &trade) { return priceText(trade.price); }},
        {TradeColumn::Amount, [] { return Texts::tr("Amount"); }, Qt::AlignRight,
         [](const Trade &trade) { return amountText(trade.amount); }, nullptr, true},
        {TradeColumn::Order, [] { return Texts::tr("Order"); }, Qt::AlignRight,
         [](const Trade &trade) { return trade.orderNumber; }},
    };
}

} // namespace

TradesTable::TradesTable() : RecordTable(tradeColumns(), isSameTrade) {}

void TradesTable::setTrades(const Trades &trades)
{
    setRecords(Trades(trades.rbegin(), trades.rend()));
}

} // namespace Terminal
