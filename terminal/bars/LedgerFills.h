#pragma once

#include "terminal/bars/FillCheck.h"
#include "terminal/data/Loaded.h"

#include "trading/SecurityId.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace Terminal {

using FillsBySecurity = QHash<Trading::SecurityId, std::vector<Fill>>;

/// The trades in what `trademodule trades --json` writes: an array of objects with date, code, market, price
/// and quantity, each on a line. Nothing when it is no such array, or not the whole of one.
std::optional<FillsBySecurity> fillsIn(const QByteArray &json);

/// Says that the file of a ledger is not there, which the trading module would make; else empty. A ledger in
/// a database is for the module to find.
QString missingLedger(const QString &ledger);

/// Asked several times a second while something takes its time: whether to go on.
using GoesOn = std::function<bool()>;

/// Asks the trading module, as a program of its own, for the trades in a ledger, of one code or, where it is
/// empty, of all. The ledger need not be served meanwhile, and may be. Blocks for as long as something comes,
/// half a minute without anything at most, and until `goesOn` says no: then the module is ended and this
/// fails.
Loaded<FillsBySecurity> ledgerFills(const QString &moduleProgram, const QString &ledger, const QString &code,
                                    const GoesOn &goesOn);

} // namespace Terminal
