#include "terminal/ui/MarketState.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("MarketState", source);
}

QString minuteText(const MarketWatch &market)
{
    constexpr int hoursAndMinutes = 5;
    return market.lastTime().colonText().left(hoursAndMinutes);
}

} // namespace

QString marketStateText(const MarketWatch &market)
{
    switch (market.state()) {
    case MarketWatch::State::Unheard:
        return {};
    case MarketWatch::State::NotOpen:
        return text("Market: not open yet");
    case MarketWatch::State::Quoted:
        return text("Market: %1").arg(minuteText(market));
    case MarketWatch::State::Silent:
        return text("Market: no quote since %1").arg(minuteText(market));
    case MarketWatch::State::Break:
        return text("Market: lunch break");
    case MarketWatch::State::Closed:
        return text("Market: closed");
    }
    return {};
}

QString marketStateDetails(const MarketWatch &market)
{
    return market.state() == MarketWatch::State::Silent
               ? text("The market is open, but nobody tells its prices: look at the program that publishes "
                      "quotes.")
               : QString();
}

} // namespace Terminal
