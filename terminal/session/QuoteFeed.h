#pragma once

#include "terminal/replay/PlannedOrder.h"

#include <QObject>

namespace LocalCommunication {
class EndPoint;
}

namespace Terminal {

class OrderDesk;
class Replay;
struct Bar;
struct DeskOutcome;
struct OrderRequest;
struct Security;

/// Brings a replay onto the bus: the quote of every completed bar and, after it, the orders that a plan
/// has for its minute, each once.
///
/// An order whose minute went by while the bus was away is not placed at another one, but told as refused.
///
/// Everything goes out on the client of the desk: the trading module takes an order between the quotes
/// that it was placed between, however fast they follow.
class QuoteFeed : public QObject
{
    Q_OBJECT

public:
    /// `replay` and `desk` must outlive the feed. To be made before the desk joins the bus; bars that
    /// complete before joined() are not sent.
    QuoteFeed(const Replay *replay, OrderDesk *desk, OrderPlan plan, QObject *parent);

    bool isJoined() const;

    /// Tells of orders of the plan whose minute is over, and which nothing places any more.
    void tellMissedOrders();

    /// Has taken() follow when the trading module is done with all that was sent so far. Requires a day.
    void askWhetherTaken();

Q_SIGNALS:
    void joined();
    void taken();
    /// An order of the plan was not taken, for this reason.
    void refused(const QString &reason);

private:
    void takeBar(const Bar &bar);
    void publish(const Bar &bar);
    void placeDueOrders(const Bar &bar);
    void tellMissedOrders(size_t completed);
    OrderPlan takeOrders(Trading::ClockTime until);
    void forgetPlanOfClosedDay();
    void checkPlacement(const OrderRequest &order, const DeskOutcome &outcome);

    const Replay *m_replay;
    OrderDesk *m_desk;
    LocalCommunication::EndPoint *m_endPoint;
    OrderPlan m_plan;
    QByteArray m_channel;
};

} // namespace Terminal
