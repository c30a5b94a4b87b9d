#include "terminal/replay/PlannedOrder.h"

#include "terminal/data/TradingHours.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace Terminal {

std::optional<Trading::ClockTime> readTradingMinute(const QString &hhmm)
{
    constexpr int length = 4;
    const auto time = hhmm.size() == length ? Trading::ClockTime::ofText(hhmm) : std::nullopt;
    return time && isTradingMinute(time->minute()) ? time : std::nullopt;
}

Loaded<PlannedOrder> readPlannedOrder(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d{4}) (buy|sell) ([1-9]\\d{0,8}) (\\d{1,7}(?:\\.\\d{1,2})?)$"));
    const auto match = form.match(text.simplified());
    const auto time = readTradingMinute(match.captured(1));
    const double price = match.captured(4).toDouble();
    if (!time || !(price > 0)) {
        return Loaded<PlannedOrder>::failure(QCoreApplication::translate(
            "PlannedOrder",
            "HHMM buy|sell QUANTITY PRICE with a trading minute, e.g. \"1000 buy 500 13.35\""));
    }
    const Direction side = match.captured(2) == QLatin1String("buy") ? Direction::Buy : Direction::Sell;
    return PlannedOrder{*time, side, match.captured(3).toLongLong(), price};
}

} // namespace Terminal
