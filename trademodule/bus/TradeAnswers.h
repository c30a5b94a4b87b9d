#pragma once

#include "trademodule/bus/KeptAnswers.h"
#include "trademodule/bus/ServiceRecord.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/ledger/Ledger.h"
#include "trademodule/report/KeptResults.h"

#include <QJsonObject>

#include <functional>
#include <utility>

namespace TradeModule {

class AnswerMessage;
class TradeRequest;

/// Answers the questions of charts out of a ledger: a JSON object in, the text of one out, no bus needed.
/// docs/trading-module.md lists the commands. There is an answer to every question; one that cannot be
/// understood gets "success": false and a "msg" that names the field.
class TradeAnswers
{
public:
    /// Told of each security whose cost is reckoned in another way.
    using TellOfCost = std::function<void(const SecurityId &)>;

    /// Told of the language of who asks, "zh" or "en", before the answer is made.
    using Speak = std::function<void(const QString &language)>;

    /// Ledger and exchange stay the caller's and outlive this object.
    TradeAnswers(Ledger *ledger, PaperExchange *exchange, TellOfCost tellOfCost = {}, Speak speak = {})
        : m_ledger(ledger),
          m_orders(ledger),
          m_results(ledger),
          m_kept(ledger->database()),
          m_exchange(exchange),
          m_tellOfCost(std::move(tellOfCost)),
          m_speak(std::move(speak))
    {
    }

    /// Has `dealFirst` called before an order is placed, cancelled or replaced; what it throws is the answer,
    /// and the order stays as it was. It deals the quotes that came before: whoever trades when they cannot
    /// be dealt would trade in their past.
    void setDealFirst(std::function<void()> dealFirst) { m_dealFirst = std::move(dealFirst); }

    /// Told of each question that is refused, and why, before its answer is handed over.
    using TellRefusal = std::function<void(const TradeRequest &refused, const QString &reason)>;
    void setTellRefusal(TellRefusal tellRefusal) { m_tellRefusal = std::move(tellRefusal); }

    /// What was answered so far, and what else is told of this module.
    ServiceRecord &record() { return m_record; }

    /// Fails as LeaseLost only: who has lost its right answers nothing.
    QByteArray answer(const QJsonObject &question);

private:
    using Answer = void (TradeAnswers::*)(const TradeRequest &, AnswerMessage *);
    struct Command;
    static const Command *findCommand(const QString &name);
    void answerKnown(const Command *command, const QJsonObject &question, AnswerMessage *answer);
    void run(const Command &command, const QJsonObject &question, AnswerMessage *answer);

    void answerCost(const TradeRequest &request, AnswerMessage *answer);
    void answerToday(const TradeRequest &request, AnswerMessage *answer);
    void answerHistory(const TradeRequest &request, AnswerMessage *answer);
    void answerTodaysOrders(const TradeRequest &request, AnswerMessage *answer);
    void answerPastOrders(const TradeRequest &request, AnswerMessage *answer);
    void answerOpenOrders(const TradeRequest &request, AnswerMessage *answer);
    void answerAccount(const TradeRequest &request, AnswerMessage *answer);
    void answerResults(const TradeRequest &request, AnswerMessage *answer);
    void answerActions(const TradeRequest &request, AnswerMessage *answer);
    void answerStatus(const TradeRequest &request, AnswerMessage *answer);
    void setCostMethod(const TradeRequest &request, AnswerMessage *answer);
    TradingDate dayOfOrder(const TradeRequest &request) const;
    void cancel(const TradeRequest &request, AnswerMessage *answer);
    void place(const TradeRequest &request, AnswerMessage *answer);
    void replace(const TradeRequest &request, AnswerMessage *answer);

    Ledger *const m_ledger;
    OrderBook m_orders;
    KeptResults m_results;
    KeptAnswers m_kept;
    ServiceRecord m_record;
    PaperExchange *const m_exchange;
    const TellOfCost m_tellOfCost;
    const Speak m_speak;
    std::function<void()> m_dealFirst = [] {};
    TellRefusal m_tellRefusal = [](const TradeRequest &, const QString &) {};
};

/// What charts are told after a change.
QJsonObject changeNotification(const Order &changed);
/// The same for executions that came without an order of this module: the newest of a security.
QJsonObject changeNotification(const Execution &newest);
/// The same for a holding whose cost is reckoned in another way.
QJsonObject changeNotification(const SecurityId &held);

} // namespace TradeModule
