#include "terminal/trade/TradeRecords.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

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

qint64 numberOf(const QJsonObject &row, const char *key)
{
    return textOf(row, key).toLongLong();
}

double amountOf(const QJsonObject &row, const char *key)
{
    return textOf(row, key).toDouble();
}

/// Answers number the markets in another way than overlays do: "1" is Shanghai.
Security securityOf(const QJsonObject &row)
{
    const bool isShanghai = textOf(row, TradeKeyFields::MARKET) == QLatin1String("1");
    return {textOf(row, TradeKeyFields::STKCODE), isShanghai ? Market::Shanghai : Market::Shenzhen,
            textOf(row, TradeKeyFields::STKNAME)};
}

std::optional<OrderSide> sideOf(const QJsonObject &row)
{
    const QString flag = toBsFlag(textOf(row, TradeKeyFields::RTSBSFLAG));
    if (flag.isEmpty()) {
        return std::nullopt;
    }
    return flag == QLatin1String(BSFlag::BUY) ? OrderSide::Buy : OrderSide::Sell;
}

OrderRecord readOrder(const QJsonObject &row, OrderSide side)
{
    constexpr int hundredths = 100; // times are hhmmsscc
    OrderRecord order;
    order.security = securityOf(row);
    order.side = side;
    order.status = textOf(row, TradeKeyFields::RTSORDERSTATUS);
    order.number = textOf(row, TradeKeyFields::RTSORDERNO);
    order.date = static_cast<std::int32_t>(numberOf(row, TradeKeyFields::RTSORDERDATE));
    order.time = static_cast<std::int32_t>(numberOf(row, TradeKeyFields::RTSENTRUSTTIME) / hundredths);
    order.price = amountOf(row, TradeKeyFields::RTSENTRUSTPRICE);
    order.quantity = numberOf(row, TradeKeyFields::RTSENTRUSTQTY);
    order.dealt = numberOf(row, TradeKeyFields::RTSMATCHQTY);
    order.dealtAmount = amountOf(row, TradeKeyFields::RTSMATCHAMT);
    return order;
}

Position readPosition(const QJsonObject &row)
{
    return {securityOf(row), numberOf(row, Module::AccountFields::QTY),
            numberOf(row, Module::AccountFields::SELLABLE), amountOf(row, TradeKeyFields::COSTPRICE)};
}

} // namespace

std::optional<double> OrderRecord::averagePrice() const
{
    return dealt > 0 ? std::optional<double>(dealtAmount / static_cast<double>(dealt)) : std::nullopt;
}

const Position *Account::find(const Security &security) const
{
    const auto found = std::find_if(positions.begin(), positions.end(), [&security](const Position &one) {
        return isSame(one.security, security);
    });
    return found == positions.end() ? nullptr : &*found;
}

bool isSame(const Security &one, const Security &other)
{
    return one.code == other.code && one.market == other.market;
}

QString sideText(OrderSide side)
{
    return side == OrderSide::Buy ? QCoreApplication::translate("TradeRecords", "Buy")
                                  : QCoreApplication::translate("TradeRecords", "Sell");
}

QString statusText(const OrderRecord &order)
{
    const char *const known = OrderStatus::getOrderStatusTxt(order.status);
    return known == nullptr ? order.status : QString::fromUtf8(known);
}

bool isCancellable(const OrderRecord &order)
{
    const char *const open[] = {OrderStatus::WaittingQuote, OrderStatus::Quoting, OrderStatus::Quoted,
                                OrderStatus::PartDeal};
    return std::any_of(std::begin(open), std::end(open),
                       [&order](const char *status) { return order.status == QLatin1String(status); });
}

OrderRecords readOrders(const QJsonObject &answer)
{
    OrderRecords orders;
    const QJsonArray rows = answer.value(QLatin1String(TradeKeyFields::DATA)).toArray();
    for (const QJsonValue &value : rows) {
        const QJsonObject row = value.toObject();
        const auto side = sideOf(row);
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
    account.cash = amountOf(data, Module::AccountFields::CASH);
    account.available = amountOf(data, Module::AccountFields::AVAILABLE);
    const QJsonArray rows = data.value(QLatin1String(Module::AccountFields::POSITIONS)).toArray();
    std::transform(rows.begin(), rows.end(), std::back_inserter(account.positions),
                   [](const QJsonValue &row) { return readPosition(row.toObject()); });
    return account;
}

} // namespace Terminal
