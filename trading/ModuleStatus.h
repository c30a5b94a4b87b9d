#pragma once

#include "trading/ClockTime.h"
#include "trading/Presence.h"
#include "trading/SecurityId.h"
#include "trading/TradingDate.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <chrono>
#include <optional>

namespace Trading {

/// How a serving trading module stands, for who watches over it: the "data" of its answer to MODULESTATUS.
/// Counts are those since it began to serve.
struct ModuleStatus
{
    /// What one command was answered, and how long that took.
    struct Answers
    {
        QString command;
        qint64 count = 0;
        qint64 failures = 0; ///< of them
        std::chrono::microseconds taken{0};
        std::chrono::microseconds longest{0};
    };

    /// The quote that was heard last.
    struct LastQuote
    {
        SecurityId security;
        TradingDate date;
        ClockTime time;  ///< up to when its bar is told
        QDateTime heard; ///< in UTC
    };

    TradePresence module;   ///< who serves, and what
    QString ledgerTrouble;  ///< why the ledger cannot be used at present; empty when it can
    qint64 openOrders = -1; ///< of all securities; -1 while the ledger cannot be used
    qint64 quotes = 0;
    qint64 waitingQuotes = 0; ///< that are not dealt yet
    std::optional<LastQuote> lastQuote = {};
    QVector<Answers> answers = {}; ///< by command

    QJsonObject toJson() const;
    /// Nothing for what does not tell who serves. Other fields that are missing, of another kind than they
    /// must be, below 0 or beyond 2^53 count as not said.
    static std::optional<ModuleStatus> ofJson(const QJsonObject &object);
};

} // namespace Trading
