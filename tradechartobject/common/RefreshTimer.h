// The timer that repeats an overlay's question. The overlay owns it as a child; after deleteObject() it has
// none, and nothing here makes one again: a null timer is left alone.
#pragma once

#include <QJsonObject>
#include <QObject>
#include <QTimer>

namespace TradeChart::RefreshTimer {

/// The interval in seconds from the overlay's configuration; 10 when it does not name a number.
int seconds(const QJsonObject &config);

/// A single-shot timer, child of `overlay`, that calls the member function `query` when it ends.
template <class Overlay, class Query>
QTimer *create(Overlay *overlay, Query query)
{
    auto *timer = new QTimer(overlay);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, overlay, query);
    return timer;
}

/// Starts the timer anew. Qt refuses an interval below zero: then nothing is refreshed, which is what a host
/// that configures one wants.
void restart(QTimer *timer, int seconds);

/// Starts the timer unless it is running.
void startIfIdle(QTimer *timer, int seconds);

/// Stops the timer.
void stop(QTimer *timer);

/// Stops and deletes the timer and forgets it.
void remove(QTimer *&timer);

} // namespace TradeChart::RefreshTimer
