#pragma once

#include "endpoint/EndPoint.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QObject>

namespace TradeModule {

/// Answers every question on channel "Global", topic "TradeQuery", as long as it lives: on the channel
/// that the question's "screenId" names, else to its sender.
class TradeService : public QObject
{
public:
    /// Joins the bus instance of `busDirectory`. The ledger stays the caller's and outlives this object.
    TradeService(const QString &busDirectory, Ledger *ledger);

private:
    void handleMessage(const QByteArray &topic, const QByteArray &payload, const QByteArray &replyChannel);

    TradeAnswers m_answers;
    LocalCommunication::EndPoint m_endPoint;
};

} // namespace TradeModule
