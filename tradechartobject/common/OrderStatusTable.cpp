#include "tradechartobject/common/OrderStatusTable.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <iterator>

namespace TradeChart {

namespace {

using namespace OrderStatus;

constexpr auto partDealt = OrderStatusGroup::PartDealt;
constexpr auto waiting = OrderStatusGroup::Waiting;
constexpr auto dealt = OrderStatusGroup::Dealt;
constexpr auto noGroup = std::nullopt;

constexpr bool cancellable = true;
constexpr bool notCancellable = false;
constexpr bool open = true;
constexpr bool over = false;

const OrderStatusRow rows[] = {
    {QLatin1String(None), "未报", waiting, notCancellable, open},
    {QLatin1String(Quoting), "正报", waiting, cancellable, open},
    {QLatin1String(Quoted), "已报", waiting, cancellable, open},
    {QLatin1String(QuotedWaittingCancel), "已报待撤", noGroup, notCancellable, open},
    {QLatin1String(PartDealWaittingCancel), "部成待撤", partDealt, notCancellable, open},
    {QLatin1String(PartCanceled), "部撤", partDealt, notCancellable, over},
    {QLatin1String(Canceled), "已撤", noGroup, notCancellable, over},
    {QLatin1String(PartDeal), "部成", partDealt, cancellable, open},
    {QLatin1String(Dealed), "已成", dealt, notCancellable, over},
    {QLatin1String(AbolishedOrder), "废单", noGroup, notCancellable, over},
    {QLatin1String(WaittingQuote), "待报", waiting, cancellable, open},
    {QLatin1String(QuotingB), "正报", noGroup, notCancellable, open},
    {QLatin1String(Conformed), "已确认", noGroup, notCancellable, over},
};

template <typename Matches>
const OrderStatusRow *findRow(Matches matches)
{
    const auto *const row = std::find_if(std::begin(rows), std::end(rows), matches);
    return row == std::end(rows) ? nullptr : row;
}

} // namespace

const OrderStatusRow *OrderStatusTable::begin()
{
    return std::begin(rows);
}

const OrderStatusRow *OrderStatusTable::end()
{
    return std::end(rows);
}

const OrderStatusRow *OrderStatusTable::find(const QString &code)
{
    return findRow([&code](const OrderStatusRow &row) { return code == row.code; });
}

const OrderStatusRow *OrderStatusTable::findInAnyCase(const QString &code)
{
    return findRow(
        [&code](const OrderStatusRow &row) { return code.compare(row.code, Qt::CaseInsensitive) == 0; });
}

bool isCancellable(const QString &orderStatus)
{
    const OrderStatusRow *const row = OrderStatusTable::find(orderStatus);
    return row != nullptr && row->isCancellable;
}

} // namespace TradeChart
