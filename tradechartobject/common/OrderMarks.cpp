#include "tradechartobject/common/OrderMarks.h"

#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace TradeChart {

namespace {

constexpr unsigned int priceDecimals = 3;
constexpr double keysPerUnit = 1000.0;
constexpr double largestKey = 9.0e18; // what a 64-bit integer surely holds

enum class StatusGroup { PartDealt, Waiting, Dealt };

struct GroupedStatus
{
    const char *status;
    StatusGroup group;
};

// A status that is not here makes no marker; its order is still listed.
const GroupedStatus groupedStatuses[] = {
    {OrderStatus::PartDeal, StatusGroup::PartDealt},
    {OrderStatus::PartCanceled, StatusGroup::PartDealt},
    {OrderStatus::PartDealWaittingCancel, StatusGroup::PartDealt},
    {OrderStatus::None, StatusGroup::Waiting},
    {OrderStatus::Quoting, StatusGroup::Waiting},
    {OrderStatus::WaittingQuote, StatusGroup::Waiting},
    {OrderStatus::Quoted, StatusGroup::Waiting},
    {OrderStatus::Dealed, StatusGroup::Dealt},
};

/// What an order of a side and a status group does to the marker at its price.
struct Transition
{
    bool isBuy;
    StatusGroup group;
    MarkerKind alone;   ///< the marker when it is the first at this price
    bool overwrites;    ///< it becomes the marker whatever was there
    MarkerKind meets;   ///< or: when this marker is there already ...
    MarkerKind becomes; ///< ... it becomes this one; any other marker stays
};

// Waiting and dealt sells at one price become the buy side's mixed marker: painters in the field draw
// every mixed price that way.
constexpr Transition transitions[] = {
    {true, StatusGroup::PartDealt, MarkerKind::BuyPartDeal, true, MarkerKind::BuyPartDeal,
     MarkerKind::BuyPartDeal},
    {true, StatusGroup::Waiting, MarkerKind::BuyWaiting, false, MarkerKind::BuyDealed,
     MarkerKind::BuyPartDeal},
    {true, StatusGroup::Dealt, MarkerKind::BuyDealed, false, MarkerKind::BuyWaiting, MarkerKind::BuyPartDeal},
    {false, StatusGroup::PartDealt, MarkerKind::SellPartDeal, true, MarkerKind::SellPartDeal,
     MarkerKind::SellPartDeal},
    {false, StatusGroup::Waiting, MarkerKind::SellWaiting, false, MarkerKind::SellDealed,
     MarkerKind::BuyPartDeal},
    {false, StatusGroup::Dealt, MarkerKind::SellDealed, false, MarkerKind::SellWaiting,
     MarkerKind::BuyPartDeal},
};

const GroupedStatus *findGroup(const QString &status)
{
    const auto *const end = std::end(groupedStatuses);
    const auto *const found = std::find_if(std::begin(groupedStatuses), end, [&](const GroupedStatus &row) {
        return status == QLatin1String(row.status);
    });
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
    return std::abs(thousandths) < largestKey ? static_cast<std::int64_t>(thousandths) : 0;
}

void addOrder(const EntrustInfo &order, std::map<std::int64_t, int> &marks)
{
    const GroupedStatus *status = findGroup(order.orderStatus);
    if (status == nullptr) {
        return;
    }
    const Transition &transition = transitionOf(order.isBuy, status->group);
    const auto [mark, isNew] =
        marks.try_emplace(priceKey(order.orderPrice), static_cast<int>(transition.alone));
    if (isNew) {
        return;
    }
    if (transition.overwrites || mark->second == static_cast<int>(transition.meets)) {
        mark->second = static_cast<int>(transition.becomes);
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
