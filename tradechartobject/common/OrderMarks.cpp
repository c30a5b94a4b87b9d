#include "tradechartobject/common/OrderMarks.h"

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
constexpr MarkerKind mixed = MarkerKind::BuyPartDeal;

/// What an order of a side and a status group does to the marker at its price.
struct Transition
{
    bool isBuy;
    OrderStatusGroup group;
    MarkerKind alone;                    ///< the marker when it is the first at this price
    std::optional<MarkerKind> mixesWith; ///< the marker that it turns into `mixed`; none: it replaces all
};

constexpr Transition transitions[] = {
    {true, OrderStatusGroup::PartDealt, MarkerKind::BuyPartDeal, std::nullopt},
    {true, OrderStatusGroup::Waiting, MarkerKind::BuyWaiting, MarkerKind::BuyDealed},
    {true, OrderStatusGroup::Dealt, MarkerKind::BuyDealed, MarkerKind::BuyWaiting},
    {false, OrderStatusGroup::PartDealt, MarkerKind::SellPartDeal, std::nullopt},
    {false, OrderStatusGroup::Waiting, MarkerKind::SellWaiting, MarkerKind::SellDealed},
    {false, OrderStatusGroup::Dealt, MarkerKind::SellDealed, MarkerKind::SellWaiting},
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
    const auto alone = static_cast<int>(transition.alone);
    int &mark = marks.try_emplace(priceKey(order.orderPrice), alone).first->second;
    if (!transition.mixesWith) {
        mark = alone;
    } else if (mark == static_cast<int>(*transition.mixesWith)) {
        mark = static_cast<int>(mixed);
    }
}

} // namespace TradeChart
