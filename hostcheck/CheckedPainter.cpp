#include "hostcheck/CheckedPainter.h"

#include "hostcheck/Watch.h"

#include <string>

namespace HostCheck {

void CheckedPainter::checkReading(const BorrowedArray &array) const
{
    if (array.isReadBeyond()) {
        m_watch.tell(Rule::ArrayReadBeyond, std::to_string(m_length) + " bars");
    }
}

void CheckedPainter::drawSeriesLabel(const double *values, const char *text, int index)
{
    const Answer answer(m_watch);
    const BorrowedArray lent(values, m_length);
    m_host.drawSeriesLabel(lent.data(), text, index);
    checkReading(lent);
}

void CheckedPainter::drawLineSeries(int reserved, const double *values, double width)
{
    const Answer answer(m_watch);
    const BorrowedArray lent(values, m_length);
    m_host.drawLineSeries(reserved, lent.data(), width);
    checkReading(lent);
}

void CheckedPainter::drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                                      int variant)
{
    const Answer answer(m_watch);
    const BorrowedArray lentFlags(flags, m_length);
    const BorrowedArray lentPrices(prices, m_length);
    m_host.drawMarkerSeries(reserved, lentFlags.data(), lentPrices.data(), style, variant);
    checkReading(lentFlags);
    checkReading(lentPrices);
}

} // namespace HostCheck
