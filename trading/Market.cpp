#include "trading/Market.h"

#include <algorithm>
#include <iterator>

namespace Trading {

namespace {

struct MarketCodes
{
    Market market;
    QLatin1String letters;
    QLatin1String number;
};

constexpr MarketCodes marketCodes[] = {
    {Market::Shanghai, QLatin1String("SH", 2), QLatin1String("1", 1)},
    {Market::Shenzhen, QLatin1String("SZ", 2), QLatin1String("2", 1)},
    {Market::Beijing, QLatin1String("BJ", 2), QLatin1String()},
    {Market::HongKong, QLatin1String("HK", 2), QLatin1String()},
    {Market::OverTheCounter, QLatin1String("OC", 2), QLatin1String()},
};

const MarketCodes &codesOf(Market market)
{
    return *std::find_if(std::begin(marketCodes), std::end(marketCodes),
                         [market](const MarketCodes &row) { return row.market == market; });
}

std::optional<Market> marketOf(const QString &text, QLatin1String MarketCodes::*code)
{
    const auto *const row = std::find_if(std::begin(marketCodes), std::end(marketCodes),
                                         [&](const MarketCodes &codes) { return text == codes.*code; });
    return row == std::end(marketCodes) ? std::nullopt : std::optional(row->market);
}

} // namespace

QString marketLetters(Market market)
{
    return codesOf(market).letters;
}

QString marketNumber(Market market)
{
    return codesOf(market).number;
}

std::optional<Market> marketOfLetters(const QString &letters)
{
    const std::optional<Market> market = marketInLedger(letters);
    return market && isOnCharts(*market) ? market : std::nullopt;
}

std::optional<Market> marketInLedger(const QString &letters)
{
    return marketOf(letters, &MarketCodes::letters);
}

std::optional<Market> marketOfNumber(const QString &number)
{
    return number.isEmpty() ? std::nullopt : marketOf(number, &MarketCodes::number);
}

} // namespace Trading
