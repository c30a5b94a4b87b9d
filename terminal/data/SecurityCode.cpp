#include "terminal/data/SecurityCode.h"

#include "trading/CodeRanges.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

struct MarketWord
{
    QLatin1String word;
    Trading::Market market;
};

constexpr MarketWord marketWords[] = {
    {QLatin1String("SH", 2), Trading::Market::Shanghai},
    {QLatin1String("SS", 2), Trading::Market::Shanghai},
    {QLatin1String("SSE", 3), Trading::Market::Shanghai},
    {QLatin1String("SHSE", 4), Trading::Market::Shanghai},
    {QLatin1String("XSHG", 4), Trading::Market::Shanghai},
    {QLatin1String("SZ", 2), Trading::Market::Shenzhen},
    {QLatin1String("SZE", 3), Trading::Market::Shenzhen},
    {QLatin1String("SZSE", 4), Trading::Market::Shenzhen},
    {QLatin1String("XSHE", 4), Trading::Market::Shenzhen},
};

std::optional<Trading::Market> marketOfWord(const QString &word)
{
    const auto *const row = std::find_if(std::begin(marketWords), std::end(marketWords),
                                         [&word](const MarketWord &known) { return word == known.word; });
    return row == std::end(marketWords) ? std::nullopt : std::optional(row->market);
}

/// The text without what spreadsheets need to keep leading zeros: ="000001", '000001.
QString bare(QString text)
{
    static const QRegularExpression wrapping(QStringLiteral("[\"'=\\s]"));
    return text.remove(wrapping).toUpper();
}

} // namespace

std::optional<SecurityCode> SecurityCode::of(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:([A-Z]{2,4})[.#:_-]?)?(\\d{6})(?:[.#:_-]?([A-Z]{2,4}))?$"));
    const QRegularExpressionMatch match = form.match(bare(text));
    const QString word = match.captured(1) + match.captured(3);
    const auto market = marketOfWord(word);
    if (!match.hasMatch() || (!word.isEmpty() && !market)) {
        return std::nullopt;
    }
    return SecurityCode{match.captured(2), market};
}

Trading::SecurityKind SecurityCode::kind() const
{
    const auto usual = Trading::CodeRanges::of(digits);
    const Trading::Market usualMarket = usual ? usual->market : Trading::Market::Shanghai;
    return Trading::kindOf({digits, market.value_or(usualMarket)});
}

QString SecurityCode::text() const
{
    return market ? digits + QLatin1Char('.') + Trading::marketLetters(*market) : digits;
}

} // namespace Terminal
