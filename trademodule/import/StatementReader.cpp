#include "trademodule/import/StatementReader.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trademodule/import/EntryKind.h"
#include "trademodule/import/SecurityOfRow.h"
#include "trademodule/import/StatementColumns.h"
#include "trademodule/import/StatementLine.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <memory>

namespace TradeModule {

namespace {

/// Thrown for an entry that is no trade; carries its kind.
struct LeftOut
{
    QString kind;
};

/// Reads one row after the other under a header.
class RowReader
{
public:
    RowReader(const StatementColumns &columns, const ReadOptions &options)
        : m_columns(columns),
          m_options(options)
    {
    }

    Execution read(const QStringList &cells) const;

private:
    QString cell(Column column, const QStringList &cells) const { return m_columns.cell(column, cells); }
    double number(Column column, const QStringList &cells, const char *what) const;
    Money money(Column column, const QStringList &cells, const char *what) const;
    Money sum(Column column, const QStringList &cells, const char *what) const;
    QStringList wordsOf(const QStringList &cells) const;
    void refuseFurniture(const QStringList &cells) const;
    bool isMoneyless(const QStringList &cells) const;
    Side sideOf(const QStringList &cells) const;
    qint64 quantityOf(const QStringList &cells, Side side) const;
    Money priceOf(const QStringList &cells, Side side) const;
    Money amountOf(const QStringList &cells, const Execution &execution) const;
    Money feeOf(const QStringList &cells, const Execution &execution) const;
    Money listedFees(const QStringList &cells) const;
    TradingDate dateOf(const QStringList &cells) const;
    ClockTime timeOf(const QStringList &cells) const;
    QString numberText(Column column, const QStringList &cells) const;

    const StatementColumns &m_columns;
    const ReadOptions &m_options;
};

Execution RowReader::read(const QStringList &cells) const
{
    refuseFurniture(cells);
    const Side side = sideOf(cells);
    const qint64 quantity = quantityOf(cells, side);
    const Money price = priceOf(cells, side);
    const auto security = securityOfRow(m_columns, cells, m_options.securitiesByName);
    if (!security) {
        throw LeftOut{translated("other markets")};
    }
    Execution execution{*security, side, dateOf(cells), timeOf(cells), price, quantity};
    execution.orderNo = numberText(Column::OrderNo, cells);
    execution.dealNo = numberText(Column::DealNo, cells);
    if (execution.side != Side::Bonus) {
        execution.amount = amountOf(cells, execution);
        execution.fee = feeOf(cells, execution);
    }
    return execution;
}

double RowReader::number(Column column, const QStringList &cells, const char *what) const
{
    const QString text = cell(column, cells);
    const std::optional<double> value = CellValue::number(text);
    if (!value) {
        throw Error(translated("the %1 \"%2\" is no number").arg(translated(what), CellValue::cleaned(text)));
    }
    return *value;
}

Money RowReader::money(Column column, const QStringList &cells, const char *what) const
{
    const std::optional<Money> value = Money::ofYuan(number(column, cells, what));
    if (!value) {
        throw Error(translated("the %1 \"%2\" is too large")
                        .arg(translated(what), CellValue::cleaned(cell(column, cells))));
    }
    return *value;
}

Money RowReader::sum(Column column, const QStringList &cells, const char *what) const
{
    Money total;
    for (const QString &text : m_columns.cells(column, cells)) {
        const std::optional<Money> value = CellValue::money(text);
        if (!value) {
            throw Error(
                translated("the %1 \"%2\" is no number").arg(translated(what), CellValue::cleaned(text)));
        }
        total = total + *value;
    }
    return total;
}

/// Everything that says what the entry is. A remark is heard only where nothing was traded or no other
/// column tells the side: elsewhere it is the user's own note.
QStringList RowReader::wordsOf(const QStringList &cells) const
{
    QStringList found = m_columns.cells(Column::Side, cells) + m_columns.cells(Column::Business, cells);
    if (isMoneyless(cells) || !(m_columns.has(Column::Side) || m_columns.has(Column::Business))) {
        found += m_columns.cells(Column::Remark, cells);
    }
    for (QString &word : found) {
        word = EntryKind::plainWord(word);
    }
    found.removeAll(QString());
    return found;
}

bool RowReader::isMoneyless(const QStringList &cells) const
{
    const auto isNothing = [this, &cells](Column column) {
        return CellValue::number(cell(column, cells)).value_or(1.0) == 0.0;
    };
    return isNothing(Column::Price) || isNothing(Column::Quantity);
}

/// Lines that a client prints around the entries.
void RowReader::refuseFurniture(const QStringList &cells) const
{
    const QStringList firstCells = cells.mid(0, 3);
    if (std::any_of(firstCells.begin(), firstCells.end(), &EntryKind::isTotal)) {
        throw LeftOut{translated("totals")};
    }
    const bool hasEntry = !CellValue::isEmpty(cell(Column::Code, cells)) ||
                          !CellValue::isEmpty(cell(Column::Quantity, cells)) ||
                          CellValue::date(cell(Column::Date, cells)).has_value();
    if (!hasEntry && m_columns.has(Column::Code)) {
        throw LeftOut{translated("lines of text")};
    }
}

Side RowReader::sideOf(const QStringList &cells) const
{
    const QStringList words = wordsOf(cells);
    if (std::any_of(words.begin(), words.end(), &EntryKind::isBonus)) {
        return Side::Bonus;
    }
    for (const QString &word : words) {
        if (const auto kind = EntryKind::ofNoTrade(word)) {
            throw LeftOut{*kind};
        }
    }
    if (isMoneyless(cells)) {
        throw LeftOut{CellValue::number(cell(Column::Quantity, cells)).value_or(1.0) == 0.0
                          ? translated("entries without a quantity")
                          : translated("entries without a price")};
    }
    if (const auto side = EntryKind::sideOfSideColumn(EntryKind::plainWord(cell(Column::Side, cells)))) {
        return *side;
    }
    for (const QString &word : words) {
        if (const auto side = EntryKind::side(word)) {
            return *side;
        }
    }
    throw Error(translated("\"%1\" says neither buy nor sell").arg(words.join(QLatin1Char(' '))));
}

qint64 RowReader::quantityOf(const QStringList &cells, Side side) const
{
    const double quantity = number(Column::Quantity, cells, QT_TR_NOOP("quantity"));
    constexpr double mostShares = 1e12;
    if (quantity != std::floor(quantity) || std::fabs(quantity) > mostShares) {
        throw Error(translated("the quantity \"%1\" is no number of whole shares")
                        .arg(CellValue::cleaned(cell(Column::Quantity, cells))));
    }
    if (quantity < 0 && side != Side::Sell) {
        throw Error(translated("the quantity of a buy is negative"));
    }
    if (quantity == 0.0) {
        throw LeftOut{translated("entries without a quantity")};
    }
    return static_cast<qint64>(std::fabs(quantity));
}

Money RowReader::priceOf(const QStringList &cells, Side side) const
{
    const Money price = money(Column::Price, cells, QT_TR_NOOP("price"));
    if (price.isNegative()) {
        throw Error(translated("the price is negative"));
    }
    return side == Side::Bonus ? Money() : price;
}

/// The stated amount, which must be price × quantity but for the rounding of an average price: columns
/// that slipped by one show here.
Money RowReader::amountOf(const QStringList &cells, const Execution &execution) const
{
    const std::optional<Money> product = execution.price.times(execution.quantity);
    if (!product) {
        throw Error(translated("the amount, price × quantity, is too large: %1 × %2")
                        .arg(execution.price.text())
                        .arg(execution.quantity));
    }
    const Money computed = *product;
    const Money stated = magnitude(money(Column::Amount, cells, QT_TR_NOOP("amount")));
    if (stated.isZero()) {
        return computed;
    }
    const int decimals = std::clamp(CellValue::decimals(cell(Column::Price, cells)), 2, 3);
    const double slack = 0.02 + 0.51 * std::pow(10.0, -decimals) * static_cast<double>(execution.quantity);
    if (std::fabs((computed - stated).yuan()) > slack) {
        throw Error(translated("the amount %1 is not price × quantity, %2 × %3")
                        .arg(stated.text(), execution.price.text())
                        .arg(execution.quantity));
    }
    return stated;
}

/// All fees: the column of their total, else what the account paid beyond the amount, else the sum of
/// the columns.
Money RowReader::feeOf(const QStringList &cells, const Execution &execution) const
{
    const Money listed = listedFees(cells);
    if (m_columns.has(Column::TotalFee)) {
        return listed;
    }
    const Money net = money(Column::Net, cells, QT_TR_NOOP("net amount"));
    if (net.isZero()) {
        return listed;
    }
    if (execution.side == Side::Sell && net.isNegative() &&
        magnitude(net) > Money::ofSteps(execution.amount.steps() / 2)) {
        throw Error(
            translated("the entry says sell, but its net amount %1 is that of a buy").arg(net.text()));
    }
    const Money difference =
        execution.side == Side::Buy ? magnitude(net) - execution.amount : execution.amount - net;
    const Money believable = Money::ofSteps(execution.amount.steps() / 20 + 100 * Money::stepsPerYuan);
    return difference.isNegative() || difference > believable ? listed : difference;
}

Money RowReader::listedFees(const QStringList &cells) const
{
    if (m_columns.has(Column::TotalFee)) {
        return magnitude(money(Column::TotalFee, cells, QT_TR_NOOP("fee")));
    }
    const Money commission = magnitude(money(Column::Commission, cells, QT_TR_NOOP("commission")));
    const Money twin = magnitude(money(Column::CommissionTwin, cells, QT_TR_NOOP("commission")));
    return (commission == twin ? commission : commission + twin) +
           magnitude(sum(Column::OtherFee, cells, QT_TR_NOOP("fee")));
}

TradingDate RowReader::dateOf(const QStringList &cells) const
{
    if (!m_columns.has(Column::Date)) {
        return m_options.date.value();
    }
    const QString text = cell(Column::Date, cells);
    const std::optional<TradingDate> date = CellValue::date(text);
    if (!date) {
        throw Error(translated("\"%1\" is no date").arg(CellValue::cleaned(text)));
    }
    if (*date > TradingDate::today()) {
        throw Error(translated("the date %1 is in the future").arg(date->number()));
    }
    return *date;
}

ClockTime RowReader::timeOf(const QStringList &cells) const
{
    const QString text = cell(Column::Time, cells);
    const std::optional<ClockTime> time = CellValue::time(text);
    if (!time) {
        throw Error(translated("\"%1\" is no time").arg(CellValue::cleaned(text)));
    }
    return *time;
}

/// An order's or deal's number; zeros stand for none.
QString RowReader::numberText(Column column, const QStringList &cells) const
{
    constexpr int longestNumberText = 64; // the ledger's index holds them
    const QString text = CellValue::cleaned(cell(column, cells));
    if (text.size() > longestNumberText) {
        throw Error(
            translated("\"%1…\" is longer than the %2 characters that an order or deal number may have")
                .arg(text.left(longestNumberText))
                .arg(longestNumberText));
    }
    const bool isNone = std::all_of(text.begin(), text.end(), [](QChar character) {
        return character == QLatin1Char('0') || character == QLatin1Char('-');
    });
    return isNone ? QString() : text;
}

/// The lines of a statement and where its header is.
class StatementText
{
public:
    explicit StatementText(const QString &text);

    const QStringList &lines() const { return m_lines; }
    int headerIndex() const { return m_headerIndex; }
    const StatementColumns &columns() const { return m_columns; }
    QStringList cells(const QString &line) const;

private:
    bool takeHeader(int index, Separator separator);

    QStringList m_lines;
    int m_headerIndex = -1;
    Separator m_separator = Separator::Tab;
    StatementColumns m_columns;
    std::unique_ptr<AlignedColumns> m_aligned;
};

StatementText::StatementText(const QString &text) : m_lines(text.split(QLatin1Char('\n')))
{
    for (int index = 0; index < m_lines.size(); ++index) {
        for (const Separator separator : {Separator::Tab, Separator::Comma, Separator::Blanks}) {
            if (takeHeader(index, separator)) {
                return;
            }
        }
    }
    throw Error(translated("there is no header line that names the price (成交价格), the quantity (成交数量) "
                           "and the security (证券代码); export the executed trades with their header"));
}

bool StatementText::takeHeader(int index, Separator separator)
{
    const QString line = m_lines[index];
    const StatementColumns columns(splitLine(line.trimmed(), separator));
    if (!columns.isHeader()) {
        return false;
    }
    m_headerIndex = index;
    m_separator = separator;
    m_columns = StatementColumns(splitLine(line, separator));
    if (separator == Separator::Blanks) {
        m_aligned = std::make_unique<AlignedColumns>(line);
    }
    return true;
}

QStringList StatementText::cells(const QString &line) const
{
    return m_aligned ? m_aligned->cells(line) : splitLine(line, m_separator);
}

bool isDecoration(const QString &line)
{
    static const QString marks = QStringLiteral("-=_*+");
    return line.startsWith(QLatin1Char('#')) || std::all_of(line.begin(), line.end(), [](QChar character) {
               return marks.contains(character) || character.isSpace() || character == QLatin1Char(',');
           });
}

/// Collects what the lines of a statement say.
class Collector
{
public:
    Collector(const StatementText &text, const ReadOptions &options)
        : m_text(text),
          m_rows(text.columns(), options)
    {
    }

    StatementContents collect();

private:
    void take(const QString &line, int lineNumber);
    void add(const Execution &execution, const QStringList &cells, const QString &line);
    void putOldestFirst();

    const StatementText &m_text;
    const RowReader m_rows;
    QSet<QString> m_seenLines;
    StatementContents m_contents;
};

StatementContents Collector::collect()
{
    const QStringList &lines = m_text.lines();
    const QString header = lines[m_text.headerIndex()].trimmed();
    for (int index = m_text.headerIndex() + 1; index < lines.size(); ++index) {
        const QString line = lines[index].trimmed();
        if (!isDecoration(line) && line != header) {
            take(lines[index], index + 1);
        }
    }
    putOldestFirst();
    return std::move(m_contents);
}

void Collector::take(const QString &line, int lineNumber)
{
    const QStringList cells = m_text.cells(line);
    try {
        add(m_rows.read(cells), cells, line);
    } catch (const LeftOut &entry) {
        ++m_contents.leftOut[entry.kind];
    } catch (const Error &error) {
        m_contents.badRows.append({lineNumber, error.reason()});
    }
}

void Collector::add(const Execution &execution, const QStringList &cells, const QString &line)
{
    const int seenBefore = m_seenLines.size();
    m_seenLines.insert(line);
    if (m_seenLines.size() == seenBefore) {
        if (!execution.dealNo.isEmpty()) {
            ++m_contents.repeatedRows;
            return;
        }
        ++m_contents.equalRows;
    }
    const QString name = CellValue::cleaned(m_text.columns().cell(Column::Name, cells));
    if (!name.isEmpty()) {
        m_contents.names.insert(execution.security, name);
    }
    m_contents.bonuses += execution.side == Side::Bonus ? 1 : 0;
    m_contents.executions.append(execution);
}

/// Entries of the same second keep the order in which they happened, also in a list that starts with
/// the newest.
void Collector::putOldestFirst()
{
    Executions &executions = m_contents.executions;
    const auto isEarlier = [](const Execution &a, const Execution &b) {
        return a.date != b.date ? a.date < b.date : a.time < b.time;
    };
    if (!executions.isEmpty() && isEarlier(executions.constLast(), executions.constFirst())) {
        std::reverse(executions.begin(), executions.end());
    }
    std::stable_sort(executions.begin(), executions.end(), isEarlier);
}

void refuseMissingColumns(const StatementColumns &columns, const ReadOptions &options)
{
    if (!columns.has(Column::Date) && !options.date) {
        throw Error(translated("the statement has no date column; give the day of its trades with --date"));
    }
    if (columns.has(Column::Date) && options.date) {
        throw Error(translated("the statement has dates of its own; leave --date out"));
    }
    if (!columns.has(Column::Code) && options.securitiesByName.isEmpty()) {
        throw Error(translated("the statement has no column of codes (证券代码); give a list of the "
                               "securities' codes and names with --securities"));
    }
    if (!columns.has(Column::Side) && !columns.has(Column::Business) && !columns.has(Column::Remark)) {
        throw Error(translated("the statement has no column that tells buys from sells (买卖标志)"));
    }
}

} // namespace

StatementContents readStatement(const QString &text, const ReadOptions &options)
{
    const StatementText statement(text);
    refuseMissingColumns(statement.columns(), options);
    return Collector(statement, options).collect();
}

} // namespace TradeModule
