#pragma once

#include "trademodule/SharedTypes.h"
#include "trademodule/import/StatementRow.h"

#include <QHash>
#include <QStringList>

#include <optional>

namespace TradeModule {

/// The security of a statement's row: by its code, or where the statement has none by its name in a list
/// that the user gave. An Error when neither can be read; nothing when it is traded on another market.
std::optional<SecurityId> securityOfRow(const StatementRow &row,
                                        const QHash<QString, SecurityId> &securitiesByName);

/// The security of a code that a person wrote: 600000, SH600000 or 600000.SH; nothing when it is none of
/// the two markets.
std::optional<SecurityId> securityOfCode(const QString &text);

/// Reads a list of securities with the columns code, market (SH or SZ) and name.
QHash<QString, SecurityId> readSecurityList(const QString &path);

} // namespace TradeModule
