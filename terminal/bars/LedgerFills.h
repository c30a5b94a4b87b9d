#pragma once

#include "terminal/bars/FillCheck.h"
#include "terminal/data/Loaded.h"

#include "trading/SecurityId.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

namespace Terminal {

/// The trades of a security in what `trademodule trades --json` writes: an array of objects with date, code,
/// market, price and quantity. Nothing when it is no such array.
std::optional<std::vector<Fill>> fillsIn(const QByteArray &json, const Trading::SecurityId &security);

/// Says that the file of a ledger is not there, which the trading module would make; else empty. A ledger in
/// a database is for the module to find.
QString missingLedger(const QString &ledger);

/// Asks the trading module, as a program of its own, for the trades of a security in a ledger. The ledger
/// need not be served meanwhile, and may be. Blocks until the program has answered, half a minute at most.
Loaded<std::vector<Fill>> ledgerFills(const QString &moduleProgram, const QString &ledger,
                                      const Trading::SecurityId &security);

using FillsBySecurity = QHash<Trading::SecurityId, std::vector<Fill>>;

/// The same of all securities, read as the program writes them. Blocks for as long as something comes.
Loaded<FillsBySecurity> allLedgerFills(const QString &moduleProgram, const QString &ledger);

} // namespace Terminal
