// What a trading module says, for tests to have it said.
#pragma once

#include <QJsonObject>
#include <QJsonValue>

namespace Terminal {

/// A sell of 300 shares of 600519, 200 of them dealt.
inline QJsonObject orderRow(const char *number, const char *status)
{
    return {{QStringLiteral("stkcode"), QStringLiteral("600519")},
            {QStringLiteral("market"), QStringLiteral("1")},
            {QStringLiteral("bsflag2"), QStringLiteral("0S")},
            {QStringLiteral("orderstatus"), QLatin1String(status)},
            {QStringLiteral("ordersno"), QLatin1String(number)},
            {QStringLiteral("orderdate"), QStringLiteral("20240102")},
            {QStringLiteral("opertime"), QStringLiteral("09315002")},
            {QStringLiteral("orderprice"), QStringLiteral("1700.50")},
            {QStringLiteral("orderqty"), QStringLiteral("300")},
            {QStringLiteral("matchqty"), QStringLiteral("200")},
            {QStringLiteral("matchamt"), QStringLiteral("340102.00")}};
}

inline QJsonObject withData(const QJsonValue &data)
{
    return {{QStringLiteral("data"), data}};
}

inline QJsonObject refusedWith(const char *reason)
{
    return {{QStringLiteral("success"), false}, {QStringLiteral("msg"), QLatin1String(reason)}};
}

} // namespace Terminal
