// The tables of the orders-and-positions panel.
#pragma once

#include "terminal/trade/LastPrice.h"
#include "terminal/trade/RecordTable.h"
#include "terminal/trade/TradeRecords.h"

#include <optional>

namespace Terminal {

/// What is held, and what it comes to at the security's own last price.
struct PricedPosition
{
    Position position;
    std::optional<LastPrice> last;

    std::optional<double> profit() const;
};

enum class OrderColumn { Time, Security, Side, Price, Quantity, Dealt, Average, Status, Number };

/// Orders, newest first.
class OrdersTable : public RecordTable<OrderRecord, OrderColumn>
{
public:
    OrdersTable();

    /// Takes orders in any order.
    void setOrders(OrderRecords orders);

    /// The row of the order with this number; -1 for none.
    int rowOf(const QString &number) const;
};

enum class PositionColumn { Code, Name, Quantity, Sellable, Cost, Last, Profit };

class PositionsTable : public RecordTable<PricedPosition, PositionColumn>
{
public:
    PositionsTable();
};

/// A price of a security of whatever day, to its tick.
QString tickText(const Security &security, double price);

/// "1,234.50"
QString amountText(double yuan);

/// At which price it was dealt, as the table tells it; empty while nothing was.
QString averageText(const OrderRecord &order);

/// "Buy 300 × 1700.50", in the user's language.
QString orderSummary(const OrderRequest &order, bool hidesAmounts);

} // namespace Terminal
