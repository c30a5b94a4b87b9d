#include "tests/support/SentOrder.h"

#include <QDate>

std::uint32_t dayFromToday(int days)
{
    const QDate date = QDate::currentDate().addDays(days);
    return static_cast<std::uint32_t>(date.year() * 10000 + date.month() * 100 + date.day());
}

SentOrder::operator QJsonObject() const
{
    return {{QStringLiteral("market"), QStringLiteral("1")},
            {QStringLiteral("bsflag2"), QString::fromUtf8(side)},
            {QStringLiteral("orderstatus"), QString::fromUtf8(status)},
            {QStringLiteral("fundid"), QStringLiteral("F1")},
            {QStringLiteral("ordersno"), QString::fromUtf8(number)},
            {QStringLiteral("operdate"), QString::fromUtf8(date)},
            {QStringLiteral("opertime"), QString::fromUtf8(time)},
            {QStringLiteral("orderprice"), QString::fromUtf8(price)},
            {QStringLiteral("orderqty"), QStringLiteral("500")},
            {QStringLiteral("matchqty"), QStringLiteral("200")},
            {QStringLiteral("matchamt"), QStringLiteral("2010")},
            {QStringLiteral("cancelqty"), QStringLiteral("100")}};
}
