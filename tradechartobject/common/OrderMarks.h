// What marker the orders at one price of one bar are drawn with.
#pragma once

#include <QString>

#include <cstdint>
#include <map>

namespace TradeChart {

struct EntrustInfo;

/// The painter's marker kinds. Do not change the numbers: painters know them.
enum class MarkerKind : int {
    BuyWaiting = 20,
    BuyPartDeal = 21, ///< also waiting and dealt orders of one side at one price, buys and sells alike
    BuyDealed = 22,
    SellWaiting = 23,
    SellPartDeal = 24,
    SellDealed = 25
};

/// Price of an order in thousandths, cut off, not rounded: 1.001 is 1000, because 1.001 * 1000.0 is
/// just below 1001. 0 for what no number can be made of.
std::int64_t priceKey(double price);

/// The price that a key stands for.
constexpr double keyPrice(std::int64_t key)
{
    return static_cast<double>(key) / 1000.0;
}

/// Adds an order to the marks of its bar, price key to marker kind. The result depends on the order
/// of the orders: the first decides, later ones change it by the table in the source.
void addOrder(const EntrustInfo &order, std::map<std::int64_t, int> &marks);

} // namespace TradeChart
