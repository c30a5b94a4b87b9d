#pragma once

#include "terminal/chart/marks/glyphs/TradeGlyph.h"

namespace Terminal {

/// Trades that bought and sold on one bar: a hexagon.
class BothGlyph : public TradeGlyph
{
public:
    using TradeGlyph::TradeGlyph;

protected:
    QChar letter() const override { return QLatin1Char('T'); }
    QColor colour(const ChartTheme &theme) const override { return theme.both; }
    QPainterPath head(const QRectF &box) const override;
};

} // namespace Terminal
