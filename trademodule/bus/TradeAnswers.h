#pragma once

#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/ledger/Ledger.h"

#include <QJsonArray>
#include <QJsonObject>

namespace TradeModule {

class TradeRequest;

/// Answers the questions of charts out of a ledger: a JSON object in, a JSON object out, no bus needed.
/// docs/trading-module.md lists the commands. There is an answer to every question; one that can not be
/// understood gets "success": false and a "msg" that names the field.
class TradeAnswers
{
public:
    /// Values of "errcode".
    enum ErrorCode { NoError = 0, NotUnderstood = 1, LedgerFailed = 2, Refused = 3 };

    /// Ledger and exchange stay the caller's and outlive this object.
    TradeAnswers(Ledger *ledger, PaperExchange *exchange)
        : m_ledger(ledger),
          m_orders(ledger),
          m_exchange(exchange)
    {
    }

    QJsonObject answer(const QJsonObject &question);

    /// The answer to what is no JSON object.
    static QJsonObject refusal(const QString &reason);

private:
    using Answer = void (TradeAnswers::*)(const TradeRequest &, QJsonObject *);
    struct Command;
    static const Command *findCommand(const QString &name);

    void answerCost(const TradeRequest &request, QJsonObject *answer);
    void answerToday(const TradeRequest &request, QJsonObject *answer);
    void answerHistory(const TradeRequest &request, QJsonObject *answer);
    void answerTodaysOrders(const TradeRequest &request, QJsonObject *answer);
    void answerPastOrders(const TradeRequest &request, QJsonObject *answer);
    void cancel(const TradeRequest &request, QJsonObject *answer);
    void place(const TradeRequest &request, QJsonObject *answer);

    Ledger *const m_ledger;
    OrderBook m_orders;
    PaperExchange *const m_exchange;
};

/// What charts are told after a change.
QJsonObject changeNotification(const Order &changed);
/// The same for executions that came without an order of this module: the newest of a security.
QJsonObject changeNotification(const Execution &newest);

} // namespace TradeModule
