#pragma once

#include "terminal/data/Loaded.h"

#include <vector>

namespace Terminal {

/// The exchanges; the numbers are those that overlays know them by.
enum class Market { Shenzhen = 0, Shanghai = 1 };

/// A tradable security.
struct Security
{
    QString code; ///< ASCII, e.g. "600519"
    Market market = Market::Shanghai;
    QString name;
};

using Securities = std::vector<Security>;

/// Reads a file of `code,market,name` with market SH or SZ; a code may stand only once.
Loaded<Securities> readSecurities(const QString &path);

/// "SH" or "SZ".
QString marketWord(Market market);

/// The security of `code`; null when there is none. Valid until the list changes.
const Security *findSecurity(const Securities &securities, const QString &code);

} // namespace Terminal
