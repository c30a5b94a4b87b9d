#pragma once

#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

namespace TradeModule {

class Database;

/// What a statement gives, row by row: read forwards, once, and before the next statement of the database,
/// which outlives it.
class Rows
{
public:
    Rows(Database *database, const QSqlQuery &query) : m_database(database), m_query(query) {}

    /// Goes to the next row, at first to the first one; false after the last. A row that cannot be read is a
    /// LedgerError: a list that ends early would be taken for a whole one.
    bool next();

    /// Of the row that was gone to.
    QVariant value(int column) const { return m_query.value(column); }

    /// What the columns are called.
    QSqlRecord record() const { return m_query.record(); }

    /// No more is read: so that what is read can be changed.
    void finish() { m_query.finish(); }

private:
    Database *m_database;
    QSqlQuery m_query;
};

} // namespace TradeModule
