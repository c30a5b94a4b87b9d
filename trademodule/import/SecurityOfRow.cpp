#include "trademodule/import/SecurityOfRow.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trademodule/import/MarketWords.h"

#include <QFile>

namespace TradeModule {

namespace {

/// Everything beside the digits that tells a market.
struct Signs
{
    QString column;  ///< what the column of markets holds
    QString letters; ///< beside the digits
    QString holder;
    bool isOfHongKong = false; ///< by the kind of business
};

constexpr int digitsInHongKong = 5;

/// No spreadsheet leaves five digits with a zero before them of a code with six.
bool looksLikeHongKong(const QString &digits)
{
    return digits.size() == digitsInHongKong && digits.startsWith(QLatin1Char('0'));
}

QString padded(const QString &digits, std::optional<Market> market)
{
    return digits.rightJustified(market == Market::HongKong ? digitsInHongKong : 6, QLatin1Char('0'));
}

/// What a statement says outright.
std::optional<Market> statedMarket(const QString &digits, const Signs &signs)
{
    if (const auto market = MarketWords::marketOf(signs.column)) {
        return market;
    }
    if (const auto market = MarketWords::marketOf(signs.letters)) {
        return market;
    }
    const bool isHongKong = signs.isOfHongKong || (signs.letters.isEmpty() && looksLikeHongKong(digits));
    return isHongKong ? std::optional(Market::HongKong) : std::nullopt;
}

/// The holder's market, if there are such codes; else where they are usual.
std::optional<CodeRange> likelyRange(const QString &code, const QString &holder)
{
    if (const auto market = MarketWords::marketOfHolder(holder)) {
        if (const auto range = CodeRanges::on(*market, code)) {
            return range;
        }
    }
    return CodeRanges::of(code);
}

NamedSecurity inRange(const QString &code, const CodeRange &range)
{
    const bool isListedElsewhere = range.listed != nullptr;
    return {{isListedElsewhere ? QLatin1String(range.listed) + code.mid(3) : code, range.market}, range.kind};
}

/// True for the markets whose codes the table has all of.
bool isKnownWell(Market market)
{
    return isOnCharts(market);
}

std::optional<NamedSecurity> securityAt(Market market, const QString &code)
{
    if (const auto range = CodeRanges::on(market, code)) {
        return inRange(code, *range);
    }
    return isKnownWell(market) ? std::nullopt
                               : std::optional(NamedSecurity{{code, market}, SecurityClass::Share});
}

NamedSecurity securityOf(const QString &cell, const Signs &signs)
{
    const std::optional<CellValue::Code> code = CellValue::code(cell);
    if (!code || (!code->market.isEmpty() && !MarketWords::marketOf(code->market))) {
        throw Error(translated("\"%1\" is no code of a security").arg(CellValue::cleaned(cell)));
    }
    const std::optional<Market> market = statedMarket(code->digits, signs);
    const QString digits = padded(code->digits, market);
    if (market) {
        if (const auto security = securityAt(*market, digits)) {
            return *security;
        }
        throw Error(translated("there is no code %1 on the market %2").arg(digits, marketLetters(*market)));
    }
    if (const auto range = likelyRange(digits, signs.holder)) {
        return inRange(digits, *range);
    }
    throw Error(translated("nothing tells the market of the code %1").arg(digits));
}

SecurityId securityByName(const QString &name, const QHash<QString, SecurityId> &securitiesByName)
{
    const auto security = securitiesByName.constFind(name);
    if (security == securitiesByName.constEnd()) {
        throw Error(translated("the name \"%1\" is not in the list of securities").arg(name));
    }
    return *security;
}

SecurityClass kindOf(const SecurityId &security)
{
    const auto range = CodeRanges::on(security.market, security.code);
    return range ? range->kind : SecurityClass::Other;
}

} // namespace

NamedSecurity SecurityReader::of(const StatementRow &row, bool isOfHongKong)
{
    try {
        return found(row, isOfHongKong);
    } catch (const Error &error) {
        throw row.errorIn(row.has(Column::Code) ? Column::Code : Column::Name, error.reason());
    }
}

NamedSecurity SecurityReader::found(const StatementRow &row, bool isOfHongKong)
{
    if (!row.has(Column::Code)) {
        const SecurityId security = securityByName(CellValue::cleaned(row.cell(Column::Name)), m_byName);
        return {security, kindOf(security)};
    }
    const QString cell = row.cell(Column::Code);
    const QString key = cell + QLatin1Char('|') + row.cell(Column::Market) + QLatin1Char('|') +
                        row.cell(Column::Holder).left(2) + (isOfHongKong ? QStringLiteral("|HK") : QString());
    const auto known = m_known.constFind(key);
    if (known != m_known.constEnd()) {
        return *known;
    }
    const auto code = CellValue::code(cell);
    refuseAnotherMarket(cell, CellValue::cleaned(row.cell(Column::Market)));
    const NamedSecurity security =
        securityOf(cell, {CellValue::cleaned(row.cell(Column::Market)), code ? code->market : QString(),
                          CellValue::cleaned(row.cell(Column::Holder)), isOfHongKong});
    m_known.insert(key, security);
    return security;
}

/// Where nothing tells what the market's words mean, two of them beside one code are two securities.
void SecurityReader::refuseAnotherMarket(const QString &code, const QString &market)
{
    if (market.isEmpty() || MarketWords::marketOf(market)) {
        return;
    }
    const auto before = m_unknownMarkets.constFind(code);
    if (before != m_unknownMarkets.constEnd() && *before != market) {
        throw Error(translated("the code %1 stands beside the markets \"%2\" and \"%3\", and nothing tells "
                               "which these are")
                        .arg(CellValue::cleaned(code), *before, market));
    }
    m_unknownMarkets.insert(code, market);
}

std::optional<SecurityId> securityOfCode(const QString &text)
{
    try {
        const auto code = CellValue::code(text);
        const NamedSecurity found =
            securityOf(text, {QString(), code ? code->market : QString(), QString(), false});
        return isOnCharts(found.security.market) ? std::optional(found.security) : std::nullopt;
    } catch (const Error &) {
        return std::nullopt;
    }
}

QHash<QString, SecurityId> readSecurityList(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Error(translated("%1: cannot be read: %2").arg(path, reasonOf(file)));
    }
    QHash<QString, SecurityId> securities;
    for (int line = 1; !file.atEnd(); ++line) {
        const QStringList fields = QString::fromUtf8(file.readLine()).trimmed().split(QLatin1Char(','));
        const auto market = marketOfLetters(fields.value(1));
        const bool isRow = market && fields.size() == 3;
        if (isRow && (fields[0].size() != 6 || !CodeRanges::on(*market, fields[0]))) {
            throw Error(translated("%1:%2: there is no code %3 on the market %4")
                            .arg(path)
                            .arg(line)
                            .arg(fields[0], fields[1]));
        }
        if (isRow) {
            securities.insert(CellValue::cleaned(fields[2]), {fields[0], *market});
        } else if (line > 1) {
            throw Error(translated("%1:%2: must have the form code,market,name with market SH or SZ")
                            .arg(path)
                            .arg(line));
        }
    }
    return securities;
}

} // namespace TradeModule
