// Reading the host's record of the shown security.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <QString>

namespace TradeChart {

/// The record before the first calcIt(): market number -1, all else zero.
Korvane::tagCodeWithName noSecurity();

/// True when the record names a security.
bool isSet(const Korvane::tagCodeWithName &security);

/// True when both records show the same security; only the host's identity word tells.
bool isSameSecurity(const Korvane::tagCodeWithName &one, const Korvane::tagCodeWithName &other);

/// The security code; read no further than the record reaches, should its end be missing.
QString securityCode(const Korvane::tagCodeWithName &security);

/// The trading module's code of the security's market, e.g. "SH"; empty for a market without one.
QString marketCode(const Korvane::tagCodeWithName &security);

/// Market code of an answer's "market", which counts "1" as "SH" and "2" as "SZ" - not as the host
/// numbers markets. Empty for everything else.
QString answerMarketCode(const QString &market);

} // namespace TradeChart
