#pragma once

#include "terminal/chart/marks/glyphs/MarkerGlyph.h"
#include "trading/Direction.h"

namespace Terminal {

using Trading::Direction;

enum class OrderProgress { Waiting, PartlyDealt, Dealt };

/// Where the price of an order lies when the price scale does not show it.
enum class EdgeClamp { None, AtTop, AtBottom };

constexpr EdgeClamp edgeClamps[] = {EdgeClamp::None, EdgeClamp::AtTop, EdgeClamp::AtBottom};

/// Width and height in pixels of an order's mark.
constexpr double orderGlyphSize = 16;

/// The mark of an order at its price: it points up for a buy and down for a sell, and is filled as far
/// as the order is dealt. One whose price is off the scale wears an arrowhead towards that edge.
class OrderGlyph : public MarkerGlyph
{
public:
    OrderGlyph(Direction side, OrderProgress progress, EdgeClamp clamp)
        : m_side(side),
          m_progress(progress),
          m_clamp(clamp)
    {
    }

    QSizeF size(int count) const override;
    QPainterPath outline(const QRectF &box) const override;
    void paint(QPainter *painter, const QRectF &box, int count, const ChartTheme &theme) const override;

private:
    QRectF bodyBox(const QRectF &box) const;
    QPainterPath body(const QRectF &box) const;
    QPainterPath arrowhead(const QRectF &box) const;
    double filledShare() const;

    Direction m_side;
    OrderProgress m_progress;
    EdgeClamp m_clamp;
};

} // namespace Terminal
