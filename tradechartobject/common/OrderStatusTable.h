// All that is known of an order by its status: what it is called, what marker it gets, whether it can be
// cancelled, whether something may still happen to it. Overlays, trading module and terminal read it here.
#pragma once

#include <QString>

#include <optional>

namespace TradeChart {

/// What the markers of orders tell apart.
enum class OrderStatusGroup { PartDealt, Waiting, Dealt };

/// A status of an order.
struct OrderStatusRow
{
    QLatin1String code;                    ///< a code of TradeChart::OrderStatus
    const char *text;                      ///< for users, Chinese, UTF-8
    std::optional<OrderStatusGroup> group; ///< none: such an order is listed, but gets no marker
    bool isCancellable;                    ///< what is left of the order can be cancelled
    bool isOpen;                           ///< something may still happen to the order
};

/// Every status that there is.
class OrderStatusTable
{
public:
    static const OrderStatusRow *begin();
    static const OrderStatusRow *end();

    /// The row of a code, whose letter case matters; null for an unknown one.
    static const OrderStatusRow *find(const QString &code);
    /// The same in either letter case.
    static const OrderStatusRow *findInAnyCase(const QString &code);
};

/// True for the statuses in which an order can still be cancelled.
bool isCancellable(const QString &orderStatus);

} // namespace TradeChart
