#pragma once

#include "terminal/chart/marks/glyphs/TradeGlyph.h"

namespace Terminal {

/// Trades that sold: a square.
class SellGlyph : public TradeGlyph
{
public:
    using TradeGlyph::TradeGlyph;

protected:
    QChar letter() const override { return QLatin1Char('S'); }
    QColor colour(const ChartTheme &theme) const override { return theme.fall; }
    QPainterPath head(const QRectF &box) const override;
};

} // namespace Terminal
