#pragma once

#include "trading/Market.h"

#include <QHashFunctions>
#include <QString>

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

} // namespace Trading
