#include "tradechartobject/common/RefreshTimer.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <limits>

namespace TradeChart::RefreshTimer {

namespace {

constexpr int defaultSeconds = 10;

/// An interval longer than a timer can count becomes the longest that it can.
int toMilliseconds(int seconds)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp(seconds * qint64{1000}, qint64{Limits::min()}, qint64{Limits::max()}));
}

} // namespace

int seconds(const QJsonObject &config)
{
    return config.value(QLatin1String(TradeKeyFields::AUTOREFRESHTIME)).toInt(defaultSeconds);
}

void restart(QTimer *timer, int seconds)
{
    if (timer != nullptr) {
        timer->start(toMilliseconds(seconds));
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
