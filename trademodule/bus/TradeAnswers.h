#pragma once

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
    enum ErrorCode { NoError = 0, NotUnderstood = 1, LedgerFailed = 2 };

    /// The ledger stays the caller's and outlives this object.
    explicit TradeAnswers(Ledger *ledger) : m_ledger(ledger) {}

    QJsonObject answer(const QJsonObject &question);

    /// The answer to what is no JSON object.
    static QJsonObject refusal(const QString &reason);

private:
    using Answer = void (TradeAnswers::*)(const TradeRequest &, QJsonObject *) const;
    struct Command;
    static const Command *findCommand(const QString &name);

    void answerCost(const TradeRequest &request, QJsonObject *answer) const;
    void answerToday(const TradeRequest &request, QJsonObject *answer) const;
    void answerHistory(const TradeRequest &request, QJsonObject *answer) const;

    Ledger *const m_ledger;
};

/// What charts are told after a change: the security and its newest order.
QJsonObject tradeNotification(const Execution &newest);

} // namespace TradeModule
