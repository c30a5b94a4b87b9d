#pragma once

#include "trademodule/ledger/Database.h"

class QSqlError;

namespace TradeModule {

/// What kind of failure a database told of.
enum class DatabaseFailure {
    Busy,      ///< another program was changing the ledger for too long
    Lost,      ///< the connection is gone, or about to go
    CannotNow, ///< no room, no right to write at present: it may work again later
    DiskFails, ///< likewise, but what was being written may be there all the same
    Refused    ///< asked again it fails again
};

DatabaseFailure failureOf(const QSqlError &error, Database::Kind database);

} // namespace TradeModule
