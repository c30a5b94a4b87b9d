// How an overlay takes part in the terminal's bus. It owns its bus client as a plain member; its constructor
// joins, listens and subscribes in that order, and its destructor leaves. Questions go out on channel
// "Global", topic "TradeQuery", and answers come back on the channel of the chart's screen.
// docs/bus-protocol.md shows the messages.
#pragma once

#include "endpoint/EndPoint.h"
#include "tradechartobject/ChartInterface.h"

#include <QByteArray>
#include <QJsonObject>
#include <QObject>

namespace TradeChart::BusLink {

/// Joins the bus of the running terminal, which is named by the terminal's directory.
void join(LocalCommunication::EndPoint &endPoint);

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

/// Leaves the bus. From here on `overlay` hears nothing, not even what the bus client still had.
void leave(LocalCommunication::EndPoint &endPoint, const QObject *overlay);

/// Publishes a question; true when the bus took it.
bool publish(LocalCommunication::EndPoint &endPoint, const QByteArray &json);

/// Publishes `request` as compact JSON and logs it under the name of the sending `function` when the
/// bus took it. False, and no log line, when it did not.
bool send(LocalCommunication::EndPoint &endPoint, const QJsonObject &request, const char *function);

/// Writes the debug line of a question that `function` sent.
void logSent(const char *function, const QByteArray &json);

} // namespace TradeChart::BusLink
