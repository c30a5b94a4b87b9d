#pragma once

#include "terminal/chart/theme/ChartTheme.h"

#include <QPainterPath>
#include <QRectF>

class QPainter;

namespace Terminal {

/// One kind of mark on a chart: its outline is what is painted and what is hit.
class MarkerGlyph
{
public:
    virtual ~MarkerGlyph() = default;

    /// Size in pixels of the glyph for so many merged marks.
    virtual QSizeF size(int count) const = 0;
    virtual QPainterPath outline(const QRectF &box) const = 0;
    virtual void paint(QPainter *painter, const QRectF &box, int count, const ChartTheme &theme) const = 0;
};

/// Counts above this are all shown as one text, "99+".
constexpr int highestShownCount = 99;

/// The letter of a glyph, followed by the count of merged marks when there is more than one.
QString glyphText(QChar letter, int count);

/// The font of the letters in glyphs.
QFont glyphFont(int pixels);

} // namespace Terminal
