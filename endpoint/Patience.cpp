#include "endpoint/Patience_p.h"

#include <algorithm>
#include <cstddef>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

/// Short enough for the user's input, and many times what a module on this machine takes.
constexpr Patience::Duration waitInDoubt = 5ms;

/// What a user notices.
constexpr Patience::Duration mostUnnoticed = 50ms;

constexpr Patience::Duration calmAfterCrowd = 10s;
constexpr Patience::Duration pauseAfterFailure = 30s;
constexpr Patience::Duration timeOfTrial = 1min;

/// More than are asked in a time-out of three seconds when each is waited for in doubt.
constexpr std::size_t mostOwed = 1024;

} // namespace

Patience::Duration Patience::ask(quint64 question, Time now, Duration timeout, bool isCrowded)
{
    forgetOld(now);
    m_last = question;
    m_lastAsked = now;
    m_owed[question] = {now, timeout};
    if (isCrowded) {
        noteCrowd(now);
    }
    if (m_state == State::OnTrial && now - m_since >= timeOfTrial) {
        enter(State::Trusted, now);
    }
    m_askedIn = m_state;
    return wait(timeout);
}

/// What was asked before, and not waited for, may have to be answered first.
Patience::Duration Patience::wait(Duration timeout) const
{
    const auto owed = static_cast<Duration::rep>(m_owed.size());
    switch (m_state) {
    case State::Trusted:
        return timeout;
    case State::Doubted:
        return std::min(timeout, waitInDoubt);
    case State::OnTrial:
        return std::min(timeout, std::max(waitInDoubt, 2 * m_longestAnswer * owed));
    }
    return timeout;
}

/// An answer after its time-out is no sign that the next one will be in time. Nor is one that is not known
/// any more.
void Patience::hear(quint64 question, Time now)
{
    const auto asked = m_owed.find(question);
    if (asked == m_owed.end()) {
        return;
    }
    const Duration took = now - asked->second.time;
    const bool isInTime = took <= asked->second.timeout;
    m_owed.erase(asked);
    if (isInTime && m_state == State::Doubted && now >= m_noTrialBefore) {
        enter(State::OnTrial, now);
    }
    if (isInTime && m_state == State::OnTrial) {
        m_longestAnswer = std::max(m_longestAnswer, took);
    }
}

/// A trial that has begun while this question was waited for is not ended by it.
void Patience::stopWaiting(Time now, bool isCrowded)
{
    const bool isAnswered = m_owed.find(m_last) == m_owed.end();
    const bool wasNoticed = now - m_lastAsked > mostUnnoticed;
    if (!isAnswered && wasNoticed && m_askedIn == State::OnTrial) {
        m_noTrialBefore = now + pauseAfterFailure;
    }
    if ((!isAnswered && m_askedIn == m_state) || (isCrowded && wasNoticed)) {
        enter(State::Doubted, now);
    }
    if (isCrowded) {
        noteCrowd(now);
    }
}

/// Those of a module that never answers them.
void Patience::forgetOld(Time now)
{
    const auto isOld = [now](const Asked &asked) { return now - asked.time > asked.timeout; };
    while (!m_owed.empty() && (m_owed.size() >= mostOwed || isOld(m_owed.begin()->second))) {
        m_owed.erase(m_owed.begin());
    }
}

/// Only of doubt: whom nobody doubts may be asked at each of many messages.
void Patience::noteCrowd(Time now)
{
    if (m_state != State::Trusted) {
        enter(State::Doubted, now);
        m_noTrialBefore = std::max(m_noTrialBefore, now + calmAfterCrowd);
    }
}

/// The one place where the state changes.
void Patience::enter(State next, Time now)
{
    if (next == m_state) {
        return;
    }
    if (m_state == State::Trusted) {
        m_noTrialBefore = now;
        m_longestAnswer = {};
    }
    m_state = next;
    m_since = now;
}

} // namespace LocalCommunication
