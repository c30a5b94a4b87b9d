#pragma once

#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include <QPixmap>

#include <cstddef>
#include <vector>

namespace Terminal {

/// Glyphs painted once and kept as pictures.
class GlyphSprites
{
public:
    /// Sets the colours and the pixels per point of the screen; forgets the pictures when either is new.
    void setLook(const ChartTheme &theme, qreal pixelRatio);

    /// The picture of a glyph for `count` merged marks; valid until setLook().
    const QPixmap &sprite(GlyphNumber number, int count);

    /// Its size in pixels.
    QSizeF size(GlyphNumber number, int count);

private:
    struct Sprite
    {
        QPixmap picture;
        QSizeF size;
    };

    static constexpr int countsShown = highestShownCount + 2; ///< none, and more than the highest

    const Sprite &find(GlyphNumber number, int count);
    Sprite paint(GlyphNumber number, int count) const;

    ChartTheme m_theme;
    qreal m_pixelRatio = 1;
    std::vector<Sprite> m_sprites; ///< by glyph and count, without a picture until it is asked for
};

} // namespace Terminal
