#include "terminal/data/BarRows.h"

#include "terminal/data/BarStamp.h"
#include "terminal/data/CellNumber.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarRows", source);
}

QString toText(std::string_view cell)
{
    return QString::fromUtf8(cell.data(), static_cast<int>(cell.size()));
}

/// Of a cell that may be the half of a broken file.
QString start(std::string_view cell)
{
    return toText(cell).left(40);
}

QString quoted(const char *source, std::string_view cell)
{
    return text(source).arg(start(cell));
}

/// As ledgers keep prices. Adjusted ones come with noise in their last digits.
double rounded(double price)
{
    constexpr double stepsOfYuan = 10000;
    return std::round(price * stepsOfYuan) / stepsOfYuan;
}

bool isZeroOrMissing(std::string_view cell)
{
    return cell.empty() || countOf(cell) == 0.0;
}

/// A blank line, or words in one cell: the last line of some files tells where they come from.
bool canEndAFile(const Cells &cells)
{
    const std::string_view first = cells.empty() ? std::string_view() : cells.front();
    const bool startsWithDigit = !first.empty() && first.front() >= '0' && first.front() <= '9';
    return !startsWithDigit && std::all_of(cells.begin() + (cells.empty() ? 0 : 1), cells.end(),
                                           [](std::string_view cell) { return cell.empty(); });
}

QString contradiction(const Bar &bar)
{
    if (bar.high < bar.low) {
        return text("the high is below the low");
    }
    if (bar.open > bar.high || bar.open < bar.low) {
        return text("the open is outside of low and high");
    }
    if (bar.close > bar.high || bar.close < bar.low) {
        return text("the close is outside of low and high");
    }
    return bar.volume < 0 ? text("the volume is negative") : QString();
}

/// A column that says when a bar is, and how it says so.
struct StampColumn
{
    std::size_t place;
    BarStampForm form;
};

class RowReader
{
public:
    RowReader(const BarHeader &header, std::optional<Trading::TradingDate> day)
        : m_header(header),
          m_columns(header.columns),
          m_day(day)
    {
    }

    BarRows read(std::string_view text);

private:
    QString takeLine(std::string_view line);
    QString takeRow();
    QString findStamps();
    QString addStamp(BarColumn column);
    std::optional<std::size_t> placeOfDay() const;
    QString readStamp(Bar *bar) const;
    QString readStampCell(const StampColumn &column, Bar *bar) const;
    QString readPrices(Bar *bar) const;
    QString inColumn(BarColumn column) const;
    QString takeSecurity();
    QString takeCode(std::string_view cell);
    QString takeAdjustment();
    double number(BarColumn column) const;
    bool isTraded() const;
    void note(const QString &what);
    std::string_view cell(BarColumn column) const { return m_cells[m_columns.place(column)]; }

    const BarHeader &m_header;
    BarColumns m_columns;
    std::optional<Trading::TradingDate> m_day;
    std::vector<StampColumn> m_stamps;
    Cells m_cells;
    std::vector<std::string> m_knownCodes; ///< as the file writes them, one for each column of codes
    std::string m_adjustment;
    int m_line = 0;
    LineProblem m_tail; ///< a line that is no row; an end of the file may look like that
    BarRows m_rows;
};

BarRows RowReader::read(std::string_view text)
{
    m_line = m_header.lines;
    while (!text.empty() && !m_rows.lackDay) {
        ++m_line;
        note(takeLine(Terminal::takeLine(&text)));
    }
    return std::move(m_rows);
}

void RowReader::note(const QString &what)
{
    if (what.isEmpty()) {
        return;
    }
    if (!m_rows.problem) {
        m_rows.problem = {m_line, what};
    }
    ++m_rows.problems;
}

QString RowReader::takeLine(std::string_view line)
{
    splitCells(line, m_header.separator, &m_cells);
    while (m_cells.size() > m_columns.count() && m_cells.back().empty()) {
        m_cells.pop_back();
    }
    const QString wrongCount =
        text("%1 fields, but there must be %2").arg(m_cells.size()).arg(m_columns.count());
    if (canEndAFile(m_cells)) {
        m_tail = m_tail ? m_tail : LineProblem{m_line, wrongCount};
        return {};
    }
    if (m_tail) {
        m_rows.problem = m_rows.problem ? m_rows.problem : m_tail;
        ++m_rows.problems;
        m_tail = {};
    }
    return m_cells.size() == m_columns.count() ? takeRow() : wrongCount;
}

QString RowReader::takeRow()
{
    Bar bar;
    for (const QString &problem :
         {m_stamps.empty() ? findStamps() : QString(), readStamp(&bar), takeSecurity(), takeAdjustment()}) {
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    if (!isTraded()) {
        ++m_rows.notTraded;
        return {};
    }
    const QString problem = readPrices(&bar);
    if (!problem.isEmpty()) {
        return problem;
    }
    m_rows.bars.push_back(bar);
    m_rows.lines.push_back(m_line);
    if (m_columns.has(BarColumn::Amount)) {
        m_rows.amounts.push_back(number(BarColumn::Amount));
    }
    if (m_columns.has(BarColumn::PreviousClose)) {
        m_rows.previousCloses.push_back(number(BarColumn::PreviousClose));
    }
    return {};
}

/// The first row shows which columns tell the day and the time, and how.
QString RowReader::findStamps()
{
    if (const auto place = placeOfDay()) {
        m_columns.name(*place, BarColumn::Date);
    }
    QString problem = addStamp(BarColumn::Date);
    if (problem.isEmpty()) {
        problem = addStamp(BarColumn::Time);
    }
    if (!problem.isEmpty()) {
        m_stamps.clear();
        return problem;
    }
    for (const StampColumn &column : m_stamps) {
        m_rows.haveTimes = m_rows.haveTimes || column.form.hasTime();
        (column.form.hasDate() ? m_rows.dayForm : m_rows.timeForm) = column.form.shown();
    }
    if (m_rows.dayForm.isEmpty() && !m_day) {
        m_rows.lackDay = m_rows.haveTimes;
        m_stamps.clear();
        return text("there is no column for the day; call it \"date\", e.g. 20240131 or 2024-01-31");
    }
    return {};
}

/// Where no name tells the column of the day: the only one of an unknown name that holds one.
std::optional<std::size_t> RowReader::placeOfDay() const
{
    if (m_columns.has(BarColumn::Date) || m_columns.has(BarColumn::Time)) {
        return std::nullopt;
    }
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < m_cells.size(); ++place) {
        const auto form = m_columns.isUnknown(place) ? BarStampForm::of(m_cells[place]) : std::nullopt;
        if (form && form->hasDate()) {
            places.push_back(place);
        }
    }
    return places.size() == 1 ? std::optional(places.front()) : std::nullopt;
}

QString RowReader::addStamp(BarColumn column)
{
    if (!m_columns.has(column)) {
        return {};
    }
    const auto form = BarStampForm::of(cell(column));
    if (!form || (column == BarColumn::Date && !form->hasDate())) {
        return column == BarColumn::Date
                   ? quoted("\"%1\" is not a date: eight digits, or year, month and day apart", cell(column))
                   : quoted("\"%1\" is not a time: hhmm or hh:mm, with or without a date", cell(column));
    }
    m_stamps.push_back({m_columns.place(column), *form});
    return {};
}

QString RowReader::readStamp(Bar *bar) const
{
    bar->date = m_day ? m_day->number() : 0;
    for (const StampColumn &column : m_stamps) {
        const QString problem = readStampCell(column, bar);
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    return {};
}

QString RowReader::readStampCell(const StampColumn &column, Bar *bar) const
{
    const std::string_view cell = m_cells[column.place];
    const auto stamp = column.form.read(cell);
    if (!stamp) {
        return (column.form.hasDate() ? text("\"%1\" is not a date of the form %2")
                                      : text("\"%1\" is not a time of the form %2"))
            .arg(start(cell), column.form.shown());
    }
    if (stamp->date) {
        if (bar->date != 0 && bar->date != stamp->date->number()) {
            return text("\"%1\" is another day than %2").arg(start(cell), dayOf(*bar).dashedText());
        }
        bar->date = stamp->date->number();
    }
    bar->minute = stamp->minute.value_or(bar->minute);
    return {};
}

double RowReader::number(BarColumn column) const
{
    return countOf(cell(column)).value_or(0);
}

/// False for a suspended day: it says so, or has neither prices nor volume.
bool RowReader::isTraded() const
{
    if (m_columns.has(BarColumn::IsTraded) && cell(BarColumn::IsTraded) == "0") {
        return false;
    }
    if (m_columns.has(BarColumn::IsPaused) && countOf(cell(BarColumn::IsPaused)) == 1.0) {
        return false;
    }
    const bool hasPrice = !isZeroOrMissing(cell(BarColumn::Open)) ||
                          !isZeroOrMissing(cell(BarColumn::High)) || !isZeroOrMissing(cell(BarColumn::Low));
    return hasPrice || !isZeroOrMissing(cell(BarColumn::Volume));
}

QString RowReader::readPrices(Bar *bar) const
{
    const std::pair<BarColumn, double *> prices[] = {{BarColumn::Open, &bar->open},
                                                     {BarColumn::High, &bar->high},
                                                     {BarColumn::Low, &bar->low},
                                                     {BarColumn::Close, &bar->close}};
    for (const auto &[column, value] : prices) {
        const auto price = numberOf(cell(column));
        if (!price) {
            return quoted("\"%1\" is not a number", cell(column)) + inColumn(column);
        }
        *value = rounded(*price);
    }
    const auto volume = countOf(cell(BarColumn::Volume));
    if (!volume) {
        return quoted("\"%1\" is not a number", cell(BarColumn::Volume)) + inColumn(BarColumn::Volume);
    }
    bar->volume = *volume;
    return contradiction(*bar);
}

QString RowReader::inColumn(BarColumn column) const
{
    return text(", in column %1").arg(m_columns.header(column));
}

QString RowReader::takeSecurity()
{
    const std::vector<std::size_t> &places = m_columns.codePlaces();
    m_knownCodes.resize(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const std::string_view cell = m_cells[places[i]];
        if (m_knownCodes[i] == cell) {
            continue; // as in the row before
        }
        const QString problem = takeCode(cell);
        if (!problem.isEmpty()) {
            return problem;
        }
        m_knownCodes[i] = cell;
    }
    if (m_columns.has(BarColumn::Name) && m_rows.name.isEmpty()) {
        m_rows.name = toText(cell(BarColumn::Name));
    }
    return {};
}

QString RowReader::takeCode(std::string_view cell)
{
    const auto security = SecurityCode::of(toText(cell));
    if (!security) {
        return quoted("\"%1\" is no security of Shanghai or Shenzhen: six digits, with or without SH or SZ",
                      cell);
    }
    if (m_rows.security && !m_rows.security->agreesWith(*security)) {
        return text("\"%1\" is another security than the one before, %2; a file has one")
            .arg(start(cell), m_rows.security->text());
    }
    if (!m_rows.security || security->market) {
        m_rows.security = security;
    }
    return {};
}

QString RowReader::takeAdjustment()
{
    if (!m_columns.has(BarColumn::Adjustment) || m_adjustment == cell(BarColumn::Adjustment)) {
        return {};
    }
    const PriceKind kind = priceKindOf(toText(cell(BarColumn::Adjustment)));
    if (m_rows.prices != PriceKind::Unknown && kind != m_rows.prices) {
        return text("raw and adjusted prices are mixed");
    }
    m_adjustment = cell(BarColumn::Adjustment);
    m_rows.prices = kind;
    return {};
}

} // namespace

BarRows readBarRows(std::string_view text, const BarHeader &header, std::optional<Trading::TradingDate> day)
{
    return RowReader(header, day).read(text);
}

} // namespace Terminal
