#pragma once

#include "trading/Market.h"

#include <QHashFunctions>
#include <QString>

#include <algorithm>

namespace Trading {

/// Names a security: the same code may stand for another one on the other market.
struct SecurityId
{
    QString code; ///< six digits; five in Hong Kong
    Market market = Market::Shanghai;

    friend bool operator==(const SecurityId &a, const SecurityId &b)
    {
        return a.market == b.market && a.code == b.code;
    }
    friend bool operator!=(const SecurityId &a, const SecurityId &b) { return !(a == b); }
    friend uint qHash(const SecurityId &security, uint seed = 0)
    {
        return ::qHash(security.code, seed) ^ (static_cast<uint>(security.market) + 1);
    }
};

/// True for what can be a code in Shanghai and Shenzhen: six digits.
inline bool isExchangeCode(const QString &code)
{
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    return code.size() == 6 && std::all_of(code.begin(), code.end(), isDigit);
}

} // namespace Trading
