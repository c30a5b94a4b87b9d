#pragma once

#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include <QObject>
#include <QRectF>

#include <optional>
#include <vector>

namespace Terminal {

class ChartView;
class PointerTarget;
struct ClickableMark;

/// The mark of a chart that the keyboard is on: it goes from mark to mark, from left to right, has a ring
/// and carries the crosshair. It stays with its mark when the view moves.
class MarkFocus
{
public:
    /// `target` may be null; both must outlive the focus.
    MarkFocus(ChartView *chart, PointerTarget *target);
    ~MarkFocus();
    MarkFocus(const MarkFocus &) = delete;
    MarkFocus &operator=(const MarkFocus &) = delete;

    /// Goes to the next mark (1) or the one before (-1), at first to the first or the last in view. Without
    /// any there, it moves the view to one, unless that is very many views away.
    void step(int direction);

    /// Presses the mark; false when there is none. May run menus and dialogs before it returns.
    bool press();

    /// Puts the crosshair back onto the mark after the view has moved.
    void follow();

    /// Takes the ring away.
    void leave();

    bool hasMark() const { return m_place.has_value(); }

    /// Where the ring is, in pixels of the canvas.
    std::optional<QRectF> ring() const;

private:
    using Marks = std::vector<ClickableMark>;

    Marks marks() const;
    Marks paintedMarks() const;
    Marks::const_iterator find(const Marks &marks) const;
    Marks::const_iterator next(const Marks &marks, int direction) const;
    void goTo(const ClickableMark &mark);

    ChartView *m_chart;
    PointerTarget *m_target;
    /// The mark when it was gone to: its middle, and what tells it from others there.
    struct Place
    {
        double bar;
        double price;
        GlyphNumber glyph;
        int layer;
    };
    std::optional<Place> m_place;

    /// The ring as it was found since the last repaint of the marks: the crosshair repaints it often.
    mutable std::optional<QRectF> m_ring;
    mutable bool m_isRingKnown = false;
    QMetaObject::Connection m_viewChange;
};

} // namespace Terminal
