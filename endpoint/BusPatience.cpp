#include "endpoint/BusPatience_p.h"

#include <algorithm>
#include <chrono>

namespace LocalCommunication {

quint64 BusPatience::nextQuestion(Time now)
{
    const auto time = std::chrono::nanoseconds(now.time_since_epoch());
    m_last = std::max(m_last + 1, static_cast<quint64>(time.count()));
    return m_last;
}

Patience::Duration BusPatience::ask(const QByteArray &path, quint64 question, Time now, Duration timeout,
                                    bool isCrowded)
{
    m_asked = &m_patiences[path];
    return m_asked->ask(question, now, timeout, isCrowded);
}

void BusPatience::hear(quint64 question, Time now)
{
    for (auto &[path, patience] : m_patiences) {
        patience.hear(question, now);
    }
}

void BusPatience::stopWaiting(Time now, bool isCrowded)
{
    if (m_asked != nullptr) {
        m_asked->stopWaiting(now, isCrowded);
    }
}

void BusPatience::endTurn()
{
    for (auto &[path, patience] : m_patiences) {
        patience.endTurn();
    }
}

void BusPatience::beginAnew(Time now)
{
    for (auto &[path, patience] : m_patiences) {
        patience.beginAnew(now);
    }
}

} // namespace LocalCommunication
