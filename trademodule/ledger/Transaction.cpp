#include "trademodule/ledger/Transaction.h"

#include "trademodule/Error.h"

#include <QtDebug>

namespace TradeModule {

namespace {

/// Known to every process that changes ledgers: do not change.
constexpr qint64 WriterLock = 0x74726164656d6f64;

void begin(Database *database)
{
    switch (database->kind()) {
    case Database::Kind::Sqlite:
        // takes the right to write at once: a later upgrade could fail without waiting
        database->run(QStringLiteral("BEGIN IMMEDIATE"));
        return;
    case Database::Kind::PostgreSql:
        database->run(QStringLiteral("BEGIN"));
        database->run(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(WriterLock));
        return;
    }
}

} // namespace

Transaction::Transaction(Database *database) : m_database(database)
{
    begin(m_database);
}

Transaction::~Transaction()
{
    if (!m_isOpen) {
        return;
    }
    try {
        m_database->run(QStringLiteral("ROLLBACK"));
    } catch (const Error &error) {
        // the database drops what was not committed when the connection ends
        qWarning("%s", error.what());
    }
}

void Transaction::commit()
{
    m_database->run(QStringLiteral("COMMIT"));
    m_isOpen = false;
}

} // namespace TradeModule
