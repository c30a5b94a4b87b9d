#pragma once

#include "trademodule/ledger/Execution.h"

#include <QHash>
#include <QVector>

namespace TradeModule {

/// What else the row of an execution says.
struct ListedFacts
{
    int line = 0;
    uint fingerprint = 0;    ///< of what tells two entries apart that are equal otherwise
    qint64 sharesAfter = -1; ///< -1 when the statement does not tell
};

/// A statement's entries as they are listed. Two vectors side by side: there may be millions, and the
/// executions go on to the ledger as they are.
struct ListedEntries
{
    Executions executions;
    QVector<ListedFacts> facts; ///< one for each execution

    void append(const Execution &execution, const ListedFacts &ofIt)
    {
        executions.append(execution);
        facts.append(ofIt);
    }
};

/// Puts a statement's entries in the order in which they happened.
///
/// Day and time come first. Entries of one security at the same time, or on a day without times, follow the
/// balance of shares that they tell; else their order or deal numbers; else they stay as they are listed, or
/// the other way round in a list that starts with the newest.
class DayOrder
{
public:
    /// The entries stay the caller's and outlive this object.
    explicit DayOrder(ListedEntries *entries) : m_executions(entries->executions), m_facts(entries->facts) {}

    /// To be called once. Drops rows that repeat another with the same deal number.
    void sort();

    bool isNewestFirst() const { return m_isNewestFirst; }
    int repeatedRows() const { return m_repeatedRows; }
    /// Kept: equal to another, but nothing says that they are one fill.
    int equalRows() const { return m_equalRows; }
    /// Days of a security whose order, which tells its cost, is only as listed.
    int daysAsListed() const { return m_daysAsListed; }

private:
    using Places = QVector<int>;

    void sortByTime();
    void apply();
    void noteBalance(int entry);
    bool isSame(int a, int b) const;
    uint hashOf(int entry) const;
    qint64 balanceBefore(int entry) const;
    void sortMoment(int first, int last);
    void sortBucket(const Places &places);
    void dropRepeated(const Places &places);
    bool sortByBalance(const Places &places, Places *order) const;
    bool sortByNumber(Places *order, QString Execution::*number) const;

    Executions &m_executions;
    QVector<ListedFacts> &m_facts;
    Places m_order; ///< places of the entries, in order
    QVector<bool> m_isDropped;
    QHash<SecurityId, qint64> m_lastBalance;
    bool m_isNewestFirst = false;
    int m_repeatedRows = 0;
    int m_equalRows = 0;
    int m_daysAsListed = 0;
};

} // namespace TradeModule
