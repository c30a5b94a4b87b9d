#pragma once

#include <QString>

namespace TradeModule::LedgerQueries {

/// What a row of one security holds: its code and market are known, and reading texts costs most.
inline QString executionColumns()
{
    return QStringLiteral("SELECT e.side, e.trade_date, e.trade_time, e.price, e.quantity, e.amount, e.fee, "
                          "e.order_no, e.deal_no");
}

/// The same for rows of several securities, with code and market at the end.
inline QString executionAndSecurityColumns()
{
    return executionColumns() + QStringLiteral(", s.code, s.market");
}

inline QString byTime()
{
    return QStringLiteral(" ORDER BY e.trade_date, e.trade_time, e.id");
}

/// Trades of a security (code, market) from a day to a day.
inline QString tradesOfSecurity()
{
    return executionColumns() +
           QStringLiteral(" FROM security s JOIN execution e ON e.security_id = s.id "
                          "WHERE s.code = ? AND s.market = ? AND e.trade_date BETWEEN ? AND ? "
                          "AND e.side <> 'G'") +
           byTime();
}

/// Trades of a code from a day to a day.
inline QString tradesOfCode()
{
    return executionAndSecurityColumns() +
           QStringLiteral(" FROM security s JOIN execution e ON e.security_id = s.id "
                          "WHERE s.code = ? AND e.trade_date BETWEEN ? AND ? AND e.side <> 'G'") +
           byTime();
}

/// Trades of all securities from a day to a day.
inline QString tradesOfDays()
{
    return executionAndSecurityColumns() +
           QStringLiteral(" FROM execution e JOIN security s ON e.security_id = s.id "
                          "WHERE e.trade_date BETWEEN ? AND ? AND e.side <> 'G'") +
           byTime();
}

/// Every entry of a security (its id) from a day to a day.
inline QString entriesOfSecurity()
{
    return executionColumns() +
           QStringLiteral(" FROM execution e WHERE e.security_id = ? AND e.trade_date BETWEEN ? AND ?") +
           byTime();
}

} // namespace TradeModule::LedgerQueries
