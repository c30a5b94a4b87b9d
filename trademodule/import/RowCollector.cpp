#include "trademodule/import/RowCollector.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trademodule/import/StatementRefused.h"
#include "trading/SecurityKind.h"
#include "trading/TradingUnits.h"

#include <QRegularExpression>

#include <algorithm>

namespace TradeModule {

namespace {

bool isDecoration(QChar character)
{
    static const QString marks = QStringLiteral("-=_*+,;|\x1A");
    return marks.contains(character) || character.isSpace();
}

/// Rules, empty lines, remarks.
bool isDecoration(const SheetRow &row)
{
    if (row.isCut) {
        return std::all_of(row.cells.begin(), row.cells.end(),
                           [](const QString &cell) { return cell.trimmed().isEmpty(); });
    }
    const QString &text = row.text;
    const auto first =
        std::find_if_not(text.begin(), text.end(), [](QChar character) { return isDecoration(character); });
    return first == text.end() || *text.begin() == QLatin1Char('#');
}

/// Entries without a quantity or a price that differ in what the account has afterwards are two.
uint fingerprintOf(const Entry &entry)
{
    return entry.cashAfter ? qHash(entry.cashAfter->steps()) : 0;
}

/// The shareholder's code counts as the account's name by its first letter: one person has one for each
/// market.
QString holderKind(const QString &holder)
{
    return holder.left(1).toUpper();
}

/// With the names that may be taught: one of them can be the column that is missed.
[[noreturn]] void refuseHeader(const StatementColumns &columns, const QString &reason)
{
    throw StatementRefused({reason, {}, {}, columns.unknownNames()});
}

/// Requires that a header has been seen.
void refuseMissingColumns(const StatementColumns &columns, const ReadOptions &options)
{
    if (!columns.has(Column::Date) && !columns.has(Column::Time) && !options.date) {
        refuseHeader(columns,
                     translated("the statement has no date column; give the day of its trades with --date"));
    }
    if (const QString name = columns.nameOfUnknownUnit(); !name.isEmpty()) {
        throw Error(translated("the unit in the name of the column %1 is not known").arg(name));
    }
    if (columns.has(Column::Date) && options.date) {
        throw Error(translated("the statement has dates of its own; leave --date out"));
    }
    if (!columns.has(Column::Code) && columns.has(Column::Price) && options.securitiesByName.isEmpty()) {
        refuseHeader(columns,
                     translated("the statement has no column of codes (证券代码); give a list of the "
                                "securities' codes and names with --securities"));
    }
    if (!columns.has(Column::Side) && !columns.has(Column::Business) && !columns.has(Column::Remark)) {
        refuseHeader(columns,
                     translated("the statement has no column that tells buys from sells (买卖标志)"));
    }
}

/// A row that ends before a column that counts.
bool isCutShort(const StatementColumns &columns, const QStringList &cells)
{
    for (const Column column :
         {Column::Date, Column::Code, Column::Side, Column::Business, Column::Price, Column::Quantity,
          Column::Amount, Column::Net, Column::Income, Column::Expense}) {
        if (columns.has(column) && columns.positionsOf(column).constFirst() >= cells.size()) {
            return true;
        }
    }
    return false;
}

/// A row with more in it than the header has names.
bool isTooLong(const StatementColumns &columns, const QStringList &cells)
{
    return std::any_of(cells.begin() + std::min<int>(columns.count(), cells.size()), cells.end(),
                       [](const QString &cell) { return !cell.trimmed().isEmpty(); });
}

bool isBelowALot(const Execution &shares)
{
    return shares.quantity < Trading::sharesOfLot &&
           shares.quantity < Trading::lotOf(Trading::kindOf(shares.security));
}

/// What an account is called, and its number.
using Title = std::pair<QString, QString>;

/// The account that a line of text names; nothing for another line.
std::optional<Title> accountInText(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("(资金[账帐][号户]|资产[账帐][号户]|客户号|客户代码|客户编号)\\s*[:：][\\s,;|\"=]*"
                       "([0-9A-Za-z*]{4,})"));
    const auto match = form.match(text);
    return match.hasMatch() ? std::optional(Title(match.captured(1), match.captured(2))) : std::nullopt;
}

/// True for a line that begins as a title does, with a word and a colon: no entry does.
bool beginsAsTitle(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^[\\s\",;|=]*\\p{Han}{2,8}\\s*[:：]"));
    return text.contains(QStringLiteral("号")) && form.match(text).hasMatch();
}

} // namespace

void RowCollector::take(const SheetRow &row)
{
    if (isDecoration(row)) {
        return;
    }
    if (takeTitle(row)) {
        return;
    }
    if (row.sheet != m_sheet) {
        beginSheet(row.sheet);
    }
    m_isSheetUsed = true;
    constexpr int linesBeforeAHeader = 200;
    const bool mayBeHeader = TableHeader::mayBeHeader(row) || (!m_header && row.line <= linesBeforeAHeader);
    if (mayBeHeader && ((m_header && m_header->isRepeatedBy(row)) || takeHeader(row))) {
        return;
    }
    if (goesOn(row)) {
        m_header = m_formerHeader;
    }
    if (m_header && !m_isInOtherTable) {
        takeEntry(row);
    }
}

/// Until the first header all lines may be one; afterwards those without digits.
bool RowCollector::takeHeader(const SheetRow &row)
{
    const bool isTable = m_header ? TableHeader::isOfAnotherTable(row, m_options.profile) : true;
    if (!isTable) {
        return false;
    }
    if (const auto header = TableHeader::of(row, m_options.profile)) {
        begin(*header);
        return true;
    }
    if (!m_header) {
        noteNearMiss(row);
    }
    if (m_header) {
        refuse(row.line, translated("another table begins here, whose columns do not tell what was traded"));
        m_isInOtherTable = true;
    }
    return m_header.has_value();
}

/// A broker's own names: of a line with three that are known the others may be taught.
void RowCollector::noteNearMiss(const SheetRow &row)
{
    constexpr int enoughNames = 3;
    const StatementColumns columns = TableHeader::columnsOf(row, m_options.profile);
    if (columns.knownNames() >= std::max(enoughNames, m_nearMiss.knownNames() + 1)) {
        m_nearMiss = columns;
    }
}

/// Each sheet has a header of its own.
void RowCollector::beginSheet(const QString &name)
{
    endSheet();
    m_sheet = name;
    m_isSheetUsed = false;
    m_isInOtherTable = false;
    m_formerHeader = m_header ? m_header : m_formerHeader;
    m_header.reset();
}

/// True of a row without a header on its sheet that is one of the sheet before: the list was too long for
/// one.
bool RowCollector::goesOn(const SheetRow &row) const
{
    if (m_header || !m_formerHeader) {
        return false;
    }
    const StatementColumns &columns = m_formerHeader->columns();
    const QStringList cells = m_formerHeader->cells(row);
    return columns.has(Column::Date) && CellValue::date(columns.cell(Column::Date, cells)) &&
           !isTooLong(columns, cells);
}

/// A sheet that tells no entries, such as one of holdings, is left out.
void RowCollector::endSheet()
{
    if (!m_sheet.isEmpty() && m_isSheetUsed && !m_header) {
        m_contents.sheetsLeftOut.append(m_sheet);
    }
}

void RowCollector::begin(const TableHeader &header)
{
    refuseMissingColumns(header.columns(), m_options);
    m_header = header;
    m_hadHeader = true;
    m_isInOtherTable = false;
    for (const QString &name : header.columns().unknownNames()) {
        if (!m_contents.unknownColumns.contains(name)) {
            m_contents.unknownColumns.append(name);
        }
    }
    m_accountColumn = header.columns().has(Column::Account) ? Column::Account : Column::Holder;
}

/// A workbook does not write the empty cells at a row's end.
QStringList RowCollector::cellsOf(const SheetRow &row) const
{
    QStringList cells = m_header->cells(row);
    while (!row.sheet.isEmpty() && cells.size() < m_header->columns().count()) {
        cells.append(QString());
    }
    return cells;
}

void RowCollector::takeEntry(const SheetRow &row)
{
    const QStringList cells = cellsOf(row);
    const StatementRow statementRow(m_header->columns(), cells, m_options.areAmountsUnsigned);
    noteSign(statementRow);
    try {
        const Entry entry = m_entries.read(statementRow);
        if (!entry.isFurniture && isCutShort(m_header->columns(), cells)) {
            throw Error(translated("the row is cut short: it has %1 cells, the header %2")
                            .arg(cells.size())
                            .arg(m_header->columns().count()));
        }
        if (!entry.isFurniture && isTooLong(m_header->columns(), cells)) {
            throw Error(translated("the row has %1 cells, the header only %2")
                            .arg(cells.size())
                            .arg(m_header->columns().count()));
        }
        if (entry.isFurniture || !isOfOtherAccount(statementRow)) {
            keep(entry, statementRow, row.line);
            m_contents.rowCount += entry.isFurniture ? 0 : 1;
        }
    } catch (const UnsignedBuy &error) {
        m_hasUnsignedBuy = true;
        refuse(row.line, error.reason(), error.column());
    } catch (const CellError &error) {
        refuse(row.line, error.reason(), error.column());
    } catch (const Error &error) {
        refuse(row.line, error.reason());
    }
    m_hasRows = true;
}

void RowCollector::noteSign(const StatementRow &row)
{
    m_hasNegativeNet = m_hasNegativeNet || row.has(Column::Expense) ||
                       CellValue::money(row.cell(Column::Net)).value_or(Money()).isNegative();
}

/// The accounts are told apart by their own column; without one by shareholder's codes of one kind.
bool RowCollector::isOfOtherAccount(const StatementRow &row)
{
    if (m_isTitleChosen) {
        return false;
    }
    const QString cell = row.cell(m_accountColumn);
    if (cell.isEmpty()) {
        return !m_options.accounts.isEmpty() && !m_titleAbove.isEmpty();
    }
    if (cell != m_lastAccountCell) {
        m_lastAccountCell = cell;
        noteAccount(CellValue::cleaned(cell));
    }
    return m_isOtherAccount;
}

/// Some statements have a table for each account, below a line that names it. Which columns name accounts is
/// not known yet: see finishAccount(). Within a table, a line is no entry when it begins as a title.
bool RowCollector::takeTitle(const SheetRow &row)
{
    constexpr int firstCells = 8;
    const QString text = row.isCut ? row.cells.mid(0, firstCells).join(QLatin1Char(' ')) : row.text;
    const bool isTitle = beginsAsTitle(text);
    const auto title = isTitle || !m_header ? accountInText(text) : std::nullopt;
    if (!title) {
        return false;
    }
    QStringList &named = m_titles[title->first];
    named += named.contains(title->second) ? QStringList() : QStringList(title->second);
    m_titleAbove[title->first] = title->second;
    m_isTitleChosen = std::any_of(m_titleAbove.begin(), m_titleAbove.end(), [this](const QString &account) {
        return m_options.accounts.contains(account);
    });
    return isTitle;
}

/// All that the statement names, in columns and titles.
QStringList RowCollector::namedAccounts() const
{
    QStringList all = m_accounts;
    for (const QStringList &titles : m_titles) {
        all += titles;
    }
    return all;
}

void RowCollector::noteAccount(const QString &account)
{
    m_isOtherAccount = !m_options.accounts.isEmpty() && !m_options.accounts.contains(account);
    if (!account.isEmpty() && !m_accounts.contains(account)) {
        m_accounts.append(account);
    }
}

void RowCollector::keep(const Entry &entry, const StatementRow &row, int line)
{
    if (!entry.isFurniture && m_contents.firstRows.size() < StatementContents::mostFirstRows) {
        m_contents.firstRows.append({line, entry});
    }
    if (entry.isReversal) {
        m_reversals.add(*entry.shares, line);
        m_contents.reversals.note(line);
        noteKind(entry, line);
        noteCash(entry, line, entry.shares->date, entry.shares->time);
    } else if (entry.shares) {
        const bool isPaidOrEntered =
            entry.kind.effect == Effect::Payment || entry.kind.effect == Effect::Entry;
        if (isPaidOrEntered && entry.shares->side == Side::Allotment) {
            m_allotments.add(entry, line); // what comes of it, other rows tell
        } else {
            noteKind(entry, line);
            keepShares(entry, line, fingerprintOf(entry));
        }
        noteName(row, *entry.shares);
        noteCash(entry, line, entry.shares->date, entry.shares->time);
    } else {
        noteKind(entry, line);
    }
    if (!entry.shares && entry.money) {
        noteCash(entry, line, entry.money->date, entry.money->time);
    }
    if (entry.money) {
        keepMoney(*entry.money);
    }
}

/// Names change by the day; the newest one counts.
void RowCollector::noteName(const StatementRow &row, const Execution &execution)
{
    const QString name = CellValue::cleaned(row.cell(Column::Name)).remove(QLatin1Char('\n'));
    const auto known = m_contents.names.find(execution.security);
    if (known != m_contents.names.end() &&
        (*known == name || execution.date < m_nameDays.value(execution.security, TradingDate::first()))) {
        return;
    }
    if (!name.isEmpty()) {
        m_contents.names.insert(execution.security, name);
        m_nameDays.insert(execution.security, execution.date);
    }
}

void RowCollector::keepShares(const Entry &entry, int line, uint fingerprint)
{
    const Execution &shares = *entry.shares;
    m_listed.append(shares, {line, fingerprint, entry.sharesAfter.value_or(-1)});
    if (shares.side == Side::In && shares.amount.isZero()) {
        m_contents.costless.note(line);
    }
    if (shares.side == Side::Buy && isOnCharts(shares.security.market)) {
        m_contents.purchases.note(line);
        if (isBelowALot(shares)) {
            m_contents.belowALot.note(line);
        }
    }
}

/// A movement with a number of its own is there once; others can be equal.
void RowCollector::keepMoney(const MoneyEntry &money)
{
    if (!money.number.isEmpty()) {
        const QString key = QStringList{money.date.text(), money.kind, money.number, money.code,
                                        QString::number(money.amount.steps())}
                                .join(QLatin1Char('|'));
        if (m_moneySeen.contains(key)) {
            ++m_contents.repeatedRows;
            return;
        }
        m_moneySeen.insert(key);
    }
    m_contents.money.append(money);
}

void RowCollector::noteCash(const Entry &entry, int line, TradingDate date, ClockTime time)
{
    if (!entry.cashAfter) {
        return;
    }
    m_cashCheck.add(line, date, entry.cash.value_or(Money()), entry.cashAfter);
    const StatedCash told{date, time, *entry.cashAfter};
    if (!m_lastCash || date > m_lastCash->date) {
        m_firstCash = told;
    }
    if (!m_lastCash || date >= m_lastCash->date) {
        m_lastCash = told;
    }
}

void RowCollector::noteKind(const Entry &entry, int line)
{
    const Outcome outcome = outcomeOf(entry);
    if (outcome == Outcome::KeptOut) {
        m_contents.shortSales.note(line);
    } else if (entry.isFeeInDoubt) {
        m_contents.feesInDoubt.note(line);
    }
    ++m_contents.kinds[outcome][QLatin1String(entry.kind.name)];
}

void RowCollector::refuse(int line, const QString &reason, const QString &column)
{
    ++m_contents.badRowCount;
    ++m_contents.rowCount;
    if (m_contents.badRows.size() < StatementContents::mostBadRows) {
        const QString place = m_sheet.isEmpty() ? reason : translated("sheet %1: %2").arg(m_sheet, reason);
        m_contents.badRows.append({line, place, column});
    }
}

StatementContents RowCollector::finish()
{
    endSheet();
    if (!m_hadHeader) {
        throw StatementRefused(
            {translated("there is no header line that names the price (成交价格), the quantity (成交数量) "
                        "and the security (证券代码); export the executed trades with their header"),
             {},
             {},
             m_nearMiss.unknownNames()});
    }
    if (m_header && !m_hasRows && !m_header->columns().has(Column::Date) && !m_options.date) {
        throw Error(translated("the statement has no date column; give the day of its trades with --date"));
    }
    finishAccount();
    finishAllotments();
    finishReversals();
    finishOrder();
    finishDays();
    m_contents.areAmountsUnsigned = m_options.areAmountsUnsigned;
    m_contents.mayBeUnsigned = m_hasUnsignedBuy && !m_hasNegativeNet;
    m_contents.unknownWords = m_entries.unknownWords();
    m_contents.cashDisagreement = m_cashCheck.disagreement();
    return std::move(m_contents);
}

void RowCollector::finishAccount()
{
    if (m_options.accounts.isEmpty()) {
        refuseSeveralAccounts();
    } else {
        refuseOtherAccounts();
    }
    m_contents.accounts = m_accounts;
    if (m_accountColumn == Column::Account) {
        m_contents.account = m_options.accounts.isEmpty() ? m_accounts.value(0)
                                                          : m_options.accounts.join(QStringLiteral(", "));
    } else {
        m_contents.holders = m_options.accounts.isEmpty() ? m_accounts : m_options.accounts;
    }
}

void RowCollector::refuseSeveralAccounts() const
{
    QHash<QString, QStringList> byKind = m_titles;
    for (const QString &account : m_accounts) {
        byKind[m_accountColumn == Column::Account ? QString() : holderKind(account)].append(account);
    }
    for (const QStringList &accounts : qAsConst(byKind)) {
        if (accounts.size() > 1) {
            throw StatementRefused(
                {translated("the statement is of several accounts, %1: import each into a ledger of its own, "
                            "with --account")
                     .arg(accounts.join(QStringLiteral(", "))),
                 {},
                 accounts});
        }
    }
}

/// An account that was mistyped would leave all rows out.
void RowCollector::refuseOtherAccounts() const
{
    const QStringList named = namedAccounts();
    for (const QString &account : m_options.accounts) {
        if (!named.isEmpty() && !named.contains(account)) {
            throw StatementRefused({translated("the statement has no entries of the account %1, only of %2")
                                        .arg(account, named.join(QStringLiteral(", "))),
                                    {},
                                    named});
        }
    }
}

void RowCollector::finishAllotments()
{
    for (const Allotments::Row &row : m_allotments.resolved()) {
        noteKind(row.entry, row.line);
        for (UnderstoodRow &first : m_contents.firstRows) {
            first = first.line == row.line ? UnderstoodRow{row.line, row.entry} : first;
        }
        if (row.entry.shares) {
            keepShares(row.entry, row.line, fingerprintOf(row.entry));
        }
        if (row.entry.money) {
            keepMoney(*row.entry.money);
        }
    }
}

void RowCollector::finishReversals()
{
    for (const Reversals::Row &row : m_reversals.takeBack(&m_listed)) {
        --m_contents.rowCount; // it is counted as one that was read
        refuse(row.line,
               translated("the row takes back %1 × %2 of %3, which no earlier row of the statement tells: "
                          "export a longer time, or undo the import that told it")
                   .arg(row.taken.quantity)
                   .arg(row.taken.price.text(), row.taken.security.code));
    }
}

/// Requires that trades and money are in order.
void RowCollector::finishDays()
{
    const auto widen = [this](TradingDate day) {
        m_contents.days = m_contents.days ? StatementContents::Days{std::min(m_contents.days->from, day),
                                                                    std::max(m_contents.days->to, day)}
                                          : StatementContents::Days{day, day};
    };
    if (!m_contents.executions.isEmpty()) {
        widen(m_contents.executions.constFirst().date);
        widen(m_contents.executions.constLast().date);
    }
    if (!m_contents.money.isEmpty()) {
        widen(m_contents.money.constFirst().date);
        widen(m_contents.money.constLast().date);
    }
}

void RowCollector::finishOrder()
{
    DayOrder order(&m_listed);
    order.sort();
    m_contents.repeatedRows += order.repeatedRows();
    m_contents.equalRows = order.equalRows();
    m_contents.daysAsListed = order.daysAsListed();
    m_contents.executions = std::move(m_listed.executions);
    m_contents.facts = std::move(m_listed.facts);
    m_contents.cash = order.isNewestFirst() ? m_firstCash : m_lastCash;
    MoneyEntries &money = m_contents.money;
    if (order.isNewestFirst()) {
        std::reverse(money.begin(), money.end());
    }
    std::stable_sort(money.begin(), money.end(), [](const MoneyEntry &a, const MoneyEntry &b) {
        return a.date != b.date ? a.date < b.date : a.time < b.time;
    });
}

} // namespace TradeModule
