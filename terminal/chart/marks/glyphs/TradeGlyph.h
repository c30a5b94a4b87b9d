#pragma once

#include "terminal/chart/marks/glyphs/MarkerGlyph.h"

namespace Terminal {

/// Height in pixels of a mark above or below a bar: a head, and a tip that keeps the head off the bar.
constexpr double seriesGlyphHeight = 19;

/// On which side of its bar a mark stands.
enum class MarkSide { Above, Below };

/// The mark of a bar with trades. Its kinds differ in the letter, the shape of the head and the colour.
class TradeGlyph : public MarkerGlyph
{
public:
    explicit TradeGlyph(MarkSide side) : m_side(side) {}

    QSizeF size(int count) const override;
    QPainterPath outline(const QRectF &box) const override;
    void paint(QPainter *painter, const QRectF &box, int count, const ChartTheme &theme) const override;

protected:
    virtual QChar letter() const = 0;
    virtual QColor colour(const ChartTheme &theme) const = 0;
    virtual QPainterPath head(const QRectF &box) const = 0;

private:
    QRectF headBox(const QRectF &box) const;
    QPainterPath tip(const QRectF &box) const;

    MarkSide m_side;
};

} // namespace Terminal
