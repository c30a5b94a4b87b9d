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
    return marketOf(letters, &MarketCodes::letters);
}

std::optional<Market> marketOfNumber(const QString &number)
{
    return marketOf(number, &MarketCodes::number);
}

} // namespace Trading
