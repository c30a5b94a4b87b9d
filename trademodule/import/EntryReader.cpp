#include "trademodule/import/EntryReader.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trading/TradingUnits.h"

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

/// A security may be called 合计科技.
bool isOfASecurity(const StatementRow &row)
{
    return row.has(Column::Date) && CellValue::date(row.cell(Column::Date)) &&
           CellValue::code(row.cell(Column::Code));
}

/// The word stands among the first cells, or anywhere in a line of no day and no security.
bool isTotalLine(const StatementRow &row)
{
    constexpr int usual = 3;
    const bool isOfAnEntry =
        !CellValue::isEmpty(row.cell(Column::Date)) || !CellValue::isEmpty(row.cell(Column::Code));
    const QStringList &cells = row.allCells();
    const int looked = isOfAnEntry ? std::min<int>(usual, cells.size()) : cells.size();
    const bool isTotal = std::any_of(cells.begin(), cells.begin() + looked,
                                     [](const QString &cell) { return Business::isTotal(cell); });
    return isTotal && !(isOfASecurity(row) && Business::isTotal(row.cell(Column::Name)));
}

/// The same row before it was taken back: what went came, and the other way round.
QStringList cellsOfTaken(const StatementRow &row)
{
    QStringList cells = row.allCells();
    while (cells.size() < row.columns().count()) { // of a row that is cut short
        cells.append(QString());
    }
    const auto change = [&](Column column, const auto &changed) {
        if (row.has(column) && !CellValue::isEmpty(row.cell(column))) {
            const double number = CellValue::number(row.cell(column)).value_or(0);
            cells[row.columns().positionsOf(column).constFirst()] = QString::number(changed(number), 'f', 4);
        }
    };
    change(Column::Quantity, [](double number) { return std::abs(number); });
    change(Column::Net, [&row](double number) { return row.areAmountsUnsigned() ? number : -number; });
    if (row.has(Column::Income) && row.has(Column::Expense)) {
        std::swap(cells[row.columns().positionsOf(Column::Income).constFirst()],
                  cells[row.columns().positionsOf(Column::Expense).constFirst()]);
    }
    return cells;
}

/// True of a line of full width with nothing but a text in one cell, whatever the column is for.
bool isOneText(const StatementRow &row)
{
    const QStringList &cells = row.allCells();
    const auto isFilled = [](const QString &cell) { return !cell.trimmed().isEmpty(); };
    const auto filled = std::find_if(cells.begin(), cells.end(), isFilled);
    return cells.size() >= row.columns().count() && filled != cells.end() &&
           std::none_of(std::next(filled), cells.end(), isFilled) && !CellValue::number(*filled) &&
           !CellValue::date(*filled);
}

/// True of a line without anything that every entry has.
bool isTextLine(const StatementRow &row)
{
    const Column ofDay = row.has(Column::Date) ? Column::Date : Column::Time;
    const bool isBare = CellValue::isEmpty(row.cell(Column::Code)) &&
                        CellValue::isEmpty(row.cell(Column::Quantity)) && !CellValue::date(row.cell(ofDay)) &&
                        (row.has(Column::Code) || !row.has(Column::Price));
    return isBare || (CellValue::isEmpty(row.cell(Column::Price)) && isOneText(row));
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

/// B shares are priced in dollars, in Shenzhen in Hong Kong's, and have codes of their own; all others are in
/// yuan.
QString currencyOfCode(const StatementRow &row)
{
    const auto code = CellValue::code(row.cell(Column::Code));
    const auto range = code ? CodeRanges::of(code->digits) : std::nullopt;
    const bool isShare = range && range->kind == SecurityClass::Share;
    if (isShare && range->market == Market::Shanghai && code->digits.startsWith(QLatin1String("900"))) {
        return QStringLiteral("USD");
    }
    const bool isOfShenzhen = isShare && range->market == Market::Shenzhen;
    return isOfShenzhen && code->digits.startsWith(QLatin1String("20")) ? QStringLiteral("HKD")
                                                                        : QStringLiteral("CNY");
}

QString currencyOf(const StatementRow &row)
{
    const QString cell = CellValue::cleaned(row.cell(Column::Currency)).toUpper();
    if (cell.isEmpty()) {
        return currencyOfCode(row);
    }
    if (cell.contains(QStringLiteral("港")) || cell.contains(QLatin1String("HKD"))) {
        return QStringLiteral("HKD");
    }
    const bool isDollar = cell.contains(QStringLiteral("美")) || cell.contains(QLatin1String("USD"));
    return isDollar ? QStringLiteral("USD") : QStringLiteral("CNY");
}

bool isYuan(const StatementRow &row)
{
    const QString code = row.cell(Column::Code);
    const bool mayBeBShare = code.contains(QLatin1String("900")) || code.contains(QLatin1String("200"));
    return (!row.has(Column::Currency) && !mayBeBShare) || currencyOf(row) == QLatin1String("CNY");
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
    const bool isSigned = row.columns().tellNet() && !row.areAmountsUnsigned();
    if (isSigned) {
        return amounts.net().value_or(Money());
    }
    const Money moved = row.columns().tellNet()                ? magnitude(amounts.net().value_or(Money()))
                        : entry.kind.effect == Effect::Nothing ? Money() // an amount that nobody paid
                                                               : amounts.statedAmount();
    return moved.isZero() || !isPaid(entry) ? moved : -moved;
}

/// A balance is counted as the quantity beside it: bonds in lots of ten, where the money has told that.
std::optional<qint64> sharesAfter(const StatementRow &row, const Entry &entry)
{
    if (!entry.shares) {
        return EntryAmounts(row).sharesAfter();
    }
    const auto range = CodeRanges::on(entry.shares->security.market, entry.shares->security.code);
    const EntryAmounts amounts(row, range ? range->kind : SecurityClass::Share);
    const auto told = amounts.sharesAfter();
    const qint64 quantity = std::abs(amounts.quantity());
    const bool areInLots = quantity > 0 && entry.shares->quantity == quantity * Trading::bondsOfLot;
    return told && areInLots ? std::optional(*told * Trading::bondsOfLot) : told;
}

/// Where no column is known to tell the amount, an unknown one may.
void refuseUnknownAmount(const StatementRow &row, const Entry &entry)
{
    if (entry.kind.effect == Effect::Nothing || row.columns().tellNet()) {
        return;
    }
    const QStringList cells = row.columns().unknownCells(row.allCells());
    for (int i = 0; i < cells.size(); ++i) {
        if (CellValue::number(cells[i]).value_or(0) != 0) {
            throw CellError(
                translated("\"%1\" moves money, but of the column %2 nobody knows what it tells: see "
                           "--suggest")
                    .arg(entry.word, row.columns().unknownNames()[i]),
                row.columns().unknownNames()[i]);
        }
    }
}

/// An order that was taken back before it was dealt has moved nothing.
bool hasBeenDealt(const StatementRow &row)
{
    const EntryAmounts amounts(row);
    return row.columns().tellNet() ? !amounts.net().value_or(Money()).isZero()
                                   : amounts.quantity() < 0 || !amounts.statedAmount().isZero();
}

/// What of a row tells that something was dealt: money, or where no column has it a price of a quantity.
bool tellsADeal(const StatementRow &row)
{
    const EntryAmounts amounts(row);
    const bool hasMoney = !amounts.net().value_or(Money()).isZero() || !amounts.statedAmount().isZero();
    const bool hasColumn = row.has(Column::Amount) || row.columns().tellNet();
    return hasColumn ? hasMoney : !amounts.price().isZero() && amounts.quantity() != 0;
}

/// Lists of orders, and some of deals, have rows of what was taken back. An Error where state and money
/// contradict each other.
bool isOfUndealtOrder(const StatementRow &row)
{
    const QString state = CellValue::cleaned(row.cell(Column::State));
    const QString flag = CellValue::cleaned(row.cell(Column::Cancelled));
    const bool isByState = Business::isUndealt(state);
    if (!isByState && !Business::isYes(flag)) {
        return false;
    }
    if (tellsADeal(row)) {
        throw row.errorIn(isByState ? Column::State : Column::Cancelled,
                          translated("\"%1\" says that nothing was dealt, but the row tells a deal: nobody "
                                     "can tell how much of it counts")
                              .arg(isByState ? state : flag));
    }
    return true;
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
    if (isOfUndealtOrder(row)) {
        return readAs({QT_TR_NOOP("orders that were not dealt"), Effect::Nothing}, QString(), row);
    }
    QStringList words;
    const BusinessKind kind = kindOf(row, &words);
    const QString word = words.isEmpty() ? QString() : words.constFirst();
    const bool isReversal = std::any_of(words.begin(), words.end(),
                                        [this](const QString &said) { return meaningOf(said).isReversal; });
    return isReversal ? readReversal(kind, word, row) : readAs(kind, word, row);
}

Entry EntryReader::readReversal(const BusinessKind &kind, const QString &word, const StatementRow &row)
{
    const bool isOfTrade = kind.effect == Effect::Buy || kind.effect == Effect::Sell;
    if (isOfTrade && !hasBeenDealt(row)) {
        return readAs({QT_TR_NOOP("cancellations"), Effect::Nothing}, word, row);
    }
    const QStringList cells = cellsOfTaken(row);
    Entry entry = readAs(kind, word, StatementRow(row.columns(), cells, row.areAmountsUnsigned()));
    entry.isReversal = entry.shares.has_value();
    if (entry.isReversal) {
        entry.kind.name = QT_TR_NOOP("reversals");
    }
    if (entry.money) {
        entry.money->amount = -entry.money->amount;
    }
    return entry;
}

Entry EntryReader::readAs(const BusinessKind &kind, const QString &word, const StatementRow &row)
{
    Entry entry;
    entry.kind = kind;
    entry.word = word;
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

const EntryReader::Meaning &EntryReader::meaningOf(const QString &word)
{
    const auto known = m_meanings.constFind(word);
    if (known != m_meanings.constEnd()) {
        return *known;
    }
    const QString taken = Business::withoutReversal(word);
    const auto kind = Business::of(taken);
    return *m_meanings.insert(word, {kind || taken == word ? kind : Business::of(word), taken != word});
}

/// A word for more than a trade comes before one for a trade: 买入 beside 配股缴款 is none.
std::optional<BusinessKind> EntryReader::kindOfWords(const StatementRow &row, const QStringList &words)
{
    std::optional<BusinessKind> trade =
        row.has(Column::Side) ? Business::ofSide(Business::plainWord(row.cell(Column::Side))) : std::nullopt;
    for (const QString &word : words) {
        const std::optional<BusinessKind> kind = meaningOf(word).kind;
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
    if (isNothing(row, Column::Quantity) && isNothing(row, Column::Price)) {
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
        refuseUnknownAmount(row, *entry);
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
        entry->sharesAfter = sharesAfter(row, *entry);
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
    entry->cash = entry->isReversal           ? Money()
                  : shares.side == Side::Sell ? shares.amount - shares.fee
                  : costsMoney(shares.side)   ? -(shares.amount + shares.fee)
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
    if (!m_date && !row.has(Column::Date)) {
        throw row.errorIn(column, translated("\"%1\" tells no day; give the day of the trades with --date")
                                      .arg(CellValue::cleaned(text)));
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
    if (*time == ClockTime()) {
        return CellValue::timeBesideDate(row.cell(Column::Date)).value_or(ClockTime());
    }
    return *time;
}

} // namespace TradeModule
