#include "trademodule/ledger/Security.h"

namespace TradeModule {

namespace {

struct MarketRow
{
    Market market;
    const char *letters;
    const char *number;
};

constexpr MarketRow MarketRows[] = {
    {Market::Shanghai, "SH", "1"},
    {Market::Shenzhen, "SZ", "2"},
};

const MarketRow &rowOf(Market market)
{
    for (const MarketRow &row : MarketRows) {
        if (row.market == market) {
            return row;
        }
    }
    Q_UNREACHABLE();
}

} // namespace

QString marketLetters(Market market)
{
    return QString::fromLatin1(rowOf(market).letters);
}

QString marketNumber(Market market)
{
    return QString::fromLatin1(rowOf(market).number);
}

std::optional<Market> marketOfLetters(const QString &letters)
{
    for (const MarketRow &row : MarketRows) {
        if (letters == QLatin1String(row.letters)) {
            return row.market;
        }
    }
    return std::nullopt;
}

} // namespace TradeModule
