#include "endpoint/Patience_p.h"

#include <algorithm>
#include <cstddef>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

/// Short enough for the user's input, and many times what a module on this machine takes.
constexpr Patience::Duration waitInDoubt = 5ms;

/// When one of the same turn was waited for in vain; long enough to hear what was answered meanwhile.
constexpr Patience::Duration nextWaitInDoubt = 2ms;

/// Half of what a user notices: the other half is for what a window does with the answers.
constexpr Patience::Duration mostUnnoticed = 25ms;

/// Whoever runs no event loop has no other sign of a turn's end.
constexpr Patience::Duration pauseOfTurns = 50ms;

/// Whoever is given more has no window that must move, and may stand for so much longer.
constexpr Patience::Duration timeoutOfWindows = 3s;

constexpr Patience::Duration timeOfDoubts = 1min;
constexpr std::size_t mostDoubts = 3; // in this time, of those that began with a long wait
constexpr Patience::Duration longWait = 1s;

/// More than are asked in a time-out of three seconds when each is waited for in doubt.
constexpr std::size_t mostOwed = 1024;

} // namespace

Patience::Duration Patience::ask(quint64 question, Time now, Duration timeout, bool isCrowded)
{
    forgetOld(now);
    if (now - m_lastEnd > pauseOfTurns) {
        endTurn();
    }
    if (isCrowded) {
        noteCrowd(now);
    }
    m_shortest = std::min(m_shortest, timeout);
    m_last = question;
    m_lastAsked = {now, timeout};
    m_wasTrusted = m_isTrusted;
    m_owed[question] = m_lastAsked;
    const Duration inTrust = isInFlood(now) ? std::max(waitInDoubt, m_shortest - m_stood) : timeout;
    const Duration inDoubt = m_isInVain ? nextWaitInDoubt : waitInDoubt;
    return std::min(timeout, m_isTrusted ? inTrust : inDoubt);
}

/// An answer after its time-out is a sign of life when nothing was asked since, for then the module has
/// caught up. Any other one is only the next of a queue.
void Patience::hear(quint64 question, Time now)
{
    const auto asked = m_owed.find(question);
    if (asked == m_owed.end()) {
        return;
    }
    const bool isInTime = now - asked->second.time <= asked->second.timeout;
    m_owed.erase(asked);
    if ((isInTime || question == m_last) && !m_isTrusted && mayTrust(now)) {
        m_isTrusted = true;
    }
}

/// A question of before the module was trusted again was not waited for, and says nothing against it.
void Patience::stopWaiting(Time now, bool isCrowded)
{
    const Duration stood = now - m_lastAsked.time;
    if (isCrowded) {
        noteCrowd(now);
    }
    m_stood += isInFlood(now) && stood > waitInDoubt ? stood : Duration(0);
    m_lastEnd = now;
    const bool isAnswered = m_owed.find(m_last) == m_owed.end();
    m_isInVain = !m_wasTrusted && !isAnswered;
    const bool isFloodPaid = m_stood > Duration(0) && m_stood >= m_shortest;
    if (m_wasTrusted && m_isTrusted && (!isAnswered || isFloodPaid)) {
        doubt(now, stood);
    }
}

/// What is asked in one turn belongs together: who asks several questions gets all of their answers, and it
/// is one stand for the window.
void Patience::endTurn()
{
    const Duration beyondWindows = std::max(Duration(0), m_shortest - timeoutOfWindows);
    if (m_isTrusted && m_stood > mostUnnoticed + beyondWindows) {
        doubt(m_lastAsked.time, m_stood);
    }
    m_stood = {};
    m_shortest = Duration::max();
    m_isInVain = false;
}

void Patience::beginAnew(Time now)
{
    m_owed.clear();
    m_isInVain = false;
    m_isTrusted = m_isTrusted || mayTrust(now);
}

/// Those of a module that never answers them.
void Patience::forgetOld(Time now)
{
    const auto isOld = [now](const Asked &asked) { return now - asked.time > asked.timeout; };
    while (!m_owed.empty() && (m_owed.size() >= mostOwed || isOld(m_owed.begin()->second))) {
        m_owed.erase(m_owed.begin());
    }
}

void Patience::doubt(Time now, Duration stood)
{
    m_isTrusted = false;
    if (stood < longWait) {
        return;
    }
    m_doubts.push_back(now);
    if (m_doubts.size() == mostDoubts) {
        m_noTrustBefore = std::max(m_noTrustBefore, m_doubts.front() + timeOfDoubts);
        m_doubts.pop_front();
    }
}

} // namespace LocalCommunication
