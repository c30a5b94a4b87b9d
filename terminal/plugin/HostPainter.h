#pragma once

#include "terminal/chart/marks/MarkPainter.h"
#include "tradechartobject/ChartInterface.h"

#include <QStringList>

class QPainter;

namespace Terminal {

class ChartView;

/// The drawing surface that an overlay gets for one repaint. It draws only what is in view and reads
/// per-bar arrays only as far as they are known to reach.
class HostPainter : public Korvane::IChartPainter
{
public:
    /// `readableBars` is the length of the overlay's per-bar arrays. Everything is borrowed.
    HostPainter(QPainter *painter, const ChartView &chart, int readableBars, GlyphSprites *sprites,
                DrawnMarks *marks);
    virtual ~HostPainter() = default;

    void setAmountsHidden(bool hidden) { m_hidesAmounts = hidden; }

    /// The texts of the labels that were drawn.
    const QStringList &labels() const { return m_labels; }

    /// Draws what was collected; to be called once when the overlay has drawn.
    void finish();

    void endPaint() override;
    void drawSeriesLabel(const double *values, const char *text, int index) override;
    void drawLineSeries(int reserved, const double *values, double width) override;
    void drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                          int variant) override;
    void drawMarker(int reserved, int bar, int kind, int atLow, double price) override;

private:
    QPainter *m_painter;
    const ChartView &m_chart;
    int m_firstBar; ///< of those in view whose values may be read
    int m_endBar;
    MarkPainter m_markPainter;
    bool m_hidesAmounts = false;
    QStringList m_labels;
};

} // namespace Terminal
