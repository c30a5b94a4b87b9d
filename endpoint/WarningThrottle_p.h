#pragma once

#include <QDeadlineTimer>

#include <chrono>

namespace LocalCommunication {

/// Lets the first warning of a kind through and then one in ten seconds, so that a bus that is away
/// does not fill the log.
class WarningThrottle
{
public:
    /// True when a warning is due; otherwise it is only counted.
    bool isDue()
    {
        if (!m_untilNext.hasExpired()) {
            ++m_suppressed;
            return false;
        }
        m_untilNext.setRemainingTime(interval);
        return true;
    }

    /// How many were not written since the last one that was; starts counting anew.
    int takeSuppressed()
    {
        const int count = m_suppressed;
        m_suppressed = 0;
        return count;
    }

private:
    static constexpr std::chrono::seconds interval{10};

    QDeadlineTimer m_untilNext; // has expired at first
    int m_suppressed = 0;
};

} // namespace LocalCommunication
