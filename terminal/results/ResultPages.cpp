#include "terminal/results/ResultPages.h"

#include <algorithm>
#include <cstdlib>

namespace Terminal {

void ResultPages::clear()
{
    m_pages.clear();
    m_state.clear();
}

bool ResultPages::take(const ResultsPart &part)
{
    const bool isOther = part.state != m_state;
    if (isOther) {
        clear();
        m_state = part.state;
    }
    const qint64 page = part.first / rowsOfPage;
    m_pages.insert(page, part.rows);
    forgetFarFrom(page);
    return isOther;
}

const ResultRow *ResultPages::row(qint64 number) const
{
    const auto page = m_pages.constFind(number / rowsOfPage);
    const auto place = static_cast<size_t>(number % rowsOfPage);
    return page == m_pages.constEnd() || place >= page->size() ? nullptr : &(*page)[place];
}

qint64 ResultPages::missing(qint64 first, qint64 last) const
{
    for (qint64 page = first / rowsOfPage; page <= last / rowsOfPage; ++page) {
        if (!m_pages.contains(page)) {
            return page * rowsOfPage;
        }
    }
    return -1;
}

void ResultPages::forgetFarFrom(qint64 page)
{
    while (m_pages.size() > mostPages) {
        const QList<qint64> kept = m_pages.keys();
        m_pages.remove(*std::max_element(kept.begin(), kept.end(), [page](qint64 a, qint64 b) {
            return std::abs(a - page) < std::abs(b - page);
        }));
    }
}

} // namespace Terminal
