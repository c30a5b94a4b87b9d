#include "trademodule/import/EntryReader.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"

#include <algorithm>

namespace TradeModule {

namespace {

bool isNothing(const StatementRow &row, Column column)
{
    return CellValue::number(row.cell(column)).value_or(1.0) == 0.0;
}

bool isMoneyless(const StatementRow &row)
{
    return isNothing(row, Column::Price) || isNothing(row, Column::Quantity);
}

bool isTotalLine(const StatementRow &row)
{
    constexpr int looked = 3;
    const QStringList &cells = row.allCells();
    return std::any_of(cells.begin(), cells.begin() + std::min<int>(looked, cells.size()),
                       [](const QString &cell) { return Business::isTotal(cell); });
}

/// True of a line without anything that every entry has.
bool isTextLine(const StatementRow &row)
{
    const Column ofDay = row.has(Column::Date) ? Column::Date : Column::Time;
    return CellValue::isEmpty(row.cell(Column::Code)) && CellValue::isEmpty(row.cell(Column::Quantity)) &&
           !CellValue::date(row.cell(ofDay)) && (row.has(Column::Code) || !row.has(Column::Price));
}

Entry furniture(const char *kind)
{
    Entry entry;
    entry.kind = {kind, Effect::Nothing};
    entry.isFurniture = true;
    return entry;
}

/// An order's or deal's number; zeros stand for none.
QString numberText(const StatementRow &row, Column column)
{
    constexpr int longestNumberText = 64; // the ledger's index holds them
    const QString cell = row.cell(column);
    const std::optional<QString> text = CellValue::serialNumber(cell);
    if (!text) {
        throw row.errorIn(
            column,
            translated("the column %1 holds \"%2\": a spreadsheet has dropped digits of it; export the "
                       "statement anew, or have that column saved as text")
                .arg(row.columns().nameOf(column), CellValue::cleaned(cell)));
    }
    if (text->size() > longestNumberText) {
        throw row.errorIn(
            column,
            translated("\"%1…\" is longer than the %2 characters that an order or deal number may have")
                .arg(text->left(longestNumberText))
                .arg(longestNumberText));
    }
    const bool isNone = std::all_of(text->begin(), text->end(), [](QChar character) {
        return character == QLatin1Char('0') || character == QLatin1Char('-');
    });
    return isNone ? QString() : *text;
}

QString currencyOf(const StatementRow &row)
{
    const QString cell = CellValue::cleaned(row.cell(Column::Currency)).toUpper();
    if (cell.contains(QStringLiteral("港")) || cell.contains(QLatin1String("HKD"))) {
        return QStringLiteral("HKD");
    }
    const bool isDollar = cell.contains(QStringLiteral("美")) || cell.contains(QLatin1String("USD"));
    return isDollar ? QStringLiteral("USD") : QStringLiteral("CNY");
}

bool isYuan(const StatementRow &row)
{
    return !row.has(Column::Currency) || currencyOf(row) == QLatin1String("CNY");
}

/// True when the kind says that the account paid. An Error when it does not say which way money went.
bool isPaid(const Entry &entry)
{
    switch (entry.kind.effect) {
    case Effect::MoneyOut:
    case Effect::Application:
    case Effect::Payment:
    case Effect::SharesIn:
    case Effect::Buy:
        return true;
    case Effect::MoneyIn:
    case Effect::Redemption:
    case Effect::SharesOut:
    case Effect::Sell:
        return false;
    case Effect::Repo:
        return !entry.word.contains(QStringLiteral("购回")) && !entry.word.contains(QStringLiteral("到期"));
    case Effect::Nothing:
    case Effect::Money:
    case Effect::Split:
    case Effect::Shares:
    case Effect::Conversion:
    case Effect::Entry:
    case Effect::ShortSale:
        break;
    }
    throw Error(
        translated("\"%1\" does not say whether money came or went, and no sign does").arg(entry.word));
}

/// What an entry without shares changed: negative when the account paid.
Money movedMoney(const EntryAmounts &amounts, const StatementRow &row, const Entry &entry)
{
    const bool isSigned = row.has(Column::Net) && !row.areAmountsUnsigned();
    if (isSigned) {
        return amounts.net().value_or(Money());
    }
    const Money moved = row.has(Column::Net)                   ? magnitude(amounts.net().value_or(Money()))
                        : entry.kind.effect == Effect::Nothing ? Money() // an amount that nobody paid
                                                               : amounts.statedAmount();
    return moved.isZero() || !isPaid(entry) ? moved : -moved;
}

} // namespace

Entry EntryReader::read(const StatementRow &row)
{
    if (isTotalLine(row)) {
        return furniture(QT_TR_NOOP("totals"));
    }
    if (isTextLine(row)) {
        return furniture(QT_TR_NOOP("lines of text"));
    }
    Entry entry = readEntry(row);
    readBalances(row, &entry);
    return entry;
}

Entry EntryReader::readEntry(const StatementRow &row)
{
    Entry entry;
    QStringList words;
    entry.kind = kindOf(row, &words);
    entry.word = words.isEmpty() ? QString() : words.constFirst();
    switch (entry.kind.effect) {
    case Effect::ShortSale:
        return entry;
    case Effect::Nothing:
    case Effect::MoneyIn:
    case Effect::MoneyOut:
    case Effect::Money:
    case Effect::Repo:
        readMoney(row, &entry);
        return entry;
    case Effect::Buy:
    case Effect::Sell:
    case Effect::Split:
    case Effect::SharesIn:
    case Effect::SharesOut:
    case Effect::Shares:
    case Effect::Conversion:
    case Effect::Payment:
    case Effect::Entry:
    case Effect::Application:
    case Effect::Redemption:
        readShares(row, &entry);
        return entry;
    }
    Q_UNREACHABLE();
}

/// Everything that says what the entry is. A remark is heard only where nothing was traded or no other
/// column tells the side: elsewhere it is the user's own note.
QStringList EntryReader::wordsOf(const StatementRow &row) const
{
    QStringList found = row.cells(Column::Side) + row.cells(Column::Business);
    if (row.has(Column::Remark) &&
        (isMoneyless(row) || !(row.has(Column::Side) || row.has(Column::Business)))) {
        found += row.cells(Column::Remark);
    }
    for (QString &word : found) {
        word = m_options.profile.wordFor(Business::plainWord(word));
    }
    found.removeAll(QString());
    return found;
}

std::optional<BusinessKind> EntryReader::kindOfWord(const QString &word)
{
    const auto known = m_kinds.constFind(word);
    if (known != m_kinds.constEnd()) {
        return *known;
    }
    return *m_kinds.insert(word, Business::of(word));
}

/// A word for more than a trade comes before one for a trade: 买入 beside 配股缴款 is none.
std::optional<BusinessKind> EntryReader::kindOfWords(const StatementRow &row, const QStringList &words)
{
    std::optional<BusinessKind> trade =
        row.has(Column::Side) ? Business::ofSide(Business::plainWord(row.cell(Column::Side))) : std::nullopt;
    for (const QString &word : words) {
        const std::optional<BusinessKind> kind = kindOfWord(word);
        if (kind && kind->effect != Effect::Buy && kind->effect != Effect::Sell) {
            return kind;
        }
        trade = trade ? trade : kind;
    }
    return trade;
}

BusinessKind EntryReader::kindOf(const StatementRow &row, QStringList *words)
{
    *words = wordsOf(row);
    if (const auto kind = kindOfWords(row, *words)) {
        return *kind;
    }
    if (isNothing(row, Column::Quantity)) {
        return Business::otherMoney();
    }
    for (const QString &word : *words) {
        if (!m_unknownWords.contains(word)) {
            m_unknownWords.append(word);
        }
    }
    throw row.errorIn(row.has(Column::Side) ? Column::Side : Column::Business,
                      translated("\"%1\" says neither buy nor sell").arg(words->join(QLatin1Char(' '))));
}

Execution EntryReader::begin(const StatementRow &row, const NamedSecurity &security, Side side)
{
    Execution execution{security.security, side, dateOf(row), timeOf(row)};
    execution.orderNo = numberText(row, Column::OrderNo);
    execution.dealNo = numberText(row, Column::DealNo);
    return execution;
}

void EntryReader::readMoney(const StatementRow &row, Entry *entry)
{
    const Money amount = movedMoney(EntryAmounts(row), row, *entry);
    if (amount.isZero()) {
        return;
    }
    MoneyEntry money;
    money.date = dateOf(row);
    money.time = timeOf(row);
    money.kind = QLatin1String(entry->kind.name);
    money.amount = amount;
    money.currency = currencyOf(row);
    const auto code = CellValue::code(row.cell(Column::Code));
    money.code = code ? code->digits : QString();
    money.note = entry->word;
    const QString deal = numberText(row, Column::DealNo);
    money.number = deal.isEmpty() ? numberText(row, Column::OrderNo) : deal;
    entry->money = money;
}

void EntryReader::readBalances(const StatementRow &row, Entry *entry)
{
    if (row.has(Column::SharesAfter)) {
        entry->sharesAfter = EntryAmounts(row).sharesAfter();
    }
    const bool isPlainTrade = entry->shares && isTrade(entry->shares->side);
    if (!isYuan(row) || (isPlainTrade && !row.has(Column::CashAfter))) {
        return;
    }
    const EntryAmounts amounts(row);
    entry->cashAfter = amounts.cashAfter();
    if (!row.areAmountsUnsigned()) {
        entry->cash = amounts.net();
    } else if (entry->money) {
        entry->cash = entry->money->amount;
    }
    if (entry->cash || !entry->shares || (!isPlainTrade && !row.areAmountsUnsigned())) {
        return;
    }
    const Execution &shares = *entry->shares;
    entry->cash = shares.side == Side::Sell ? shares.amount - shares.fee
                  : costsMoney(shares.side) ? -(shares.amount + shares.fee)
                                            : Money();
}

TradingDate EntryReader::dateOf(const StatementRow &row)
{
    const Column column = row.has(Column::Date) ? Column::Date : Column::Time;
    const QString text = row.cell(column);
    if (!m_date || text != m_dateCell) {
        m_date = CellValue::date(text);
        m_dateCell = text;
    }
    if (!row.has(Column::Date) && m_options.date) {
        if (m_date) {
            throw row.errorIn(
                column,
                translated("the row has a date of its own, %1; leave --date out").arg(m_date->number()));
        }
        return *m_options.date;
    }
    if (!m_date) {
        throw row.errorIn(column, translated("\"%1\" is no date").arg(CellValue::cleaned(text)));
    }
    if (*m_date > TradingDate::today()) {
        throw row.errorIn(column, translated("the date %1 is in the future").arg(m_date->number()));
    }
    return *m_date;
}

ClockTime EntryReader::timeOf(const StatementRow &row) const
{
    const QString text = row.cell(Column::Time);
    const std::optional<ClockTime> time = CellValue::time(text);
    if (!time) {
        throw row.errorIn(Column::Time, translated("\"%1\" is no time").arg(CellValue::cleaned(text)));
    }
    if (*time == ClockTime() && !row.has(Column::Time)) {
        return CellValue::timeBesideDate(row.cell(Column::Date)).value_or(ClockTime());
    }
    return *time;
}

} // namespace TradeModule
