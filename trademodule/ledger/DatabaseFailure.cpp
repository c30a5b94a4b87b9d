#include "trademodule/ledger/DatabaseFailure.h"

#include <QSqlError>

#include <algorithm>

namespace TradeModule {

namespace {

/// SQLite's result codes: the low byte tells the kind, the others the occasion.
DatabaseFailure ofSqlite(int code)
{
    constexpr int busy = 5;
    constexpr int diskFails = 10;
    constexpr int cannotNow[] = {6, 7, 8, 13, 14}; // locked, memory, read-only, full, cannot open
    const int kind = code & 0xFF;
    if (kind == busy) {
        return DatabaseFailure::Busy;
    }
    if (kind == diskFails) {
        return DatabaseFailure::DiskFails;
    }
    const bool isForNow = std::find(std::begin(cannotNow), std::end(cannotNow), kind) != std::end(cannotNow);
    return isForNow ? DatabaseFailure::CannotNow : DatabaseFailure::Refused;
}

/// PostgreSQL's states: two letters for the class, three for the case.
DatabaseFailure ofPostgreSql(const QString &state)
{
    struct Row
    {
        const char *beginning;
        DatabaseFailure failure;
    };
    static constexpr Row rows[] = {
        {"55P03", DatabaseFailure::Busy},   // a lock is not available
        {"57P0", DatabaseFailure::Lost},    // the server shuts down or has crashed
        {"08", DatabaseFailure::Lost},      // connection
        {"25", DatabaseFailure::CannotNow}, // nothing may be written at present, or in a failed transaction
        {"40", DatabaseFailure::CannotNow}, // rolled back for others
        {"53", DatabaseFailure::CannotNow}, // no room, memory or connections
        {"57", DatabaseFailure::CannotNow}, // cancelled, by a person or for its time
        {"58", DatabaseFailure::CannotNow}, // the system failed
    };
    const auto *const row = std::find_if(std::begin(rows), std::end(rows), [&state](const Row &candidate) {
        return state.startsWith(QLatin1String(candidate.beginning));
    });
    return row == std::end(rows) ? DatabaseFailure::Refused : row->failure;
}

} // namespace

DatabaseFailure failureOf(const QSqlError &error, Database::Kind database)
{
    switch (database) {
    case Database::Kind::Sqlite:
        return ofSqlite(error.nativeErrorCode().toInt());
    case Database::Kind::PostgreSql:
        return ofPostgreSql(error.nativeErrorCode());
    }
    Q_UNREACHABLE();
}

} // namespace TradeModule
