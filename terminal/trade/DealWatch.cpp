#include "terminal/trade/DealWatch.h"

#include "tradechartobject/common/OrderStatusTable.h"

namespace Terminal {

namespace {

using TradeChart::OrderStatusGroup;

bool isOpen(const OrderRecord &order)
{
    const auto *const row = TradeChart::OrderStatusTable::find(order.status);
    return row != nullptr && row->isOpen;
}

/// True where the status tells that something was just dealt: a cancellation of the rest does not.
bool tellsDeal(const QString &status)
{
    const auto *const row = TradeChart::OrderStatusTable::find(status);
    const bool isPart = row != nullptr && row->group == OrderStatusGroup::PartDealt && row->isCancellable;
    return isPart || (row != nullptr && row->group == OrderStatusGroup::Dealt);
}

} // namespace

void DealWatch::take(const OrderRecords &orders)
{
    for (const OrderRecord &order : orders) {
        if (isOpen(order)) {
            m_watched.insert(order.number, order);
        }
    }
}

void DealWatch::hear(const QString &number, const QString &status)
{
    const auto known = m_watched.find(number);
    if (known == m_watched.end() || !tellsDeal(status)) {
        return;
    }
    OrderRecord order = *known;
    order.status = status;
    if (!isOpen(order)) {
        m_watched.erase(known);
    }
    Q_EMIT dealt(order);
}

} // namespace Terminal
