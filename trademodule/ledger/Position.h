#pragma once

#include "trademodule/ledger/Holding.h"

#include <QString>

namespace TradeModule {

/// A security that is held.
struct Position
{
    SecurityId security;
    QString name;
    Holding holding;
};

} // namespace TradeModule
