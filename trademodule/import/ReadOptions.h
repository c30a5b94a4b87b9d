#pragma once

#include "trademodule/SharedTypes.h"

#include <QHash>
#include <QString>

#include <optional>

namespace TradeModule {

/// What a user adds to a statement that does not tell everything.
struct ReadOptions
{
    std::optional<TradingDate> date;             ///< for a statement without a date column
    QHash<QString, SecurityId> securitiesByName; ///< for a statement without a code column
};

} // namespace TradeModule
