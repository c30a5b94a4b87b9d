#include "terminal/plugin/OverlayHandle.h"

#include <algorithm>

namespace Terminal {

OverlayHandle::~OverlayHandle()
{
    retire();
}

void OverlayHandle::retire()
{
    if (!m_retired) {
        m_retired = true;
        m_object->deleteObject();
    }
}

bool OverlayHandle::calc(const Korvane::tagCodeWithName &security,
                         const std::vector<Korvane::AnalyData> &bars, int period)
{
    if (m_retired) {
        return false;
    }
    const auto count = static_cast<int>(bars.size());
    const bool served =
        m_object->calcIt(security, bars.data(), count, static_cast<Korvane::Period>(period), 0, count);
    if (served) {
        m_servedBars = count;
    }
    m_readableBars = std::min(m_servedBars, count);
    return served;
}

} // namespace Terminal
