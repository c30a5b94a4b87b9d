#include "terminal/trade/TradeRecords.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"
#include "trading/OrderStatusName.h"
#include "trading/TradingUnits.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

using namespace TradeChart;

QString textOf(const QJsonObject &row, const char *key)
{
    return row.value(QLatin1String(key)).toString();
}

/// None when there are more than anybody holds: a sum of such numbers could be no number at all.
qint64 sharesOf(const QJsonObject &row, const char *key)
{
    const qint64 shares = textOf(row, key).toLongLong();
    const bool isPossible = shares >= -Trading::mostHeldShares && shares <= Trading::mostHeldShares;
    return isPossible ? shares : 0;
}

double amountOf(const QJsonObject &row, const char *key)
{
    return textOf(row, key).toDouble();
}

Security securityOf(const QJsonObject &row)
{
    const auto market = Trading::marketOfNumber(textOf(row, TradeKeyFields::MARKET));
    return {textOf(row, TradeKeyFields::STKCODE), market.value_or(Market::Shenzhen),
            textOf(row, TradeKeyFields::STKNAME)};
}

OrderRecord readOrder(const QJsonObject &row, Direction side)
{
    OrderRecord order;
    order.security = securityOf(row);
    order.side = side;
    order.status = textOf(row, TradeKeyFields::RTSORDERSTATUS);
    order.number = textOf(row, TradeKeyFields::RTSORDERNO);
    order.day = Trading::TradingDate::ofText(textOf(row, TradeKeyFields::RTSORDERDATE));
    order.time = Trading::ClockTime::ofText(textOf(row, TradeKeyFields::RTSENTRUSTTIME));
    order.price = amountOf(row, TradeKeyFields::RTSENTRUSTPRICE);
    order.quantity = sharesOf(row, TradeKeyFields::RTSENTRUSTQTY);
    order.dealt = sharesOf(row, TradeKeyFields::RTSMATCHQTY);
    order.dealtAmount = amountOf(row, TradeKeyFields::RTSMATCHAMT);
    return order;
}

Position readPosition(const QJsonObject &row)
{
    return {securityOf(row), sharesOf(row, Trading::AccountFields::QTY),
            sharesOf(row, Trading::AccountFields::SELLABLE), amountOf(row, TradeKeyFields::COSTPRICE)};
}

} // namespace

namespace {

bool isSame(const Security &one, const Security &other)
{
    return one.id() == other.id() && one.name == other.name;
}

} // namespace

bool operator==(const OrderRecord &one, const OrderRecord &other)
{
    return one.number == other.number && one.status == other.status && one.dealt == other.dealt &&
           one.dealtAmount == other.dealtAmount && one.side == other.side && one.day == other.day &&
           one.time == other.time && one.price == other.price && one.quantity == other.quantity &&
           isSame(one.security, other.security);
}

bool operator==(const Position &one, const Position &other)
{
    return one.quantity == other.quantity && one.sellable == other.sellable && one.cost == other.cost &&
           isSame(one.security, other.security);
}

bool operator==(const Account &one, const Account &other)
{
    return one.cash == other.cash && one.available == other.available && one.costMethod == other.costMethod &&
           one.positions == other.positions;
}

std::optional<double> OrderRecord::averagePrice() const
{
    return dealt > 0 ? std::optional<double>(dealtAmount / static_cast<double>(dealt)) : std::nullopt;
}

const Position *Account::find(const Security &security) const
{
    const auto found = std::find_if(positions.begin(), positions.end(), [&security](const Position &one) {
        return one.security.id() == security.id();
    });
    return found == positions.end() ? nullptr : &*found;
}

QString sideText(Direction side)
{
    return side == Direction::Buy ? QCoreApplication::translate("TradeRecords", "Buy")
                                  : QCoreApplication::translate("TradeRecords", "Sell");
}

QString costMethodText(const QString &word)
{
    struct MethodName
    {
        const char *word;
        const char *name;
    };
    static constexpr MethodName names[] = {
        {Trading::CostWords::AVERAGE, QT_TRANSLATE_NOOP("TradeRecords", "moving average")},
        {Trading::CostWords::DILUTED, QT_TRANSLATE_NOOP("TradeRecords", "diluted")},
        {Trading::CostWords::FIFO, QT_TRANSLATE_NOOP("TradeRecords", "first in, first out")},
    };
    const auto *const known =
        std::find_if(std::begin(names), std::end(names),
                     [&word](const MethodName &row) { return word == QLatin1String(row.word); });
    return known == std::end(names) ? word : QCoreApplication::translate("TradeRecords", known->name);
}

QString statusText(const OrderRecord &order)
{
    const char *const name = Trading::orderStatusName(order.status);
    return name == nullptr ? order.status : QCoreApplication::translate("OrderStatus", name);
}

bool isCancellable(const OrderRecord &order)
{
    return order.day && TradeChart::isCancellable(order.status);
}

OrderRecords readOrders(const QJsonObject &answer)
{
    OrderRecords orders;
    const QJsonArray rows = answer.value(QLatin1String(TradeKeyFields::DATA)).toArray();
    for (const QJsonValue &value : rows) {
        const QJsonObject row = value.toObject();
        const auto side = Trading::directionOfCode(textOf(row, TradeKeyFields::RTSBSFLAG));
        if (side && !textOf(row, TradeKeyFields::RTSORDERNO).isEmpty()) {
            orders.push_back(readOrder(row, *side));
        }
    }
    return orders;
}

Account readAccount(const QJsonObject &answer)
{
    const QJsonObject data = answer.value(QLatin1String(TradeKeyFields::DATA)).toObject();
    Account account;
    account.cash = amountOf(data, Trading::AccountFields::CASH);
    account.available = amountOf(data, Trading::AccountFields::AVAILABLE);
    account.costMethod = textOf(answer, Trading::CostFields::COSTMETHOD);
    const QJsonArray rows = data.value(QLatin1String(Trading::AccountFields::POSITIONS)).toArray();
    std::transform(rows.begin(), rows.end(), std::back_inserter(account.positions),
                   [](const QJsonValue &row) { return readPosition(row.toObject()); });
    return account;
}

} // namespace Terminal
