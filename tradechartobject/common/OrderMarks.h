// What marker the orders at one price of one bar are drawn with.
#pragma once

#include <QString>

#include <cstdint>
#include <map>

namespace TradeChart {

struct EntrustInfo;

/// Price of an order in thousandths, cut off, not rounded: 1.001 is 1000, because 1.001 * 1000.0 is
/// just below 1001. 0 for what no number can be made of.
std::int64_t priceKey(double price);

/// The price that a key stands for.
constexpr double keyPrice(std::int64_t key)
{
    return static_cast<double>(key) / 1000.0;
}

/// Adds an order to the marks of its bar, price key to Korvane::MarkerKind. The result depends on the order
/// of the orders: the first decides, later ones change it by the table in the source.
void addOrder(const EntrustInfo &order, std::map<std::int64_t, int> &marks);

} // namespace TradeChart
