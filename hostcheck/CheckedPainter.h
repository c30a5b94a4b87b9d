#pragma once

#include "hostcheck/Answer.h"
#include "hostcheck/BorrowedArray.h"
#include "tradechartobject/ChartInterface.h"

#include <cstddef>

namespace HostCheck {

/// The terminal's painter as the real overlay sees it.
class CheckedPainter : public Korvane::IChartPainter
{
public:
    /// Arrays of the overlay have `length` numbers.
    CheckedPainter(Korvane::IChartPainter &host, const Watch &watch, std::size_t length)
        : m_host(host),
          m_watch(watch),
          m_length(length)
    {
    }
    virtual ~CheckedPainter() = default;

    void endPaint() override
    {
        const Answer answer(m_watch);
        m_host.endPaint();
    }
    void drawSeriesLabel(const double *values, const char *text, int index) override;
    void drawLineSeries(int reserved, const double *values, double width) override;
    void drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                          int variant) override;
    void drawMarker(int reserved, int bar, int kind, int atLow, double price) override
    {
        const Answer answer(m_watch);
        m_host.drawMarker(reserved, bar, kind, atLow, price);
    }

private:
    void checkReading(const BorrowedArray &array) const;

    Korvane::IChartPainter &m_host;
    const Watch &m_watch;
    const std::size_t m_length;
};

} // namespace HostCheck
