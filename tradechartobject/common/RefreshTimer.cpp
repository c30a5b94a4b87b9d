#include "tradechartobject/common/RefreshTimer.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace TradeChart::RefreshTimer {

namespace {

constexpr int defaultSeconds = 10;

/// An interval longer than a timer can count becomes the longest that it can.
std::chrono::milliseconds interval(std::chrono::seconds configured)
{
    using Limits = std::numeric_limits<int>; // of Qt's timers
    constexpr std::chrono::milliseconds least(Limits::min());
    constexpr std::chrono::milliseconds most(Limits::max());
    return std::clamp(std::chrono::milliseconds(configured), least, most);
}

} // namespace

int seconds(const QJsonObject &config)
{
    return config.value(QLatin1String(TradeKeyFields::AUTOREFRESHTIME)).toInt(defaultSeconds);
}

void restart(QTimer *timer, int seconds)
{
    if (timer != nullptr) {
        timer->start(interval(std::chrono::seconds(seconds)));
    }
}

void startIfIdle(QTimer *timer, int seconds)
{
    if (timer != nullptr && !timer->isActive()) {
        restart(timer, seconds);
    }
}

void stop(QTimer *timer)
{
    if (timer != nullptr) {
        timer->stop();
    }
}

void remove(QTimer *&timer)
{
    if (timer != nullptr) {
        timer->stop();
        delete timer;
        timer = nullptr;
    }
}

} // namespace TradeChart::RefreshTimer
