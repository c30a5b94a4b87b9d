#pragma once

#include "endpoint/EndPoint.h"
#include "trademodule/bus/AnswerPost.h"
#include "trademodule/bus/ModulePresence.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace TradeModule {

/// A module at work: while the bus is its own it answers every question on channel "Global", topic
/// "TradeQuery" (on the channel that the question's "screenId" names, else to its sender), deals orders
/// against the quotes on channel "Market", and tells charts about every change. Whenever it joins the bus
/// it tells of today's orders, too: what it told last may have been lost with an earlier process. Where the
/// ledger can only be read, it answers what needs no change, refuses the rest, and deals nothing. On a bus on
/// which the module of another ledger serves it does nothing of this until that one is gone.
class TradeService : public QObject
{
    Q_OBJECT

public:
    /// Joins the bus instance of `busDirectory` and announces `presence` there. The ledger stays the caller's
    /// and outlives this object.
    TradeService(const QString &busDirectory, Ledger *ledger, const Trading::TradePresence &presence);

Q_SIGNALS:
    /// Somebody who speaks this language asks, "zh" or "en" unless it is a mistake; what is told comes in it
    /// from the next text on.
    void languageAsked(const QString &language);
    /// It serves from now on.
    void begun();
    /// The module of another ledger serves on this bus, or, `silent`, has not said that it went: it is waited
    /// for.
    void occupied(const Trading::TradePresence &other);
    void silent(const Trading::TradePresence &other);
    /// A question was refused; `what` names it, and the reason.
    void refused(const QString &what);
    /// Another process serves the ledger: nothing is answered and nothing changed from now on. Said once.
    void leaseLost(const QString &reason);

private:
    /// As it came from the bus.
    struct Message
    {
        QByteArray topic;
        QByteArray payload;
        QByteArray replyChannel;
    };

    void begin();
    void takeMessage(const Message &message);
    void handleMessage(const Message &message);
    void hold(const Message &message);
    void handleQuestion(const QByteArray &payload, const QByteArray &replyChannel);
    QByteArray refuse(const QString &reason);
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
    AnswerPost m_post;
    ModulePresence m_presence;
    QTimer m_settleTimer;
    QList<Message> m_held;  // that came before it was known whether the bus is ours, the oldest first
    QList<Quote> m_quotes;  // that wait for a ledger that is busy or away, the oldest first
    QSet<QString> m_warned; // since the ledger could be used last
    bool m_isStopped = false;
};

} // namespace TradeModule
