#pragma once

#include <QTimer>

#include <algorithm>
#include <ctime>
#include <utility>

/// The longest turn of the event loop of this thread, in milliseconds of processor time: on a crowded machine
/// a turn may have to wait for others.
class TurnWatch
{
public:
    TurnWatch()
    {
        QObject::connect(&m_heartbeat, &QTimer::timeout, [this] {
            const double now = threadTime();
            m_longest = std::max(m_longest, now - std::exchange(m_last, now));
        });
        m_heartbeat.start(0);
    }

    double longest() const { return m_longest; }

    /// Milliseconds of processor time that this thread has used.
    static double threadTime()
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
    }

private:
    QTimer m_heartbeat;
    double m_last = threadTime();
    double m_longest = 0.0;
};
