#pragma once

#include "trademodule/ledger/Database.h"

namespace TradeModule {

/// Copies a ledger that is a file to a new file beside it, its owner's alone, named after the version of its
/// tables: `FILE.version-4`, with a number after it where that is taken. Nothing where the ledger is a
/// server's, whose migration is one transaction. A LedgerError when there is no copy. Gives the name of the
/// copy, empty when none was needed.
QString copyAside(Database *database, int version);

} // namespace TradeModule
