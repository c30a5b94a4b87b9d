#pragma once

#include "terminal/data/Loaded.h"
#include "trading/SecurityId.h"

#include <vector>

namespace Terminal {

using Trading::Market;

/// A tradable security.
struct Security
{
    QString code; ///< ASCII, e.g. "600519"
    Market market = Market::Shanghai;
    QString name;

    Trading::SecurityId id() const { return {code, market}; }
};

using Securities = std::vector<Security>;

/// Reads a file of `code,market,name` with market SH or SZ; a code may stand only once.
Loaded<Securities> readSecurities(const QString &path);

/// The security of `code`; null when there is none. Valid until the list changes.
const Security *findSecurity(const Securities &securities, const QString &code);

} // namespace Terminal
