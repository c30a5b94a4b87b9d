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
    int added = 0;
    int alreadyThere = 0;
    int money = 0;
    std::optional<TradingDate> firstDay; ///< of the entries it told, those that were there already included
    std::optional<TradingDate> lastDay;
};

/// An import that was taken back.
struct UndoneImport
{
    ImportedStatement statement;
    QVector<SecurityId> securities; ///< that it had entries of
    int repeatedLater = 0;          ///< later imports that repeated entries of others, which may be gone now
};

/// The statements that were imported.
class StatementTable
{
public:
    /// The database stays the caller's and outlives this object.
    explicit StatementTable(Database *database) : m_database(database) {}

    /// Oldest first.
    QVector<ImportedStatement> all();

    /// Writes a new one and gives back its key.
    QVariant add(const Statement &statement);
    /// Writes what became of it.
    void finish(const QVariant &id, const Statement &statement, const Booked &booked);

    /// Notes the cash that a statement tells. The account's cash is what the newest balance of all says.
    void takeCash(const QVariant &id, const StatedCash &cash);

    /// An Error when there is none of this number.
    ImportedStatement find(qint64 number);

    /// The securities that a statement added entries of.
    QVector<SecurityId> securities(qint64 number);

    /// Takes a statement back as a whole: its entries, the fees that it completed, its cash. The holdings are
    /// the caller's to add up anew. An Error when there is no such statement.
    void remove(qint64 number);

private:
    void restoreFees(qint64 number);
    void restoreCash(qint64 number);

    Database *const m_database;
};

} // namespace TradeModule
