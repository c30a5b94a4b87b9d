#include "terminal/data/TradingHours.h"

#include <algorithm>

namespace Terminal {

namespace {

constexpr int morningEnd = 11 * 60 + 30;
constexpr int afternoonStart = 13 * 60 + 1;
constexpr int auctionPriceMinute = 9 * 60 + 25; ///< from here on the price of the auction is known

} // namespace

bool isClosedWeekend(Trading::TradingDate day)
{
    constexpr int firstDayWithoutWeekends = 20000101;
    return day.number() >= firstDayWithoutWeekends && day.calendarDate().dayOfWeek() >= Qt::Saturday;
}

bool isTradingMinute(int minute)
{
    return (minute >= auctionMinute && minute <= morningEnd) ||
           (minute >= afternoonStart && minute <= lastTradingMinute);
}

std::optional<int> minuteOfQuote(Trading::ClockTime time)
{
    if (time.minute() < auctionPriceMinute) {
        return std::nullopt;
    }
    const int minute = std::max(time.endMinute(), auctionMinute);
    if (minute == afternoonStart - 1) {
        return afternoonStart; // 13:00 sharp
    }
    if (minute == morningEnd + 1 || minute == lastTradingMinute + 1) {
        return minute - 1;
    }
    return isTradingMinute(minute) ? std::optional(minute) : std::nullopt;
}

std::vector<std::int32_t> tradingMinutesAfter(int minute)
{
    std::vector<std::int32_t> minutes;
    for (int next = std::max(minute + 1, auctionMinute); next <= lastTradingMinute; ++next) {
        if (isTradingMinute(next)) {
            minutes.push_back(next);
        }
    }
    return minutes;
}

Bars withAuctionBar(Bars minutes)
{
    if (minutes.front().minute == auctionMinute) {
        return minutes;
    }
    Bar auction = minutes.front();
    auction.minute = auctionMinute;
    auction.high = auction.low = auction.close = auction.open;
    auction.volume = 0;
    minutes.insert(minutes.begin(), auction);
    return minutes;
}

} // namespace Terminal
