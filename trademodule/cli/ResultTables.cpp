#include "trademodule/cli/ResultTables.h"

#include "trademodule/ProgramLanguage.h"

#include <map>

namespace TradeModule {

namespace {

std::vector<ResultField> fieldsOf(ResultGroup group, RowStream::Format format)
{
    std::vector<ResultField> fields = Trading::fieldsOf(group);
    if (format != RowStream::Format::Table) { // which names the method once, below
        fields.push_back(ResultField::Method);
    }
    return fields;
}

QVector<const char *> keysOf(const std::vector<ResultField> &fields)
{
    QVector<const char *> keys;
    for (const ResultField field : fields) {
        keys.append(Trading::columnOf(field).key);
    }
    return keys;
}

/// Knows which security it is at, and which days count; writes lines, and their sum at the end.
class LineTable : public ResultTable
{
public:
    LineTable(ResultGroup group, const ResultOptions &options)
        : m_options(options),
          m_fields(fieldsOf(group, options.format)),
          m_stream(keysOf(m_fields), options.format)
    {
    }

    void begin(const KnownSecurity &security) override { m_security = security; }

    void finish() override
    {
        QStringList row{translated("sum")};
        for (size_t column = 1; column < m_fields.size(); ++column) {
            row.append(sumText(m_sum, m_fields[column]));
        }
        m_stream.addToTable(row);
        m_stream.finish();
    }

protected:
    bool counts(TradingDate day) const { return m_options.days.first <= day && day <= m_options.days.last; }
    const KnownSecurity &security() const { return m_security; }

    void write(ResultLine line)
    {
        line.method = m_options.method;
        m_stream.add(cellsOf(line, m_fields));
        m_sum += line.figures;
    }

private:
    const ResultOptions m_options;
    const std::vector<ResultField> m_fields;
    RowStream m_stream;
    KnownSecurity m_security{};
    Figures m_sum;
};

class SaleTable : public LineTable
{
public:
    explicit SaleTable(const ResultOptions &options) : LineTable(ResultGroup::Sale, options) {}

    void visitSale(const Sale &sale) override
    {
        if (counts(sale.date)) {
            write(ResultLine::of(security(), sale));
        }
    }
};

/// A trip is listed by the day that it was over, the open ones always; with all its figures.
class TripTable : public LineTable
{
public:
    explicit TripTable(const ResultOptions &options) : LineTable(ResultGroup::Trip, options) {}

    void visitTrip(const Trip &trip) override
    {
        if (!trip.closed || counts(*trip.closed)) {
            write(ResultLine::of(security(), trip));
        }
    }
};

class SecurityTable : public LineTable
{
public:
    explicit SecurityTable(const ResultOptions &options) : LineTable(ResultGroup::Security, options) {}

    void begin(const KnownSecurity &security) override
    {
        LineTable::begin(security);
        m_figures = Figures();
        m_hasFigures = false;
    }

    void book(TradingDate day, const Figures &figures) override
    {
        if (counts(day)) {
            m_figures += figures;
            m_hasFigures = true;
        }
    }

    void end(const HeldShares &shares) override
    {
        if (m_hasFigures || shares.quantity() > 0) {
            write(ResultLine::of(security(), m_figures, shares));
        }
    }

private:
    Figures m_figures;
    bool m_hasFigures = false;
};

/// Sums of months or years.
class PeriodTable : public LineTable
{
public:
    /// A day's number, yyyymmdd, divided by `divisor` is that of its period.
    PeriodTable(ResultGroup group, const ResultOptions &options, int divisor)
        : LineTable(group, options),
          m_divisor(divisor)
    {
    }

    void book(TradingDate day, const Figures &figures) override
    {
        if (counts(day)) {
            const auto period = m_periods.try_emplace(day.number() / m_divisor, ResultLine::of(day, {}));
            period.first->second.figures += figures;
        }
    }

    void finish() override
    {
        for (const auto &[number, line] : m_periods) {
            write(line);
        }
        LineTable::finish();
    }

private:
    const int m_divisor;
    std::map<int, ResultLine> m_periods;
};

constexpr int daysOfMonth = 100;
constexpr int daysOfYear = 10000;

} // namespace

std::unique_ptr<ResultTable> resultTable(ResultGroup group, const ResultOptions &options)
{
    switch (group) {
    case ResultGroup::Sale:
        return std::make_unique<SaleTable>(options);
    case ResultGroup::Trip:
        return std::make_unique<TripTable>(options);
    case ResultGroup::Security:
        return std::make_unique<SecurityTable>(options);
    case ResultGroup::Month:
        return std::make_unique<PeriodTable>(group, options, daysOfMonth);
    case ResultGroup::Year:
        return std::make_unique<PeriodTable>(group, options, daysOfYear);
    }
    Q_UNREACHABLE();
}

} // namespace TradeModule
