#pragma once

#include "endpoint/EndPoint.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QObject>
#include <QTimer>

namespace TradeModule {

/// A module at work: as long as it lives it answers every question on channel "Global", topic
/// "TradeQuery" (on the channel that the question's "screenId" names, else to its sender), deals orders
/// against the quotes on channel "Market", and tells charts about every change.
class TradeService : public QObject
{
public:
    /// Joins the bus instance of `busDirectory`. The ledger stays the caller's and outlives this object.
    TradeService(const QString &busDirectory, Ledger *ledger);

private:
    void handleMessage(const QByteArray &topic, const QByteArray &payload, const QByteArray &replyChannel);
    void handleQuestion(const QByteArray &payload, const QByteArray &replyChannel);
    void handleQuote(const QByteArray &payload);
    void settle();
    void notify(const Order &changed);

    LocalCommunication::EndPoint m_endPoint;
    PaperExchange m_exchange;
    TradeAnswers m_answers;
    QTimer m_settleTimer;
};

} // namespace TradeModule
