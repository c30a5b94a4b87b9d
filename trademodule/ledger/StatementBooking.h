#pragma once

#include "trademodule/ledger/FillMatching.h"
#include "trademodule/ledger/Ledger.h"

namespace TradeModule {

/// Books one statement inside a transaction of the caller's: adds the entries that are not there yet,
/// completes fees that were not known, and brings holdings and cash up to date.
class StatementBooking
{
public:
    /// Ledger and statement stay the caller's and outlive this object.
    /// A `number` is that of a statement which the ledger knows and whose entries it has no more.
    StatementBooking(Ledger *ledger, const Statement &statement, qint64 number = 0)
        : m_ledger(ledger),
          m_database(ledger->database()),
          m_statement(statement),
          m_number(number)
    {
    }

    /// To be called once. When the result is doubtful the caller drops the transaction.
    Booked book(const Ledger::Progress &progress);

private:
    using Entries = QVector<const Execution *>;

    /// What the statement tells of one security, and where it stands in the ledger.
    struct Told
    {
        qint64 id = 0;
        bool isNew = true; ///< the ledger has no entry of it yet
        Entries entries;
    };

    QHash<SecurityId, Told> entriesBySecurity() const;
    void registerSecurities();
    Entries newEntries(const SecurityId &security, Told *told);
    void matchDays(Entries::const_iterator first, Entries::const_iterator last, const KnownEntries &known,
                   Entries *added);
    Entries notAllottedYet(const SecurityId &security, const Told &told);
    void take(const FillMatching &matching, Entries *added);
    void complete(const FillMatching::Pair &pair);
    void writeFee(const FillMatching::Pair &pair);
    void completeFee(const FillMatching::Pair &pair);
    void insert(const Entries &added, qint64 securityId);
    void updateHolding(const SecurityId &security, const Told &told, const Entries &added);
    void bookMoney();
    void reckonDividends(const MoneyEntries &added);
    void finish();
    qint64 number();

    Ledger *const m_ledger;
    Database *const m_database;
    const Statement &m_statement;
    QHash<SecurityId, Told> m_told;
    qint64 m_number;         ///< 0 before there is one
    bool m_knewDays = false; ///< the ledger had entries on days that the statement tells of
    QSqlQuery m_insertion;
    Booked m_booked;
    Ledger::Progress m_progress;
    int m_done = 0;
};

} // namespace TradeModule
