#pragma once

#include "endpoint/EndPoint.h"
#include "trademodule/bus/ModulePresence.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace TradeModule {

/// A module at work: as long as it lives it answers every question on channel "Global", topic
/// "TradeQuery" (on the channel that the question's "screenId" names, else to its sender), deals orders
/// against the quotes on channel "Market", and tells charts about every change. Whenever it joins the bus
/// it tells of today's orders, too: what it told last may have been lost with an earlier process. Where the
/// ledger can only be read, it answers what needs no change, refuses the rest, and deals nothing.
class TradeService : public QObject
{
    Q_OBJECT

public:
    /// Joins the bus instance of `busDirectory` and announces `presence` there. The ledger stays the caller's
    /// and outlives this object.
    TradeService(const QString &busDirectory, Ledger *ledger, const Trading::TradePresence &presence);

Q_SIGNALS:
    /// Another process serves the ledger: nothing is answered and nothing changed from now on. Said once.
    void leaseLost(const QString &reason);

private:
    void handleMessage(const QByteArray &topic, const QByteArray &payload, const QByteArray &replyChannel);
    void handlePresence(const QByteArray &payload);
    void handleQuestion(const QByteArray &payload, const QByteArray &replyChannel);
    void send(const QByteArray &answer, const QJsonObject &question, const QByteArray &replyChannel);
    void handleQuote(const QByteArray &payload);
    void beginDealing();
    void dealQuotes();
    void settle();
    void tellOfToday();
    void attempt(const std::function<void()> &work);
    void stop(const QString &reason);
    void warn(const QString &trouble);
    void notify(const Order &changed);
    void publish(const QJsonObject &notification);

    LocalCommunication::EndPoint m_endPoint;
    OrderBook m_orders;
    PaperExchange m_exchange;
    TradeAnswers m_answers;
    ModulePresence m_presence;
    QTimer m_settleTimer;
    QList<Quote> m_quotes;  // that wait for a ledger that is busy or away, the oldest first
    QSet<QString> m_warned; // since the ledger could be used last
    bool m_isStopped = false;
};

} // namespace TradeModule
