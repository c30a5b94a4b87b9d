#pragma once

#include "trademodule/SharedTypes.h"
#include "trading/Quote.h"

#include <QJsonObject>

namespace TradeModule {

using Trading::Quote;

/// Reads a quote; an Error names the field that does not hold what it must.
Quote readQuote(const QJsonObject &object);

} // namespace TradeModule
