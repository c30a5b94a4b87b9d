#pragma once

#include "trademodule/ledger/Database.h"

class QSqlError;

namespace TradeModule {

/// What kind of failure a database told of.
enum class DatabaseFailure {
    Busy,      ///< another program was changing the ledger for too long
    Lost,      ///< the connection is gone, or about to go
    CannotNow, ///< no room, no right to write at present, a disk that fails: it may work again later
    Refused    ///< asked again it fails again
};

DatabaseFailure failureOf(const QSqlError &error, Database::Kind database);

} // namespace TradeModule
