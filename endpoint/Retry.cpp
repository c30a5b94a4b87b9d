#include "endpoint/Retry_p.h"

#include <algorithm>

namespace LocalCommunication {

std::chrono::milliseconds Retry::nextDelay()
{
    m_delay = std::clamp(m_pace.factor * m_delay, m_pace.first, m_pace.longest);
    return m_delay;
}

} // namespace LocalCommunication
