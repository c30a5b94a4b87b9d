#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Listing.h"

namespace TradeModule {

namespace {

QString decimals(double value, int count)
{
    return QString::number(value, 'f', count);
}

int listPositions(const Invocation &invocation)
{
    invocation.arguments(0, QStringLiteral("no arguments, only options"));
    Ledger ledger(invocation.ledger());
    Listing listing({QStringLiteral("code"), QStringLiteral("market"), QStringLiteral("name"),
                     QStringLiteral("quantity"), QStringLiteral("costprice"), QStringLiteral("cost")});
    const QVector<Position> positions = ledger.positions();
    for (const Position &position : positions) {
        listing.add({position.security.code, marketLetters(position.security.market), position.name,
                     QString::number(position.holding.quantity()),
                     decimals(position.holding.costPrice().value_or(0), 3),
                     decimals(position.holding.cost(), 2)});
    }
    print(listing.text(invocation.isSet(QStringLiteral("json"))));
    return Succeeded;
}

int listTrades(const Invocation &invocation)
{
    invocation.arguments(0, QStringLiteral("no arguments, only options"));
    DateRange days;
    days.first = invocation.date(QStringLiteral("from")).value_or(days.first);
    days.last = invocation.date(QStringLiteral("to")).value_or(days.last);
    const QString code = invocation.value(QStringLiteral("code"));
    Ledger ledger(invocation.ledger());
    Listing listing({QStringLiteral("date"), QStringLiteral("time"), QStringLiteral("code"),
                     QStringLiteral("market"), QStringLiteral("side"), QStringLiteral("price"),
                     QStringLiteral("quantity"), QStringLiteral("amount"), QStringLiteral("fee"),
                     QStringLiteral("order"), QStringLiteral("deal")});
    const Executions trades = code.isEmpty() ? ledger.trades(days) : ledger.trades(code, days);
    for (const Execution &trade : trades) {
        listing.add({dashedDate(trade.date), clockTime(trade.time), trade.security.code,
                     marketLetters(trade.security.market),
                     trade.side == Side::Buy ? QStringLiteral("buy") : QStringLiteral("sell"),
                     trade.price.text(), QString::number(trade.quantity), trade.amount.text(),
                     trade.fee.text(), trade.orderNo, trade.dealNo});
    }
    print(listing.text(invocation.isSet(QStringLiteral("json"))));
    return Succeeded;
}

} // namespace

Command positionsCommand()
{
    return {QStringLiteral("positions"),
            QStringLiteral("Lists what is held and at what cost."),
            {},
            {Listing::jsonOption()},
            &listPositions};
}

Command tradesCommand()
{
    return {
        QStringLiteral("trades"),
        QStringLiteral("Lists the account's trades, oldest first."),
        {},
        {Listing::jsonOption(),
         {QStringLiteral("code"), QStringLiteral("Only trades of this security."), QStringLiteral("CODE")},
         {QStringLiteral("from"), QStringLiteral("First day."), QStringLiteral("yyyymmdd")},
         {QStringLiteral("to"), QStringLiteral("Last day."), QStringLiteral("yyyymmdd")}},
        &listTrades};
}

} // namespace TradeModule
