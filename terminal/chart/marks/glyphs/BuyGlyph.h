#pragma once

#include "terminal/chart/marks/glyphs/TradeGlyph.h"

namespace Terminal {

/// Trades that bought: a disc.
class BuyGlyph : public TradeGlyph
{
public:
    using TradeGlyph::TradeGlyph;

protected:
    QChar letter() const override { return QLatin1Char('B'); }
    QColor colour(const ChartTheme &theme) const override { return theme.rise; }
    QPainterPath head(const QRectF &box) const override;
};

} // namespace Terminal
