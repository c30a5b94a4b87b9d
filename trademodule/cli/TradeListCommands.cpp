#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/UsageError.h"

#include <algorithm>

namespace TradeModule {

namespace {

QString decimals(double value, int count)
{
    return QString::number(value, 'f', count);
}

bool hasDigitsOnly(const QString &text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

int listPositions(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    Ledger ledger(invocation.existingLedger());
    Listing listing({QT_TR_NOOP("code"), QT_TR_NOOP("market"), QT_TR_NOOP("name"), QT_TR_NOOP("quantity"),
                     QT_TR_NOOP("costprice"), QT_TR_NOOP("cost"), QT_TR_NOOP("method")},
                    invocation.isSet(QStringLiteral("json")));
    const QVector<Position> positions = ledger.allPositions();
    for (const Position &position : positions) {
        listing.add(
            {position.security.code, marketLetters(position.security.market), position.name,
             QString::number(position.holding.quantity()),
             decimals(position.holding.costPrice().value_or(0), 3), decimals(position.holding.cost(), 2),
             listing.isJson() ? wordOf(position.holding.method()) : nameOf(position.holding.method())});
    }
    listing.finish();
    return Succeeded;
}

int listTrades(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    const DateRange days = invocation.days();
    const QString code = invocation.value(QStringLiteral("code"));
    if (!hasDigitsOnly(code)) {
        throw UsageError(translated("--code is \"%1\", but a code has digits only").arg(code));
    }
    Ledger ledger(invocation.existingLedger());
    Listing listing({QT_TR_NOOP("date"), QT_TR_NOOP("time"), QT_TR_NOOP("code"), QT_TR_NOOP("market"),
                     QT_TR_NOOP("side"), QT_TR_NOOP("price"), QT_TR_NOOP("quantity"), QT_TR_NOOP("amount"),
                     QT_TR_NOOP("fee"), QT_TR_NOOP("order"), QT_TR_NOOP("deal")},
                    invocation.isSet(QStringLiteral("json")));
    ledger.visitTrades(code, days, [&listing](const Execution &trade) {
        listing.add({trade.date.dashedText(), trade.time.colonText(), trade.security.code,
                     marketLetters(trade.security.market), listing.word(sideWord(trade.side)),
                     trade.price.text(), QString::number(trade.quantity), trade.amount.text(),
                     trade.fee.text(), trade.orderNo, trade.dealNo});
    });
    listing.finish();
    return Succeeded;
}

} // namespace

Command positionsCommand()
{
    return {QStringLiteral("positions"),
            translated("Lists what is held and at what cost."),
            {},
            {Listing::jsonOption()},
            &listPositions};
}

Command tradesCommand()
{
    return {QStringLiteral("trades"),
            translated("Lists the account's trades, oldest first."),
            {},
            {Listing::jsonOption(),
             {QStringLiteral("code"), translated("Only trades of this security."), QStringLiteral("CODE")},
             Invocation::firstDayOption(),
             Invocation::lastDayOption()},
            &listTrades};
}

} // namespace TradeModule
