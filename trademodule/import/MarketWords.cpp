#include "trademodule/import/MarketWords.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace TradeModule::MarketWords {

namespace {

struct WordsOfMarket
{
    Market market;
    QStringList letters; ///< whole words of letters
    QStringList parts;   ///< of Chinese texts
};

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '));
}

/// Looked through in order: 沪港通 is Hong Kong.
const std::vector<WordsOfMarket> &table()
{
    static const std::vector<WordsOfMarket> rows = {
        {Market::HongKong, words("HK HKEX SEHK XHKG HKG HGT SGT HONGKONG"), words("港")},
        {Market::Beijing, words("BJ BSE BJSE XBSE BEIJING"), words("北京 北交 北证 京市 京A")},
        {Market::OverTheCounter, words("OC OF OTC NQ TB NEEQ"), words("三板 股转 场外 开放式 柜台")},
        {Market::Shanghai, words("SH SS SSE SHSE SHE XSHG SHA SHB CNSESH SHANGHAI"),
         words("沪 上海 上证 上交")},
        {Market::Shenzhen, words("SZ SZE SZSE XSHE SZA SZB CNSESZ SHENZHEN"), words("深")},
    };
    return rows;
}

QStringList lettersIn(const QString &text)
{
    QStringList found{QString()};
    for (const QChar character : text.toUpper()) {
        if (character >= QLatin1Char('A') && character <= QLatin1Char('Z')) {
            found.last().append(character);
        } else if (!found.last().isEmpty()) {
            found.append(QString());
        }
    }
    return found;
}

bool names(const WordsOfMarket &row, const QString &text, const QStringList &letters)
{
    return std::any_of(row.parts.begin(), row.parts.end(),
                       [&text](const QString &part) { return text.contains(part); }) ||
           std::any_of(letters.begin(), letters.end(),
                       [&row](const QString &word) { return row.letters.contains(word); });
}

} // namespace

std::optional<Market> marketOf(const QString &text)
{
    const bool isOfBoth = text.contains(QStringLiteral("沪深")) || text.contains(QStringLiteral("深沪"));
    if (text.isEmpty() || isOfBoth) {
        return std::nullopt;
    }
    const QStringList letters = lettersIn(text);
    const auto found = std::find_if(table().begin(), table().end(),
                                    [&](const WordsOfMarket &row) { return names(row, text, letters); });
    return found == table().end() ? std::nullopt : std::optional(found->market);
}

std::optional<Market> marketOfHolder(const QString &holder)
{
    const QChar first = holder.isEmpty() ? QChar() : holder[0].toUpper();
    if (first >= QLatin1Char('A') && first <= QLatin1Char('F')) {
        return Market::Shanghai;
    }
    return first == QLatin1Char('0') ? std::optional(Market::Shenzhen) : std::nullopt;
}

} // namespace TradeModule::MarketWords
