#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/view/MarkFocus.h"

#include <QObject>
#include <QPointF>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace Terminal {

class ChartView;
class PointerTarget;

/// Mouse and keys of a chart: wheel zooms at the pointer, dragging pans, arrows pan, plus and minus
/// zoom, Home and End go to the ends, N and P go from mark to mark, Enter presses the mark, Escape
/// takes crosshair and ring away. What can be clicked gets the
/// pressed button instead, and a pointing hand before.
class ChartInput : public QObject
{
    Q_OBJECT

public:
    /// `target` may be null; both must outlive this object.
    ChartInput(ChartView *chart, PointerTarget *target, QObject *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);
    void release(const QMouseEvent &event);
    void endDrag();
    void wheel(const QWheelEvent &event);
    bool key(const QKeyEvent &event);
    void leave();
    void placeCrosshairAnew();
    bool isHit(const QPointF &position) const;

    ChartView *m_chart;
    PointerTarget *m_target;
    MarkFocus m_focus;
    bool m_drags = false;
    QPointF m_dragStart;
    BarSpan m_dragSpan;
};

} // namespace Terminal
