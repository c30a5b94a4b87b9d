#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/Statement.h"

#include <QDateTime>

#include <optional>

namespace TradeModule {

/// An import that the ledger remembers.
struct ImportedStatement
{
    qint64 number = 0;
    QString file;
    QDateTime importedAt; ///< UTC
    QString account;      ///< may be empty
    QStringList holders;  ///< shareholder's codes
    int added = 0;
    int alreadyThere = 0;
    int money = 0;
    QString mark;                        ///< of whoever imported it; may be empty
    std::optional<TradingDate> firstDay; ///< of the entries it told, those that were there already included
    std::optional<TradingDate> lastDay;
};

/// An import that was taken back.
struct UndoneImport
{
    ImportedStatement statement;
    QVector<SecurityId> securities; ///< that it had entries of
    int kept = 0;                   ///< of its entries: later imports told them, too
    int repeatedLater = 0; ///< later imports, of a former program, whose repeated entries may be gone
};

/// The statements that were imported.
class StatementTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit StatementTable(Database *database) : m_database(database) {}

    /// Oldest first.
    QVector<ImportedStatement> all();

    /// Writes a new one and gives back its number, which no other ever had.
    qint64 add(const Statement &statement);
    /// Writes what became of it.
    void finish(qint64 number, const Statement &statement, const Booked &booked);

    /// An Error when there is none of this number.
    ImportedStatement find(qint64 number);

    /// The securities that a statement added entries of.
    QVector<SecurityId> securities(qint64 number);

    /// Takes back a statement's entries and the fees that it completed. Holdings and cash are the caller's to
    /// reckon anew.
    void clear(qint64 number);
    /// The same, and forgets the statement.
    void remove(qint64 number);

private:
    void restoreFees(qint64 number);

    Database *const m_database;
};

} // namespace TradeModule
