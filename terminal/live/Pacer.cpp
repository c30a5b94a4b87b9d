#include "terminal/live/Pacer.h"

#include <algorithm>

namespace Terminal {

Pacer::Pacer(std::chrono::milliseconds interval) : m_interval(interval)
{
    m_soon.setSingleShot(true);
    m_soon.setTimerType(Qt::PreciseTimer);
    connect(&m_soon, &QTimer::timeout, this, [this] {
        m_sinceDue.start();
        Q_EMIT due();
    });
}

void Pacer::ask()
{
    if (m_soon.isActive()) {
        return;
    }
    const std::chrono::milliseconds passed(m_sinceDue.isValid() ? m_sinceDue.elapsed() : m_interval.count());
    m_soon.start(std::max(m_interval - passed, std::chrono::milliseconds(0)));
}

} // namespace Terminal
