#include "trademodule/ledger/ServingLock.h"

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/FileLock.h"
#include "trademodule/ledger/SessionLock.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QStandardPaths>

namespace TradeModule {

namespace {

/// Of a ledger beside which nothing may be laid: only this user's processes see each other then.
QString lockFileElsewhere(const QString &path)
{
    constexpr int digits = 16;
    const QByteArray digest = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           QStringLiteral("/trademodule-%1-serving").arg(QLatin1String(digest.left(digits)));
}

/// Beside the ledger, by whatever name that was opened.
QString lockFile(const Database &database)
{
    const QString path = QFileInfo(database.location()).canonicalFilePath();
    return database.isReadOnly() ? lockFileElsewhere(path) : path + QStringLiteral("-serving");
}

} // namespace

std::unique_ptr<ServingLock> ServingLock::of(Database *database)
{
    switch (database->kind()) {
    case Database::Kind::Sqlite:
        return std::make_unique<FileLock>(lockFile(*database));
    case Database::Kind::PostgreSql:
        return std::make_unique<SessionLock>(database);
    }
    Q_UNREACHABLE();
}

} // namespace TradeModule
