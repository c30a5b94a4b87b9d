// The trade channel: how an overlay asks the trading module over the terminal's bus and hears from it.
//
// An overlay owns its end point, its refresh timer and the refresh interval as plain members. Its
// constructor calls the set-up functions of this file in the order in which it wants them; requests
// go out on channel "Global", topic "TradeQuery", and answers come back on the channel of the
// chart's screen. docs/bus-protocol.md shows the messages.
#pragma once

#include "endpoint/EndPoint.h"
#include "tradechartobject/ChartInterface.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <optional>

namespace TradeChart {

namespace TradeChannel {

// Set-up

/// Refresh interval in seconds from the overlay's configuration; 10 when it does not name a number.
int refreshSeconds(const QJsonObject &config);

/// A single-shot timer, child of `overlay`, that calls the member function `query` when it ends.
template <class Overlay, class Query>
QTimer *createRefreshTimer(Overlay *overlay, Query query)
{
    auto *timer = new QTimer(overlay);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, overlay, query);
    return timer;
}

/// Joins the bus of the running terminal, which is named by the terminal's directory.
void joinTerminalBus(LocalCommunication::EndPoint &endPoint);

/// Hands the topic and the payload of every message to the member function `handler`.
template <class Overlay, class Handler>
void listen(LocalCommunication::EndPoint &endPoint, Overlay *overlay, Handler handler)
{
    QObject::connect(&endPoint, &LocalCommunication::EndPoint::messageReceived, overlay, handler);
}

/// Subscribes notifications and answers on the channel of the chart's screen, and the notifications
/// that go to everybody.
void subscribeScreen(LocalCommunication::EndPoint &endPoint, Korvane::IChartAxis &axis);

/// Subscribes notifications and answers on the channel that everybody hears: for an overlay whose
/// questions name no screen. It hears the questions of all others there, too.
void subscribeGlobal(LocalCommunication::EndPoint &endPoint);

// End

/// Leaves the bus. From here on `overlay` hears nothing, not even what the bus client still had.
void leave(LocalCommunication::EndPoint &endPoint, const QObject *overlay);

// Refresh timer. A null timer, which is what an overlay has left after deleteObject(), is ignored.

/// Starts the timer anew. Qt refuses an interval below zero: then nothing is refreshed, which is what a host
/// that configures one wants.
void restart(QTimer *timer, int seconds);

/// Starts the timer unless it is running.
void startIfIdle(QTimer *timer, int seconds);

/// Stops the timer.
void stop(QTimer *timer);

/// Stops and deletes the timer and forgets it.
void remove(QTimer *&timer);

// Requests

/// {"cmd","stkcode","market"}: what every question about a security carries.
QJsonObject securityRequest(const char *command, const Korvane::tagCodeWithName &security);

/// The same with "screenId", so that the answer finds its way to the chart's screen.
QJsonObject screenRequest(const char *command, const Korvane::tagCodeWithName &security,
                          Korvane::IChartAxis &axis);

/// JSON text of a question; most travel compact.
QByteArray toJson(const QJsonObject &request, QJsonDocument::JsonFormat format = QJsonDocument::Compact);

/// Publishes a question; true when the bus took it.
bool publish(LocalCommunication::EndPoint &endPoint, const QByteArray &json);

/// Writes the debug line of a question that `function` sent.
void logSent(const char *function, const QByteArray &json);

/// Publishes `request` as compact JSON and logs it under the name of the sending `function` when the
/// bus took it. False, and no log line, when it did not.
bool send(LocalCommunication::EndPoint &endPoint, const QJsonObject &request, const char *function);

/// Asks the question and blocks until its answer is there; none when no JSON object comes back. The
/// bus may run events meanwhile: the overlay can be gone afterwards.
std::optional<QJsonObject> ask(LocalCommunication::EndPoint &endPoint, const QByteArray &json);

// Answers

/// The JSON object of a text; none when it is anything else.
std::optional<QJsonObject> parseObject(const QByteArray &json);

/// The JSON object of a message that came over the bus; an empty one says nothing and counts as none.
std::optional<QJsonObject> parseMessage(const QByteArray &payload);

/// The text under a key; empty when there is none.
QString text(const QJsonObject &message, const char *key);

/// The rows of an answer, its "data"; none when that is no array.
QJsonArray rows(const QJsonObject &answer);

/// True when the message's "cmd" is `command`, letter case included.
bool isCommand(const QJsonObject &message, const char *command);

/// True when the message's "stkcode" names the security; letter case does not matter.
bool isAbout(const QJsonObject &message, const Korvane::tagCodeWithName &security);

/// Market code of an answer's "market", which counts "1" as "SH" and "2" as "SZ" - not as the host
/// numbers markets. Empty for everything else.
QString answerMarketCode(const QString &market);

/// True while debug lines are written: ask before formatting one.
bool isDebugLogOn();

} // namespace TradeChannel
} // namespace TradeChart
