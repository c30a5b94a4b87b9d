#include "terminal/chart/marks/glyphs/GlyphSprites.h"

#include <QPainter>

#include <algorithm>

namespace Terminal {

void GlyphSprites::setLook(const ChartTheme &theme, qreal pixelRatio)
{
    const bool same =
        theme.background == m_theme.background && theme.rise == m_theme.rise && pixelRatio == m_pixelRatio;
    if (!same) {
        m_sprites.clear();
    }
    m_theme = theme;
    m_pixelRatio = pixelRatio;
}

const QPixmap &GlyphSprites::sprite(GlyphNumber number, int count)
{
    return find(number, count).picture;
}

QSizeF GlyphSprites::size(GlyphNumber number, int count)
{
    return find(number, count).size;
}

const GlyphSprites::Sprite &GlyphSprites::find(GlyphNumber number, int count)
{
    const int shownCount = std::min(count, highestShownCount + 1);
    const int key = number * (highestShownCount + 2) + shownCount;
    auto sprite = m_sprites.find(key);
    if (sprite == m_sprites.end()) {
        sprite = m_sprites.insert(key, paint(number, shownCount));
    }
    return *sprite;
}

GlyphSprites::Sprite GlyphSprites::paint(GlyphNumber number, int count) const
{
    const QSizeF size = glyph(number).size(count);
    QPixmap picture((size * m_pixelRatio).toSize());
    picture.setDevicePixelRatio(m_pixelRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    glyph(number).paint(&painter, QRectF(QPointF(), size), count, m_theme);
    painter.end();
    return {picture, size};
}

} // namespace Terminal
