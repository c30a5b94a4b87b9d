#include "terminal/data/TradingHours.h"

namespace Terminal {

namespace {

constexpr int morningEnd = 11 * 60 + 30;
constexpr int afternoonStart = 13 * 60 + 1;

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
