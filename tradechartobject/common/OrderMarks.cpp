#include "tradechartobject/common/OrderMarks.h"

#include "tradechartobject/common/EntrustInfo.h"
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

enum class StatusGroup { PartDealt, Waiting, Dealt };

struct GroupedStatus
{
    QLatin1String status;
    StatusGroup group;
};

// A status that is not here makes no marker; its order is still listed.
const GroupedStatus groupedStatuses[] = {
    {QLatin1String(OrderStatus::PartDeal), StatusGroup::PartDealt},
    {QLatin1String(OrderStatus::PartCanceled), StatusGroup::PartDealt},
    {QLatin1String(OrderStatus::PartDealWaittingCancel), StatusGroup::PartDealt},
    {QLatin1String(OrderStatus::None), StatusGroup::Waiting},
    {QLatin1String(OrderStatus::Quoting), StatusGroup::Waiting},
    {QLatin1String(OrderStatus::WaittingQuote), StatusGroup::Waiting},
    {QLatin1String(OrderStatus::Quoted), StatusGroup::Waiting},
    {QLatin1String(OrderStatus::Dealed), StatusGroup::Dealt},
};

// What waiting and dealt orders of one side at one price become, sells too: painters in the field draw
// every mixed price that way.
constexpr MarkerKind mixed = MarkerKind::BuyPartDeal;

/// What an order of a side and a status group does to the marker at its price.
struct Transition
{
    bool isBuy;
    StatusGroup group;
    MarkerKind alone;                    ///< the marker when it is the first at this price
    std::optional<MarkerKind> mixesWith; ///< the marker that it turns into `mixed`; none: it replaces all
};

constexpr Transition transitions[] = {
    {true, StatusGroup::PartDealt, MarkerKind::BuyPartDeal, std::nullopt},
    {true, StatusGroup::Waiting, MarkerKind::BuyWaiting, MarkerKind::BuyDealed},
    {true, StatusGroup::Dealt, MarkerKind::BuyDealed, MarkerKind::BuyWaiting},
    {false, StatusGroup::PartDealt, MarkerKind::SellPartDeal, std::nullopt},
    {false, StatusGroup::Waiting, MarkerKind::SellWaiting, MarkerKind::SellDealed},
    {false, StatusGroup::Dealt, MarkerKind::SellDealed, MarkerKind::SellWaiting},
};

const GroupedStatus *findGroup(const QString &status)
{
    const auto *const end = std::end(groupedStatuses);
    const auto *const found = std::find_if(std::begin(groupedStatuses), end,
                                           [&](const GroupedStatus &row) { return status == row.status; });
    return found == end ? nullptr : found;
}

const Transition &transitionOf(bool isBuy, StatusGroup group)
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
    const GroupedStatus *status = findGroup(order.orderStatus);
    if (status == nullptr) {
        return;
    }
    const Transition &transition = transitionOf(order.isBuy, status->group);
    const auto alone = static_cast<int>(transition.alone);
    int &mark = marks.try_emplace(priceKey(order.orderPrice), alone).first->second;
    if (!transition.mixesWith) {
        mark = alone;
    } else if (mark == static_cast<int>(*transition.mixesWith)) {
        mark = static_cast<int>(mixed);
    }
}

bool isCancellable(const QString &orderStatus)
{
    const char *const cancellable[] = {OrderStatus::PartDeal, OrderStatus::Quoting,
                                       OrderStatus::WaittingQuote, OrderStatus::Quoted};
    return std::any_of(std::begin(cancellable), std::end(cancellable),
                       [&](const char *status) { return orderStatus == QLatin1String(status); });
}

} // namespace TradeChart
