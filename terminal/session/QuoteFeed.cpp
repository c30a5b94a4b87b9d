#include "terminal/session/QuoteFeed.h"

#include "endpoint/EndPoint.h"
#include "terminal/live/BarQuote.h"
#include "terminal/replay/Replay.h"
#include "terminal/trade/OrderDesk.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"
#include "trading/Question.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

namespace Terminal {

QuoteFeed::QuoteFeed(const Replay *replay, OrderDesk *desk, OrderPlan plan, QObject *parent)
    : QObject(parent),
      m_replay(replay),
      m_desk(desk),
      m_endPoint(desk->endPoint()),
      m_plan(std::move(plan)),
      m_channel("terminal-replay-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces))
{
    using LocalCommunication::EndPoint;
    connect(replay, &Replay::barCompleted, this, &QuoteFeed::takeBar);
    connect(replay, &Replay::stateChanged, this, &QuoteFeed::forgetPlanOfClosedDay);
    connect(m_endPoint, &EndPoint::ready, this, &QuoteFeed::joined);
    connect(m_endPoint, &EndPoint::messageReceived, this,
            [this](const QByteArray &, const QByteArray &, const QByteArray &channel) {
                if (channel == m_channel) { // the client hears the answers to the desk, too
                    Q_EMIT taken();
                }
            });
    connect(desk, &OrderDesk::placed, this, &QuoteFeed::checkPlacement);
    m_endPoint->subscribe(m_channel, QByteArray(TradeChart::Topic::TRADEQUERY));
}

bool QuoteFeed::isJoined() const
{
    return m_endPoint->isConnected();
}

void QuoteFeed::takeBar(const Bar &bar)
{
    if (isJoined()) {
        tellMissedOrders(m_replay->completed() - 1);
        publish(bar);
        placeDueOrders(bar);
    }
}

void QuoteFeed::publish(const Bar &bar)
{
    const QJsonObject quote =
        quoteOf(m_replay->security(), bar, m_replay->previousClose(), m_replay->recordedDate());
    m_endPoint->sendMessage(Trading::Channel::MARKET, Trading::Topic::QUOTE,
                            QJsonDocument(quote).toJson(QJsonDocument::Compact));
}

/// The orders of the plan up to this minute, which is over; they leave the plan.
OrderPlan QuoteFeed::takeOrders(Trading::ClockTime until)
{
    const auto due = std::stable_partition(m_plan.begin(), m_plan.end(),
                                           [until](const PlannedOrder &order) { return order.time > until; });
    const OrderPlan orders(due, m_plan.end());
    m_plan.erase(due, m_plan.end());
    return orders;
}

void QuoteFeed::placeDueOrders(const Bar &bar)
{
    const OrderPlan due = takeOrders(endOf(bar));
    for (const PlannedOrder &order : due) {
        m_desk->place({m_replay->security(), order.side, order.price, order.quantity, OrderOrigin::Plan});
    }
}

void QuoteFeed::tellMissedOrders()
{
    tellMissedOrders(m_replay->completed());
}

/// Those that were due with the first so many bars, and are still in the plan.
void QuoteFeed::tellMissedOrders(size_t completed)
{
    const OrderPlan missed = completed == 0 ? OrderPlan() : takeOrders(endOf(m_replay->day()[completed - 1]));
    for (const PlannedOrder &order : missed) {
        Q_EMIT refused(
            QCoreApplication::translate("Replay", "its minute, %1, was over before it could be sent")
                .arg(order.time.colonText()));
    }
}

void QuoteFeed::checkPlacement(const OrderRequest &order, const DeskOutcome &outcome)
{
    const bool isMissing =
        outcome.kind == DeskOutcome::Kind::Refused || outcome.kind == DeskOutcome::Kind::NotSent;
    if (isMissing && order.origin == OrderOrigin::Plan) {
        Q_EMIT refused(outcome.text);
    }
}

/// The plan was made for one day.
void QuoteFeed::forgetPlanOfClosedDay()
{
    if (m_replay->state() == Replay::State::Closed) {
        m_plan.clear();
    }
}

void QuoteFeed::askWhetherTaken()
{
    Trading::Question question(TradeChart::CmdType::HOLDERCOSTPRICE);
    question.answerOn(QString::fromLatin1(m_channel));
    question.setSecurity(m_replay->security().id());
    m_endPoint->sendMessage(Trading::Channel::GLOBAL, TradeChart::Topic::TRADEQUERY, question.toJson());
}

} // namespace Terminal
