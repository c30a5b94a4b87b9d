#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/data/Bar.h"

#include <qwt_series_data.h>

#include <vector>

namespace Terminal {

/// What a pixel column of the chart shows: one bar, or all bars that fall into it as one.
struct BarColumn
{
    double position = 0; ///< its centre, in bar numbers
    double open = 0;     ///< of the first bar
    double high = 0;     ///< the highest
    double low = 0;      ///< the lowest
    double close = 0;    ///< of the last bar
    double volume = 0;   ///< the highest, so that merging never changes the picture

    bool rises() const { return close >= open; }
};

/// The series of a trading curve: only the bars in view, those narrower than a pixel merged per pixel
/// column. So painting costs what the screen shows, not what is loaded.
class VisibleBars : public QwtSeriesData<QwtOHLCSample>
{
public:
    /// Takes the bars of `span`, which lies over `width` pixels. Costs one pass over those bars.
    void update(const Bars &bars, const BarSpan &span, double width);

    const std::vector<BarColumn> &columns() const { return m_columns; }

    /// Lowest and highest price of the columns; requires at least one.
    double lowest() const { return m_lowest; }
    double highest() const { return m_highest; }
    double highestVolume() const { return m_highestVolume; }

    size_t size() const override { return m_columns.size(); }
    QwtOHLCSample sample(size_t i) const override;
    QRectF boundingRect() const override;

private:
    void takeEach(const Bars &bars, size_t first, size_t end);
    void mergePerPixel(const Bars &bars, size_t first, size_t end, const BarSpan &span, double pixelsPerBar);
    void measure();

    std::vector<BarColumn> m_columns;
    double m_lowest = 0;
    double m_highest = 0;
    double m_highestVolume = 0;
};

} // namespace Terminal
