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
    if (m_sprites.empty()) {
        m_sprites.resize(static_cast<std::size_t>(glyphCount) * countsShown);
    }
    const int shownCount = std::min(count, countsShown - 1);
    Sprite &sprite = m_sprites[static_cast<std::size_t>(number * countsShown + shownCount)];
    if (sprite.picture.isNull()) {
        sprite = paint(number, shownCount);
    }
    return sprite;
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
