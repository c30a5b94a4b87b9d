#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/trades/AccountTrade.h"
#include "tests/terminal/support/DayAndTime.h"

#include <QJsonArray>
#include <QJsonObject>

namespace Terminal {

/// A trade of a hundred shares at hhmm.
inline AccountTrade tradeOn(int day, int hhmm, double price, Direction side = Direction::Buy,
                            const QString &order = {})
{
    AccountTrade trade{onDay(day), Trading::ClockTime::of(hhmm / 100, hhmm % 100).value()};
    trade.side = side;
    trade.price = price;
    trade.quantity = 100;
    trade.amount = price * 100;
    trade.orderNumber = order;
    return trade;
}

/// A row of an answer about trades.
inline QJsonObject tradeRow(const char *day, const char *time, const char *side, const char *price,
                            const char *quantity, const char *order = "7")
{
    return {{QStringLiteral("bizdate"), QLatin1String(day)},
            {QStringLiteral("matchtime"), QLatin1String(time)},
            {QStringLiteral("bsflag2"), QLatin1String(side)},
            {QStringLiteral("matchprice"), QLatin1String(price)},
            {QStringLiteral("matchqty"), QLatin1String(quantity)},
            {QStringLiteral("ordersno"), QLatin1String(order)}};
}

/// A bar of a day, or one of a minute.
inline Bar barOn(int day, int minute = 0, double price = 10)
{
    return {day, minute, price, price + 1, price - 1, price, 1000};
}

inline ChartData chartOf(ChartPeriod period, Bars bars)
{
    return {{QStringLiteral("600519"), Market::Shanghai, {}}, period, std::move(bars)};
}

} // namespace Terminal
