#pragma once

#include "trademodule/ledger/ExecutionColumns.h"

namespace TradeModule::LedgerQueries {

inline QString byTime()
{
    return QStringLiteral(" ORDER BY e.trade_date, e.trade_time, e.id");
}

inline QString onlyTrades()
{
    return QStringLiteral("e.side IN ('B', 'S')");
}

/// Trades of a security (code, market) from a day to a day.
inline QString tradesOfSecurity()
{
    return QStringLiteral("SELECT ") + ExecutionColumns::ofKnownSecurity() +
           QStringLiteral(" FROM security s JOIN execution e ON e.security_id = s.id "
                          "WHERE s.code = ? AND s.market = ? AND e.trade_date BETWEEN ? AND ? "
                          "AND ") +
           onlyTrades() + byTime();
}

/// Trades of a code from a day to a day.
inline QString tradesOfCode()
{
    return QStringLiteral("SELECT ") + ExecutionColumns::withSecurity() +
           QStringLiteral(" FROM security s JOIN execution e ON e.security_id = s.id "
                          "WHERE s.code = ? AND e.trade_date BETWEEN ? AND ? AND ") +
           onlyTrades() + byTime();
}

/// Trades of all securities from a day to a day.
inline QString tradesOfDays()
{
    return QStringLiteral("SELECT ") + ExecutionColumns::withSecurity() +
           QStringLiteral(" FROM execution e JOIN security s ON e.security_id = s.id "
                          "WHERE e.trade_date BETWEEN ? AND ? AND ") +
           onlyTrades() + byTime();
}

/// Every entry of a security (its id) from a day to a day.
inline QString entriesOfSecurity()
{
    return QStringLiteral("SELECT ") + ExecutionColumns::ofKnownSecurity() +
           QStringLiteral(" FROM execution e WHERE e.security_id = ? AND e.trade_date BETWEEN ? AND ?") +
           byTime();
}

/// Entries of a security (its id), each followed by its key and its statement's, which is null for a paper
/// trade.
inline QString knownEntries(const QString &condition)
{
    return QStringLiteral("SELECT ") + ExecutionColumns::ofKnownSecurity() +
           QStringLiteral(", e.id, e.statement_id FROM execution e WHERE e.security_id = ? AND ") +
           condition + byTime();
}

/// Of some days.
inline QString knownEntriesOfDays()
{
    return knownEntries(QStringLiteral("e.trade_date BETWEEN ? AND ?"));
}

inline QString knownAllotments()
{
    return knownEntries(QStringLiteral("e.side = 'A'"));
}

} // namespace TradeModule::LedgerQueries
