#include "tests/support/SentTrade.h"

QJsonObject SentTrade::in(const TradesAnswer &answer) const
{
    return {{QStringLiteral("bsflag2"), QString::fromUtf8(side)},
            {QLatin1String(answer.dateKey), QString::fromUtf8(date)},
            {QLatin1String(answer.timeKey), QString::fromUtf8(time)},
            {QStringLiteral("matchprice"), QString::fromUtf8(price)},
            {QStringLiteral("matchqty"), QString::fromUtf8(quantity)}};
}

QJsonObject SentTrade::asNumbers() const
{
    return {{QStringLiteral("buy"), side == "B"},
            {QStringLiteral("date"), QString::fromUtf8(date)},
            {QStringLiteral("price"), price.toDouble()},
            {QStringLiteral("vol"), quantity.toDouble()}};
}

QJsonObject SentTrade::whole() const
{
    QJsonObject row = in(pastTrades);
    for (const QJsonObject &more : {in(todaysTrades), asNumbers()}) {
        for (auto value = more.begin(); value != more.end(); ++value) {
            row.insert(value.key(), value.value());
        }
    }
    return row;
}
