#include "trademodule/import/SecurityOfRow.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"

#include <QFile>

#include <vector>

namespace TradeModule {

namespace {

enum class Venue { Shanghai, Shenzhen, Elsewhere };

struct VenueRow
{
    Venue venue;
    QStringList texts;
};

using VenueTable = std::vector<VenueRow>;

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '));
}

/// Parts of what stands in a market column or beside a code. 沪港通 is Hong Kong, so that comes first.
const VenueTable &venueWords()
{
    static const VenueTable table = {
        {Venue::Elsewhere, words("港 HK 京 北 三板 股转 BJ")},
        {Venue::Shanghai, words("沪 上海 上证 SH SS XSHG")},
        {Venue::Shenzhen, words("深 SZ XSHE")},
    };
    return table;
}

/// First characters of shareholder's codes.
const VenueTable &holderStarts()
{
    static const VenueTable table = {
        {Venue::Shanghai, words("A B C D E F")},
        {Venue::Shenzhen, words("0")},
    };
    return table;
}

/// First digits of codes; the longer ones before what they start with.
const VenueTable &codeStarts()
{
    static const VenueTable table = {
        {Venue::Elsewhere, words("4 8 92")},
        {Venue::Shanghai, words("6 5 90 110 111 113 118 132 204 7")},
        {Venue::Shenzhen, words("0 3 1 2")},
    };
    return table;
}

std::optional<Venue> venueContaining(const QString &text)
{
    for (const VenueRow &row : venueWords()) {
        for (const QString &part : row.texts) {
            if (text.contains(part, Qt::CaseInsensitive)) {
                return row.venue;
            }
        }
    }
    return std::nullopt;
}

std::optional<Venue> venueStarting(const VenueTable &table, const QString &text)
{
    for (const VenueRow &row : table) {
        for (const QString &start : row.texts) {
            if (text.startsWith(start)) {
                return row.venue;
            }
        }
    }
    return std::nullopt;
}

/// The market's word if there is one, else the holder, else the code. A bare number in the market column
/// says nothing: brokers do not agree on its meaning.
std::optional<Venue> venueOf(const CellValue::Code &code, const StatementRow &row)
{
    const QString column = CellValue::cleaned(row.cell(Column::Market));
    if (const auto venue = venueContaining(column)) {
        return venue;
    }
    if (const auto venue = venueContaining(code.market)) {
        return venue;
    }
    const QString holder = CellValue::cleaned(row.cell(Column::Holder));
    if (const auto venue = venueStarting(holderStarts(), holder.toUpper())) {
        return venue;
    }
    return venueStarting(codeStarts(), code.digits);
}

std::optional<SecurityId> securityAt(std::optional<Venue> venue, const QString &code)
{
    if (!venue || *venue == Venue::Elsewhere || code.size() != 6) {
        return std::nullopt;
    }
    return SecurityId{code, *venue == Venue::Shanghai ? Market::Shanghai : Market::Shenzhen};
}

SecurityId securityByName(const QString &name, const QHash<QString, SecurityId> &securitiesByName)
{
    const auto security = securitiesByName.constFind(name);
    if (security == securitiesByName.constEnd()) {
        throw Error(translated("the name \"%1\" is not in the list of securities").arg(name));
    }
    return *security;
}

} // namespace

std::optional<SecurityId> securityOfRow(const StatementRow &row,
                                        const QHash<QString, SecurityId> &securitiesByName)
{
    if (!row.has(Column::Code)) {
        return securityByName(CellValue::cleaned(row.cell(Column::Name)), securitiesByName);
    }
    const QString cell = row.cell(Column::Code);
    const std::optional<CellValue::Code> code = CellValue::code(cell);
    if (!code) {
        throw Error(translated("\"%1\" is no code of a security").arg(CellValue::cleaned(cell)));
    }
    return securityAt(venueOf(*code, row), code->digits);
}

std::optional<SecurityId> securityOfCode(const QString &text)
{
    const std::optional<CellValue::Code> code = CellValue::code(text);
    const StatementColumns columns; // none: the code alone tells the market
    return code ? securityAt(venueOf(*code, StatementRow(columns, {})), code->digits) : std::nullopt;
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
        if (market && fields.size() == 3) {
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
