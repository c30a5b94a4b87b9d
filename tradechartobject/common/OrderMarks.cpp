#include "tradechartobject/common/OrderMarks.h"

#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace TradeChart {

namespace {

constexpr unsigned int priceDecimals = 3;
constexpr double keysPerUnit = 1000.0;
constexpr double endOfKeys = 9223372036854775808.0; // 2^63: keys are signed 64-bit integers

// What waiting and dealt orders of one side at one price become, sells too: painters in the field draw
// every mixed price that way.
constexpr Korvane::MarkerKind mixed = Korvane::BuyPartDeal;

/// What an order of a side and a status group does to the marker at its price.
struct Transition
{
    bool isBuy;
    OrderStatusGroup group;
    Korvane::MarkerKind alone; ///< the marker when it is the first at this price
    std::optional<Korvane::MarkerKind>
        mixesWith; ///< the marker that it turns into `mixed`; none: it replaces all
};

constexpr Transition transitions[] = {
    {true, OrderStatusGroup::PartDealt, Korvane::BuyPartDeal, std::nullopt},
    {true, OrderStatusGroup::Waiting, Korvane::BuyWaiting, Korvane::BuyDealed},
    {true, OrderStatusGroup::Dealt, Korvane::BuyDealed, Korvane::BuyWaiting},
    {false, OrderStatusGroup::PartDealt, Korvane::SellPartDeal, std::nullopt},
    {false, OrderStatusGroup::Waiting, Korvane::SellWaiting, Korvane::SellDealed},
    {false, OrderStatusGroup::Dealt, Korvane::SellDealed, Korvane::SellWaiting},
};

const Transition &transitionOf(bool isBuy, OrderStatusGroup group)
{
    return *std::find_if(std::begin(transitions), std::end(transitions),
                         [=](const Transition &row) { return row.isBuy == isBuy && row.group == group; });
}

} // namespace

std::int64_t priceKey(double price)
{
    const double thousandths = TradeChart::round<double>(price, priceDecimals) * keysPerUnit;
    const bool isKey = -endOfKeys <= thousandths && thousandths < endOfKeys;
    return isKey ? static_cast<std::int64_t>(thousandths) : 0;
}

void addOrder(const EntrustInfo &order, std::map<std::int64_t, int> &marks)
{
    const OrderStatusRow *const status = OrderStatusTable::find(order.orderStatus);
    if (status == nullptr || !status->group) {
        return;
    }
    const Transition &transition = transitionOf(order.isBuy, *status->group);
    const int alone = transition.alone;
    int &mark = marks.try_emplace(priceKey(order.orderPrice), alone).first->second;
    if (!transition.mixesWith) {
        mark = alone;
    } else if (mark == *transition.mixesWith) {
        mark = mixed;
    }
}

} // namespace TradeChart
