#pragma once

#include "trademodule/import/StatementContents.h"

#include <functional>

namespace TradeModule {

/// A row after which a statement tells another holding than the ledger has.
struct HoldingDisagreement
{
    SecurityId security;
    int line = 0;
    qint64 stated = 0;
    qint64 computed = 0;
    int securities = 0; ///< how many disagree
};

/// Holds the shares that a statement tells after its entries against the ledger.
namespace HoldingsCheck {

/// What the ledger holds of a security before a day.
using HeldBefore = std::function<qint64(const SecurityId &security, TradingDate day)>;

/// The first row of the statement that disagrees. A day agrees whose last balance does, or that tells its
/// closing balance on each of its rows.
std::optional<HoldingDisagreement> of(const StatementContents &contents, const HeldBefore &heldBefore);

} // namespace HoldingsCheck

} // namespace TradeModule
