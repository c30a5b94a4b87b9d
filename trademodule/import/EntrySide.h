#pragma once

#include "trademodule/import/LeftOut.h"
#include "trademodule/import/StatementRow.h"
#include "trademodule/ledger/Execution.h"

#include <optional>
#include <variant>

namespace TradeModule {

/// What the words of a statement's row say that it is.
namespace EntrySide {

/// What a client prints around the entries: sums and lines of text. Nothing for an entry.
std::optional<LeftOut> furniture(const StatementRow &row);

/// Buy, sell or bonus shares, or what else it is. An Error when it does not say.
std::variant<Side, LeftOut> of(const StatementRow &row);

} // namespace EntrySide

} // namespace TradeModule
