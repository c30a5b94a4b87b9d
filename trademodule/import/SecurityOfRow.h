#pragma once

#include "trademodule/import/StatementColumns.h"
#include "trademodule/ledger/Security.h"

#include <QHash>
#include <QStringList>

#include <optional>

namespace TradeModule {

/// The security of a statement's row: by its code, or where the statement has none by its name in a list
/// that the user gave. An Error when neither can be read; nothing when it is traded on another market.
std::optional<Security> securityOfRow(const StatementColumns &columns, const QStringList &cells,
                                      const QHash<QString, Security> &securitiesByName);

/// The security of a code that a person wrote: 600000, SH600000 or 600000.SH; nothing when it is none of
/// the two markets.
std::optional<Security> securityOfCode(const QString &text);

/// Reads a list of securities with the columns code, market (SH or SZ) and name.
QHash<QString, Security> readSecurityList(const QString &path);

} // namespace TradeModule
