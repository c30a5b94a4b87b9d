#pragma once

#include <string>

namespace TradeChart {

struct EntrustInfo;

/// The lines of an order in a pop-up list, as one UTF-8 text; `name` is the security's.
std::string orderText(const EntrustInfo &order, const std::string &name);

} // namespace TradeChart
