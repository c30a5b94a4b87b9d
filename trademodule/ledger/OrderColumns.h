#pragma once

#include "trademodule/ledger/Order.h"

#include "trademodule/ledger/Rows.h"
#include <QVariantList>

namespace TradeModule {

/// How orders stand in the table `trade_order`.
namespace OrderColumns {

/// The columns to select from `trade_order o` and `security s`.
QString selected();
Order read(const Rows &row);

/// A statement that writes a new order and gives its number, and its values.
QString insertion();
QVariantList insertedValues(const Order &order, qint64 securityId);

/// A statement that writes what changes of an order, and its values.
QString update();
QVariantList updatedValues(const Order &order);

} // namespace OrderColumns

} // namespace TradeModule
