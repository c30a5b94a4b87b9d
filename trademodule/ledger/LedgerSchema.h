#pragma once

#include "trademodule/ledger/Database.h"

namespace TradeModule {

/// The version of the tables that this program reads and writes.
int currentSchemaVersion();

/// The version of the tables in the database; 0 when it has none yet.
int schemaVersion(Database *database);

/// Brings the tables to currentSchemaVersion(), step by step in one transaction: one that fails leaves
/// everything as it was. An Error when the ledger was made by a newer program. A ledger of an older one is
/// copied aside first, see copyAside().
void migrateSchema(Database *database);
/// The same inside a transaction of the caller's, without a copy; requires UncheckedReferences around it.
void migrateWithin(Database *database);
/// The same up to an older version, to make a ledger as an older program did.
void migrateSchema(Database *database, int to);

} // namespace TradeModule
