#include "terminal/replay/PlannedOrder.h"

#include "terminal/data/TradingHours.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace Terminal {

int readTradingMinute(const QString &hhmm)
{
    static const QRegularExpression form(QStringLiteral("^([01]\\d|2[0-3])([0-5]\\d)$"));
    const auto match = form.match(hhmm);
    const int minute = match.captured(1).toInt() * 60 + match.captured(2).toInt();
    return match.hasMatch() && isTradingMinute(minute) ? minute : 0;
}

Loaded<PlannedOrder> readPlannedOrder(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d{4}) (buy|sell) ([1-9]\\d{0,8}) (\\d{1,7}(?:\\.\\d{1,2})?)$"));
    const auto match = form.match(text.simplified());
    const int minute = readTradingMinute(match.captured(1));
    const double price = match.captured(4).toDouble();
    if (minute == 0 || !(price > 0)) {
        return Loaded<PlannedOrder>::failure(QCoreApplication::translate(
            "PlannedOrder",
            "HHMM buy|sell QUANTITY PRICE with a trading minute, e.g. \"1000 buy 500 13.35\""));
    }
    const Direction side = match.captured(2) == QLatin1String("buy") ? Direction::Buy : Direction::Sell;
    return PlannedOrder{minute, side, match.captured(3).toLongLong(), price};
}

} // namespace Terminal
