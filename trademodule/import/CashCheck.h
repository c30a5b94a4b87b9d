#pragma once

#include "trademodule/SharedTypes.h"

#include <QVector>

#include <optional>
#include <vector>

namespace TradeModule {

/// A row whose balance is not what its entry and the rows before it leave.
struct CashDisagreement
{
    int line;
    Money stated;
    Money expected;
};

/// Holds the cash that a statement tells after its entries against what the entries change, in the order of
/// the list. A day is right when some of its rows tells what the day comes to: a statement without times may
/// list a day's rows in any order.
class CashCheck
{
public:
    /// The next row of the list; rows without a balance change the cash, too.
    void add(int line, TradingDate date, Money change, std::optional<Money> balance);

    /// The first disagreement in order of time; nothing when all agrees, or days are listed in no order.
    std::optional<CashDisagreement> disagreement();

private:
    struct Row
    {
        int line;
        Money change;
        Money balance;
        bool hasBalance;
    };

    /// What remains of a day once its last row is read.
    struct Day
    {
        TradingDate date = TradingDate::first();
        Row first{};
        Row last{};
        Money change;
        QVector<qint64> balances;               ///< steps, sorted
        std::optional<CashDisagreement> inside; ///< the first row that does not follow the one before it
        std::optional<CashDisagreement> insideReversed; ///< the same when the newest is listed first
    };

    static bool follows(const Day &day, const QVector<qint64> &openings);
    static CashDisagreement firstWrong(const Day &day, std::optional<Money> opening, bool isNewestFirst);

    void endDay();

    std::vector<Row> m_rows; ///< of the day that is read
    TradingDate m_date = TradingDate::first();
    QVector<Day> m_days;
};

} // namespace TradeModule
