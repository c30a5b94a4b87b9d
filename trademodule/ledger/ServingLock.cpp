#include "trademodule/ledger/ServingLock.h"

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/FileLock.h"
#include "trademodule/ledger/SessionLock.h"

#include <QFileInfo>

namespace TradeModule {

namespace {

/// Beside the ledger, by whatever name that was opened.
QString lockFile(const QString &ledger)
{
    return QFileInfo(ledger).canonicalFilePath() + QStringLiteral("-serving");
}

} // namespace

std::unique_ptr<ServingLock> ServingLock::of(Database *database)
{
    switch (database->kind()) {
    case Database::Kind::Sqlite:
        return std::make_unique<FileLock>(lockFile(database->location()));
    case Database::Kind::PostgreSql:
        return std::make_unique<SessionLock>(database);
    }
    Q_UNREACHABLE();
}

} // namespace TradeModule
