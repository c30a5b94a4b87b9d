#include "trademodule/ledger/UncheckedReferences.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

namespace TradeModule {

namespace {

bool isSqlite(const Database &database)
{
    return database.kind() == Database::Kind::Sqlite;
}

} // namespace

UncheckedReferences::UncheckedReferences(Database *database) : m_database(database)
{
    if (isSqlite(*m_database)) {
        m_database->run(QStringLiteral("PRAGMA foreign_keys = OFF"));
    }
}

UncheckedReferences::~UncheckedReferences()
{
    try {
        if (isSqlite(*m_database)) {
            m_database->run(QStringLiteral("PRAGMA foreign_keys = ON"));
        }
    } catch (const Error &error) {
        qWarning("%s", error.what());
    }
}

void UncheckedReferences::refuseBroken(Database *database)
{
    if (!isSqlite(*database)) {
        return;
    }
    Rows broken = database->run(QStringLiteral("PRAGMA foreign_key_check"));
    if (broken.next()) {
        throw LedgerError(translated("a row of the ledger's table %1 refers to one of %2 that is not there")
                              .arg(broken.value(0).toString(), broken.value(2).toString()));
    }
}

} // namespace TradeModule
