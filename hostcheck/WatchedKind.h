#pragma once

#include <string>

namespace HostCheck {

/// The overlays of the library.
enum class WatchedKind {
    CostLine,
    BuySellPoints,
    OrderPoints,
    CombinedCost,
    CombinedTrades,
    CombinedNothing
};

inline std::string nameOf(WatchedKind kind)
{
    switch (kind) {
    case WatchedKind::CostLine:
        return "cost line";
    case WatchedKind::BuySellPoints:
        return "buy/sell points";
    case WatchedKind::OrderPoints:
        return "order points";
    case WatchedKind::CombinedCost:
    case WatchedKind::CombinedTrades:
    case WatchedKind::CombinedNothing:
        return "combined overlay";
    }
    return {};
}

inline bool isCombined(WatchedKind kind)
{
    return kind >= WatchedKind::CombinedCost;
}

} // namespace HostCheck
