#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

namespace {

/// A list for people as a table, for programs as JSON: the columns are the same.
class Listing
{
public:
    explicit Listing(QStringList columns) : m_columns(std::move(columns)) {}

    void add(const QStringList &row) { m_rows.append(row); }
    QString text(bool isJson) const { return isJson ? json() : tableText(m_columns, m_rows); }

private:
    QString json() const
    {
        QJsonArray rows;
        for (const QStringList &row : m_rows) {
            QJsonObject object;
            for (int i = 0; i < m_columns.size(); ++i) {
                object[m_columns[i]] = row[i];
            }
            rows.append(object);
        }
        return QString::fromUtf8(QJsonDocument(rows).toJson());
    }

    const QStringList m_columns;
    QVector<QStringList> m_rows;
};

QCommandLineOption jsonOption()
{
    return {QStringLiteral("json"), QStringLiteral("Writes JSON instead of a table.")};
}

QString decimals(double value, int count)
{
    return QString::number(value, 'f', count);
}

int listPositions(const Invocation &invocation)
{
    invocation.refuseArguments();
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

QString dashedDate(int date)
{
    return QStringLiteral("%1-%2-%3")
        .arg(date / 10000, 4, 10, QLatin1Char('0'))
        .arg(date / 100 % 100, 2, 10, QLatin1Char('0'))
        .arg(date % 100, 2, 10, QLatin1Char('0'));
}

QString clockTime(int time)
{
    return QStringLiteral("%1:%2:%3")
        .arg(time / 1000000, 2, 10, QLatin1Char('0'))
        .arg(time / 10000 % 100, 2, 10, QLatin1Char('0'))
        .arg(time / 100 % 100, 2, 10, QLatin1Char('0'));
}

int listTrades(const Invocation &invocation)
{
    invocation.refuseArguments();
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
            {jsonOption()},
            &listPositions};
}

Command tradesCommand()
{
    return {
        QStringLiteral("trades"),
        QStringLiteral("Lists the account's trades, oldest first."),
        {},
        {jsonOption(),
         {QStringLiteral("code"), QStringLiteral("Only trades of this security."), QStringLiteral("CODE")},
         {QStringLiteral("from"), QStringLiteral("First day."), QStringLiteral("yyyymmdd")},
         {QStringLiteral("to"), QStringLiteral("Last day."), QStringLiteral("yyyymmdd")}},
        &listTrades};
}

} // namespace TradeModule
