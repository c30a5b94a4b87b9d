#include "trademodule/report/ResultLine.h"

#include <cmath>
#include <iterator>
#include <limits>

namespace TradeModule {

namespace {

using F = ResultField;
using Rank = ResultLine::Rank;

constexpr int lettersOfMonth = 7; // 2024-01
constexpr int lettersOfYear = 4;
constexpr int costDecimals = 3;
constexpr qint64 least = std::numeric_limits<qint64>::min(); ///< of ranks: what is not there comes first

/// What a field says of a line, and its place in order.
struct Cell
{
    ResultField field;
    QString (*text)(const ResultLine &line);
    Rank (*rank)(const ResultLine &line);
};

QString dayText(const std::optional<TradingDate> &day)
{
    return day ? day->dashedText() : QString();
}

Rank dayRank(const std::optional<TradingDate> &day)
{
    return {day ? day->number() : least};
}

Rank stepsOfYuan(double yuan)
{
    return {std::llround(yuan * static_cast<double>(Money::stepsPerYuan))};
}

QString marketText(const ResultLine &line)
{
    return line.security.code.isEmpty() ? QString() : marketLetters(line.security.market);
}

/// Empty where nothing was paid, so that there is nothing to compare with.
QString percentText(const ResultLine &line)
{
    constexpr double pointsPerPercent = 100;
    const auto points = static_cast<double>(basisPoints(line.figures.profit, line.figures.cost));
    return line.figures.cost > Money() ? QString::number(points / pointsPerPercent, 'f', 2) : QString();
}

Rank percentRank(const ResultLine &line)
{
    return {line.figures.cost > Money() ? basisPoints(line.figures.profit, line.figures.cost) : least};
}

template <std::optional<TradingDate> ResultLine::*day>
constexpr Cell dayCell(ResultField field)
{
    return {field, [](const ResultLine &line) { return dayText(line.*day); },
            [](const ResultLine &line) { return dayRank(line.*day); }};
}

template <int letters>
constexpr Cell periodCell(ResultField field)
{
    return {field, [](const ResultLine &line) { return dayText(line.day).left(letters); },
            [](const ResultLine &line) { return dayRank(line.day); }};
}

template <Money Figures::*amount>
constexpr Cell moneyCell(ResultField field)
{
    return {field, [](const ResultLine &line) { return (line.figures.*amount).text(); },
            [](const ResultLine &line) { return Rank{(line.figures.*amount).steps()}; }};
}

template <qint64 ResultLine::*count>
constexpr Cell countCell(ResultField field)
{
    return {field, [](const ResultLine &line) { return QString::number(line.*count); },
            [](const ResultLine &line) { return Rank{line.*count}; }};
}

constexpr Cell cells[] = {
    dayCell<&ResultLine::day>(F::Date),
    {F::Time, [](const ResultLine &line) { return line.time.colonText(); },
     [](const ResultLine &line) { return Rank{line.time.number()}; }},
    periodCell<lettersOfMonth>(F::Month),
    periodCell<lettersOfYear>(F::Year),
    {F::Code, [](const ResultLine &line) { return line.security.code; },
     [](const ResultLine &line) {
         return Rank{0, line.security.code};
     }},
    {F::Market, &marketText,
     [](const ResultLine &line) {
         return Rank{0, marketText(line)};
     }},
    {F::Name, [](const ResultLine &line) { return line.name; },
     [](const ResultLine &line) {
         return Rank{0, line.name};
     }},
    dayCell<&ResultLine::day>(F::Opened),
    dayCell<&ResultLine::closed>(F::Closed),
    {F::Price, [](const ResultLine &line) { return line.price.text(); },
     [](const ResultLine &line) { return Rank{line.price.steps()}; }},
    countCell<&ResultLine::sharesOut>(F::Quantity),
    countCell<&ResultLine::sharesIn>(F::SharesIn),
    countCell<&ResultLine::sharesOut>(F::SharesOut),
    {F::Sales, [](const ResultLine &line) { return QString::number(line.figures.sales); },
     [](const ResultLine &line) { return Rank{line.figures.sales}; }},
    moneyCell<&Figures::sold>(F::Amount),
    moneyCell<&Figures::fees>(F::Fee),
    moneyCell<&Figures::bought>(F::Bought),
    moneyCell<&Figures::sold>(F::Sold),
    moneyCell<&Figures::fees>(F::Fees),
    moneyCell<&Figures::stampDuty>(F::StampDuty),
    moneyCell<&Figures::cost>(F::SoldCost),
    moneyCell<&Figures::profit>(F::Profit),
    {F::Percent, &percentText, &percentRank},
    moneyCell<&Figures::dividends>(F::Dividends),
    moneyCell<&Figures::taxes>(F::Taxes),
    moneyCell<&Figures::interest>(F::Interest),
    {F::Total, [](const ResultLine &line) { return line.figures.total().text(); },
     [](const ResultLine &line) { return Rank{line.figures.total().steps()}; }},
    countCell<&ResultLine::held>(F::Held),
    {F::HeldCost, [](const ResultLine &line) { return QString::number(line.heldCost, 'f', 2); },
     [](const ResultLine &line) { return stepsOfYuan(line.heldCost); }},
    {F::CostPrice,
     [](const ResultLine &line) {
         return line.costPrice ? QString::number(*line.costPrice, 'f', costDecimals) : QString();
     },
     [](const ResultLine &line) { return line.costPrice ? stepsOfYuan(*line.costPrice) : Rank{least}; }},
    {F::Method, [](const ResultLine &line) { return wordOf(line.method); },
     [](const ResultLine & /*line*/) { return Rank{}; }},
};

/// The table is in the order of the enumerators, so that a field is found by its place.
constexpr bool isInOrder()
{
    for (size_t place = 0; place < std::size(cells); ++place) {
        if (cells[place].field != static_cast<F>(place)) {
            return false;
        }
    }
    return std::size(cells) == static_cast<size_t>(F::Method) + 1;
}
static_assert(isInOrder());

const Cell &cellOf(ResultField field)
{
    return cells[static_cast<size_t>(field)];
}

} // namespace

ResultLine ResultLine::of(const KnownSecurity &security, const Sale &sale)
{
    ResultLine line{security.security, security.name, sale.date, sale.time};
    line.price = sale.price;
    line.sharesOut = sale.quantity;
    line.figures = figuresOf(sale);
    return line;
}

ResultLine ResultLine::of(const KnownSecurity &security, const Trip &trip)
{
    ResultLine line{security.security, security.name, trip.opened, {}, trip.closed};
    line.sharesIn = trip.quantityIn;
    line.sharesOut = trip.quantityOut;
    line.figures = trip.figures;
    return line;
}

ResultLine ResultLine::of(const KnownSecurity &security, const Figures &figures, const HeldShares &shares)
{
    ResultLine line{security.security, security.name};
    line.figures = figures;
    line.held = shares.quantity();
    line.heldCost = shares.basis().exactCost();
    line.costPrice = shares.basis().costPrice();
    return line;
}

ResultLine ResultLine::of(TradingDate day, const Figures &figures)
{
    ResultLine line;
    line.day = day;
    line.figures = figures;
    return line;
}

QString ResultLine::text(ResultField field) const
{
    return cellOf(field).text(*this);
}

ResultLine::Rank ResultLine::rank(ResultField field) const
{
    return cellOf(field).rank(*this);
}

QStringList cellsOf(const ResultLine &line, const std::vector<ResultField> &fields)
{
    QStringList texts;
    for (const ResultField field : fields) {
        texts.append(line.text(field));
    }
    return texts;
}

QString sumText(const Figures &sum, ResultField field)
{
    ResultLine line;
    line.figures = sum;
    return Trading::columnOf(field).isSummed ? line.text(field) : QString();
}

} // namespace TradeModule
