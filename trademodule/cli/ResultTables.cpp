#include "trademodule/cli/ResultTables.h"

#include "trademodule/ProgramLanguage.h"

#include <algorithm>
#include <map>

namespace TradeModule {

namespace {

/// Empty where nothing was paid, so that there is nothing to compare with.
QString percentText(Money profit, Money cost)
{
    constexpr double pointsPerPercent = 100;
    return cost > Money()
               ? QString::number(static_cast<double>(basisPoints(profit, cost)) / pointsPerPercent, 'f', 2)
               : QString();
}

QString dayText(const std::optional<TradingDate> &day)
{
    return day ? day->dashedText() : QString();
}

using Columns = QVector<const char *>;

const Columns &securityColumns()
{
    static const Columns columns{QT_TR_NOOP("code"), QT_TR_NOOP("market"), QT_TR_NOOP("name")};
    return columns;
}

QStringList cells(const KnownSecurity &security)
{
    const QString market =
        security.security.code.isEmpty() ? QString() : marketLetters(security.security.market);
    return {security.security.code, market, security.name};
}

const Columns &figureColumns()
{
    static const Columns columns{QT_TR_NOOP("sales"),    QT_TR_NOOP("bought"),    QT_TR_NOOP("sold"),
                                 QT_TR_NOOP("fees"),     QT_TR_NOOP("soldcost"),  QT_TR_NOOP("profit"),
                                 QT_TR_NOOP("percent"),  QT_TR_NOOP("dividends"), QT_TR_NOOP("taxes"),
                                 QT_TR_NOOP("interest"), QT_TR_NOOP("total")};
    return columns;
}

QStringList cells(const Figures &figures)
{
    return {QString::number(figures.sales),
            figures.bought.text(),
            figures.sold.text(),
            figures.fees.text(),
            figures.cost.text(),
            figures.profit.text(),
            percentText(figures.profit, figures.cost),
            figures.dividends.text(),
            figures.taxes.text(),
            figures.interest.text(),
            figures.total().text()};
}

/// Writes rows of which each ends with the method, but in a table, which ends with the sum.
class ResultRows
{
public:
    ResultRows(const ResultOptions &options, Columns columns)
        : m_columnCount(columns.size()),
          m_method(options.format == RowStream::Format::Table ? QString() : wordOf(options.method)),
          m_stream(m_method.isEmpty() ? columns : columns << QT_TR_NOOP("method"), options.format)
    {
    }

    void add(const QStringList &row) { m_stream.add(m_method.isEmpty() ? row : row + QStringList{m_method}); }

    /// The last row of a table: what `cells` say from a column on.
    void finish(int column, const QStringList &cells)
    {
        QStringList row{translated("sum")};
        for (int i = 1; i < m_columnCount; ++i) {
            row.append(i < column || i >= column + cells.size() ? QString() : cells[i - column]);
        }
        m_stream.addToTable(row);
        m_stream.finish();
    }

private:
    const int m_columnCount;
    const QString m_method;
    RowStream m_stream;
};

/// Knows which security it is at, and which days count.
class DaysTable : public ResultTable
{
public:
    explicit DaysTable(DateRange days) : m_days(days) {}

    void begin(const KnownSecurity &security) override { m_security = security; }

protected:
    bool counts(TradingDate day) const { return m_days.first <= day && day <= m_days.last; }
    QStringList securityCells() const { return cells(m_security); }

private:
    const DateRange m_days;
    KnownSecurity m_security{};
};

class SaleTable : public DaysTable
{
public:
    explicit SaleTable(const ResultOptions &options)
        : DaysTable(options.days),
          m_rows(options, Columns{QT_TR_NOOP("date"), QT_TR_NOOP("time")} + securityColumns() +
                              Columns{QT_TR_NOOP("price"), QT_TR_NOOP("quantity"), QT_TR_NOOP("amount"),
                                      QT_TR_NOOP("fee"), QT_TR_NOOP("soldcost"), QT_TR_NOOP("profit"),
                                      QT_TR_NOOP("percent")})
    {
    }

    void visitSale(const Sale &sale) override
    {
        if (!counts(sale.date)) {
            return;
        }
        m_rows.add(QStringList{sale.date.dashedText(), sale.time.colonText()} + securityCells() +
                   QStringList{sale.price.text(), QString::number(sale.quantity), sale.amount.text(),
                               sale.fee.text(), sale.cost.text(), sale.profit.text(),
                               percentText(sale.profit, sale.cost)});
    }

    void book(TradingDate day, const Figures &figures) override
    {
        if (figures.sales > 0 && counts(day)) {
            m_sum += figures;
        }
    }

    void finish() override
    {
        constexpr int amountColumn = 7;
        m_rows.finish(amountColumn, {m_sum.sold.text(), m_sum.fees.text(), m_sum.cost.text(),
                                     m_sum.profit.text(), percentText(m_sum.profit, m_sum.cost)});
    }

private:
    ResultRows m_rows;
    Figures m_sum;
};

/// A trip is listed by the day that it was over, the open ones always; with all its figures.
class TripTable : public DaysTable
{
public:
    explicit TripTable(const ResultOptions &options)
        : DaysTable(options.days),
          m_rows(options, securityColumns() +
                              Columns{QT_TR_NOOP("opened"), QT_TR_NOOP("closed"), QT_TR_NOOP("sharesin"),
                                      QT_TR_NOOP("sharesout")} +
                              figureColumns())
    {
    }

    void visitTrip(const Trip &trip) override
    {
        if (trip.closed && !counts(*trip.closed)) {
            return;
        }
        m_sum += trip.figures;
        m_rows.add(securityCells() +
                   QStringList{trip.opened.dashedText(), dayText(trip.closed),
                               QString::number(trip.quantityIn), QString::number(trip.quantityOut)} +
                   cells(trip.figures));
    }

    void finish() override { m_rows.finish(figureColumn, cells(m_sum)); }

private:
    static constexpr int figureColumn = 7;

    ResultRows m_rows;
    Figures m_sum;
};

class SecurityTable : public DaysTable
{
public:
    explicit SecurityTable(const ResultOptions &options)
        : DaysTable(options.days),
          m_rows(options, securityColumns() + figureColumns() +
                              Columns{QT_TR_NOOP("held"), QT_TR_NOOP("heldcost"), QT_TR_NOOP("costprice")})
    {
    }

    void begin(const KnownSecurity &security) override
    {
        DaysTable::begin(security);
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
        if (!m_hasFigures && shares.quantity() == 0) {
            return;
        }
        m_sum += m_figures;
        m_rows.add(securityCells() + cells(m_figures) + held(shares));
    }

    void finish() override { m_rows.finish(figureColumn, cells(m_sum)); }

private:
    static constexpr int figureColumn = 3;

    static QStringList held(const HeldShares &shares)
    {
        const std::optional<double> price = shares.basis().costPrice();
        return {QString::number(shares.quantity()), QString::number(shares.basis().exactCost(), 'f', 2),
                price ? QString::number(*price, 'f', 3) : QString()};
    }

    ResultRows m_rows;
    Figures m_figures;
    bool m_hasFigures = false;
    Figures m_sum;
};

/// Sums of months or years.
class PeriodTable : public DaysTable
{
public:
    /// `name` heads the column of periods. A period's text is the first `letters` of its days'.
    PeriodTable(const ResultOptions &options, const char *name, int letters)
        : DaysTable(options.days),
          m_letters(letters),
          m_rows(options, Columns{name} + figureColumns())
    {
    }

    void book(TradingDate day, const Figures &figures) override
    {
        constexpr int daysOfMonth = 100; // in yyyymmdd
        if (counts(day)) {
            m_months.try_emplace(day.number() / daysOfMonth, Period{day, {}}).first->second.figures +=
                figures;
        }
    }

    void finish() override
    {
        std::map<QString, Figures> periods;
        Figures sum;
        for (const auto &[month, period] : m_months) {
            periods[period.day.dashedText().left(m_letters)] += period.figures;
            sum += period.figures;
        }
        for (const auto &[name, figures] : periods) {
            m_rows.add(QStringList{name} + cells(figures));
        }
        m_rows.finish(1, cells(sum));
    }

private:
    struct Period
    {
        TradingDate day; ///< one of its days
        Figures figures;
    };

    const int m_letters;
    ResultRows m_rows;
    std::map<int, Period> m_months;
};

using Maker = std::unique_ptr<ResultTable> (*)(const ResultOptions &);

struct NamedTable
{
    QLatin1String word;
    Maker make;
};

constexpr int lettersOfMonth = 7; // 2024-01
constexpr int lettersOfYear = 4;

const NamedTable tables[] = {
    {QLatin1String("sale"),
     [](const ResultOptions &options) -> std::unique_ptr<ResultTable> {
         return std::make_unique<SaleTable>(options);
     }},
    {QLatin1String("trip"),
     [](const ResultOptions &options) -> std::unique_ptr<ResultTable> {
         return std::make_unique<TripTable>(options);
     }},
    {QLatin1String("security"),
     [](const ResultOptions &options) -> std::unique_ptr<ResultTable> {
         return std::make_unique<SecurityTable>(options);
     }},
    {QLatin1String("month"),
     [](const ResultOptions &options) -> std::unique_ptr<ResultTable> {
         return std::make_unique<PeriodTable>(options, QT_TR_NOOP("month"), lettersOfMonth);
     }},
    {QLatin1String("year"),
     [](const ResultOptions &options) -> std::unique_ptr<ResultTable> {
         return std::make_unique<PeriodTable>(options, QT_TR_NOOP("year"), lettersOfYear);
     }},
};

} // namespace

std::unique_ptr<ResultTable> resultTable(const QString &word, const ResultOptions &options)
{
    const auto *const found = std::find_if(std::begin(tables), std::end(tables),
                                           [&word](const NamedTable &table) { return word == table.word; });
    return found == std::end(tables) ? nullptr : found->make(options);
}

} // namespace TradeModule
