#pragma once

#include "terminal/chart/marks/glyphs/MarkerGlyph.h"
#include "terminal/chart/marks/glyphs/OrderGlyph.h"
#include "terminal/chart/marks/glyphs/TradeGlyph.h"
#include "tradechartobject/ChartInterface.h"

#include <array>
#include <cstddef>

namespace Terminal {

/// What the trades of a mark did.
enum class TradeKind { Buy, Sell, Both };

/// What an overlay means by the number of a style of marks on bars.
struct SeriesStyle
{
    int number;
    TradeKind kind;
    MarkSide side;
};

constexpr std::array<SeriesStyle, 6> seriesStyles = {{
    {Korvane::BuyAbove, TradeKind::Buy, MarkSide::Above},
    {Korvane::BuyBelow, TradeKind::Buy, MarkSide::Below},
    {Korvane::SellAbove, TradeKind::Sell, MarkSide::Above},
    {Korvane::SellBelow, TradeKind::Sell, MarkSide::Below},
    {Korvane::BothAbove, TradeKind::Both, MarkSide::Above},
    {Korvane::BothBelow, TradeKind::Both, MarkSide::Below},
}};

/// What an overlay means by the number of a kind of orders.
struct OrderKind
{
    int number;
    Direction side;
    OrderProgress progress;
};

constexpr std::array<OrderKind, 6> orderKinds = {{
    {Korvane::BuyWaiting, Direction::Buy, OrderProgress::Waiting},
    {Korvane::BuyPartDeal, Direction::Buy, OrderProgress::PartlyDealt},
    {Korvane::BuyDealed, Direction::Buy, OrderProgress::Dealt},
    {Korvane::SellWaiting, Direction::Sell, OrderProgress::Waiting},
    {Korvane::SellPartDeal, Direction::Sell, OrderProgress::PartlyDealt},
    {Korvane::SellDealed, Direction::Sell, OrderProgress::Dealt},
}};

/// True when the numbers of a table follow each other, so that a number leads to its row.
template <typename Rows>
constexpr bool isNumberedInOrder(const Rows &rows)
{
    for (size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].number != rows.front().number + static_cast<int>(row)) {
            return false;
        }
    }
    return true;
}
static_assert(isNumberedInOrder(seriesStyles) && isNumberedInOrder(orderKinds));

template <typename Rows>
constexpr bool hasNumber(const Rows &rows, int number)
{
    return number >= rows.front().number && number <= rows.back().number;
}

/// The row of a number; requires hasNumber().
template <typename Rows>
constexpr const auto &rowOf(const Rows &rows, int number)
{
    return rows[static_cast<size_t>(number - rows.front().number)];
}

constexpr bool isSeriesStyle(int style)
{
    return hasNumber(seriesStyles, style);
}

constexpr bool isOrderKind(int kind)
{
    return hasNumber(orderKinds, kind);
}

/// Number of a glyph in the set: those of bars first, then those of orders for each edge of the scale.
using GlyphNumber = int;

constexpr int glyphCount = static_cast<int>(seriesStyles.size() + std::size(edgeClamps) * orderKinds.size());

/// Requires isSeriesStyle().
constexpr GlyphNumber seriesGlyph(int style)
{
    return style - seriesStyles.front().number;
}

/// Of the trades of a bar, or of several, on one side of it.
GlyphNumber seriesGlyph(TradeKind kind, MarkSide side);

/// Requires isOrderKind().
constexpr GlyphNumber orderGlyph(int kind, EdgeClamp clamp)
{
    return static_cast<int>(seriesStyles.size() + static_cast<size_t>(clamp) * orderKinds.size()) + kind -
           orderKinds.front().number;
}

constexpr bool isOrderGlyph(GlyphNumber number)
{
    return number >= static_cast<int>(seriesStyles.size());
}

/// What a glyph of a bar stands for; requires one that is not of an order.
constexpr const SeriesStyle &seriesStyleOf(GlyphNumber number)
{
    return seriesStyles[static_cast<size_t>(number)];
}

/// What a glyph of an order stands for; requires isOrderGlyph().
constexpr const OrderKind &orderKindOf(GlyphNumber number)
{
    return orderKinds[(static_cast<size_t>(number) - seriesStyles.size()) % orderKinds.size()];
}

const MarkerGlyph &glyph(GlyphNumber number);

} // namespace Terminal
