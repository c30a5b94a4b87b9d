#include "terminal/trade/TradeTables.h"

#include "terminal/chart/text/FigureText.h"
#include "trading/MarketRules.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <tuple>

namespace Terminal {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(TradeTables)
};

QString noFigure()
{
    return QStringLiteral(u"–");
}

QString timeText(const OrderRecord &order)
{
    return order.time ? order.time->colonText() : QString();
}

QString figure(const std::optional<double> &value, int decimals)
{
    return value ? QString::number(*value, 'f', decimals) : noFigure();
}

QColor sideColour(const OrderRecord &order, const ChartTheme &theme)
{
    return order.side == Direction::Buy ? theme.rise : theme.fall;
}

QColor profitColour(const PricedPosition &row, const ChartTheme &theme)
{
    const double profit = row.profit().value_or(0);
    return profit > 0 ? theme.rise : profit < 0 ? theme.fall : theme.text;
}

QString profitText(const PricedPosition &row)
{
    const auto profit = row.profit();
    return !profit ? noFigure() : (*profit > 0 ? QStringLiteral("+") : QString()) + amountText(*profit);
}

/// Where the price of the row comes from.
QString originText(const PricedPosition &row)
{
    if (!row.last) {
        return Texts::tr("No price is known");
    }
    const QString day = row.last->day.dashedText();
    switch (row.last->origin) {
    case PriceOrigin::Quote:
        return Texts::tr("Quote of %1").arg(day);
    case PriceOrigin::Close:
        return Texts::tr("Close of %1").arg(day);
    case PriceOrigin::Replay:
        return Texts::tr("Replayed quote of %1").arg(day);
    }
    return {};
}

bool isSameOrder(const OrderRecord &one, const OrderRecord &other)
{
    return one.number == other.number && one.day == other.day;
}

bool isSamePosition(const PricedPosition &one, const PricedPosition &other)
{
    return one.position.security.id() == other.position.security.id();
}

/// Numbers of orders grow; longer ones are larger.
bool isNewer(const OrderRecord &one, const OrderRecord &other)
{
    const auto ageOf = [](const OrderRecord &order, const int &digits) {
        return std::tie(order.day, order.time, digits, order.number);
    };
    const int digits = one.number.size();
    const int otherDigits = other.number.size();
    return ageOf(one, digits) > ageOf(other, otherDigits);
}

std::vector<OrdersTable::Column> orderColumns()
{
    return {
        {OrderColumn::Time, [] { return Texts::tr("Time"); }, Qt::AlignLeft, timeText},
        {OrderColumn::Security, [] { return Texts::tr("Security"); }, Qt::AlignLeft,
         [](const OrderRecord &order) {
             return order.security.name.isEmpty() ? order.security.code : order.security.name;
         },
         nullptr, false, [](const OrderRecord &order) { return order.security.code; }},
        {OrderColumn::Side, [] { return Texts::tr("Side"); }, Qt::AlignLeft,
         [](const OrderRecord &order) { return sideText(order.side); }, sideColour},
        {OrderColumn::Price, [] { return Texts::tr("Price"); }, Qt::AlignRight,
         [](const OrderRecord &order) { return tickText(order.security, order.price); }},
        {OrderColumn::Quantity, [] { return Texts::tr("Quantity"); }, Qt::AlignRight,
         [](const OrderRecord &order) { return QString::number(order.quantity); }, nullptr, true},
        {OrderColumn::Dealt, [] { return Texts::tr("Dealt"); }, Qt::AlignRight,
         [](const OrderRecord &order) { return QString::number(order.dealt); }, nullptr, true},
        {OrderColumn::Average, [] { return Texts::tr("Average"); }, Qt::AlignRight,
         [](const OrderRecord &order) { return averageText(order); }},
        {OrderColumn::Status, [] { return Texts::tr("Status"); }, Qt::AlignLeft, statusText},
        {OrderColumn::Number, [] { return Texts::tr("Number"); }, Qt::AlignRight,
         [](const OrderRecord &order) { return order.number; }},
    };
}

std::vector<PositionsTable::Column> positionColumns()
{
    return {
        {PositionColumn::Code, [] { return Texts::tr("Code"); }, Qt::AlignLeft,
         [](const PricedPosition &row) { return row.position.security.code; }},
        {PositionColumn::Name, [] { return Texts::tr("Name"); }, Qt::AlignLeft,
         [](const PricedPosition &row) { return row.position.security.name; }},
        {PositionColumn::Quantity, [] { return Texts::tr("Quantity"); }, Qt::AlignRight,
         [](const PricedPosition &row) { return QString::number(row.position.quantity); }, nullptr, true},
        {PositionColumn::Sellable, [] { return Texts::tr("Sellable"); }, Qt::AlignRight,
         [](const PricedPosition &row) { return QString::number(row.position.sellable); }, nullptr, true},
        {PositionColumn::Cost, [] { return Texts::tr("Cost"); }, Qt::AlignRight,
         [](const PricedPosition &row) { return QString::number(row.position.cost, 'f', 3); }, nullptr, true},
        {PositionColumn::Last, [] { return Texts::tr("Last"); }, Qt::AlignRight,
         [](const PricedPosition &row) {
             return row.last ? tickText(row.position.security, row.last->price) : noFigure();
         },
         nullptr, false, originText},
        {PositionColumn::Profit, [] { return Texts::tr("Profit"); }, Qt::AlignRight, profitText, profitColour,
         true, originText},
    };
}

} // namespace

std::optional<double> PricedPosition::profit() const
{
    return last
               ? std::optional<double>((last->price - position.cost) * static_cast<double>(position.quantity))
               : std::nullopt;
}

OrdersTable::OrdersTable() : RecordTable(orderColumns(), isSameOrder) {}

void OrdersTable::setOrders(OrderRecords orders)
{
    std::reverse(orders.begin(), orders.end()); // the module tells the oldest first
    if (!std::is_sorted(orders.begin(), orders.end(), isNewer)) {
        std::sort(orders.begin(), orders.end(), isNewer);
    }
    setRecords(std::move(orders));
}

int OrdersTable::rowOf(const QString &number) const
{
    const auto found = std::find_if(records().begin(), records().end(),
                                    [&number](const OrderRecord &order) { return order.number == number; });
    return found == records().end() ? -1 : static_cast<int>(found - records().begin());
}

PositionsTable::PositionsTable() : RecordTable(positionColumns(), isSamePosition) {}

QString tickText(const Security &security, double price)
{
    return priceText(price, Trading::MarketRules::decimals(security.id(), security.name));
}

QString amountText(double yuan)
{
    return QLocale(QLocale::English).toString(yuan, 'f', 2);
}

QString averageText(const OrderRecord &order)
{
    return figure(order.averagePrice(), 3);
}

QString orderSummary(const OrderRequest &order, bool hidesAmounts)
{
    const QString quantity = shownAmount(QString::number(order.quantity), hidesAmounts);
    return QStringLiteral(u"%1 %2 × %3")
        .arg(sideText(order.side), quantity, tickText(order.security, order.price));
}

} // namespace Terminal
