#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace TradeModule {

/// The exchanges whose trades the ledger keeps.
enum class Market { Shanghai = 1, Shenzhen = 2 };

/// The market's letters, "SH" or "SZ": in requests and in the ledger.
QString marketLetters(Market market);
/// The market's number as text, "1" or "2": in answers and notifications.
QString marketNumber(Market market);
/// The market of its letters; letter case matters.
std::optional<Market> marketOfLetters(const QString &letters);

struct Security
{
    QString code; ///< six digits
    Market market = Market::Shanghai;

    friend bool operator==(const Security &a, const Security &b)
    {
        return a.market == b.market && a.code == b.code;
    }
    friend bool operator<(const Security &a, const Security &b)
    {
        return a.code != b.code ? a.code < b.code : a.market < b.market;
    }
    friend uint qHash(const Security &security, uint seed = 0)
    {
        return qHash(security.code, seed) ^ static_cast<uint>(security.market);
    }
};

} // namespace TradeModule
