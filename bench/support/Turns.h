#pragma once

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <utility>

/// How long the event loop of this thread stands still, in the processor time of the thread: the other
/// programs of a busy machine are not the window's. Turns of dialogs count, too.
class Turns
{
public:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    Turns()
    {
        QObject::connect(&m_heartbeat, &QTimer::timeout, &m_heartbeat, [this] { beat(); });
        m_heartbeat.start(0);
    }

    static Milliseconds processorTime()
    {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
    }

    /// From here on turns count.
    void forget()
    {
        m_last = processorTime();
        m_longest = Milliseconds(0);
    }

    Milliseconds longest() const { return m_longest; }

    /// Runs the loop until nothing more happens.
    void settle()
    {
        constexpr int quietTurns = 300;
        constexpr std::chrono::milliseconds mostSettling{1500};
        const auto begin = std::chrono::steady_clock::now();
        m_quiet = 0;
        while (m_quiet < quietTurns && std::chrono::steady_clock::now() - begin < mostSettling) {
            QApplication::processEvents(QEventLoop::AllEvents);
        }
    }

    /// What all turns cost until then. The loop sleeps between events; false after a while without it.
    bool workUntil(const std::function<bool()> &isOver, Milliseconds *work)
    {
        constexpr std::chrono::seconds patience{20};
        m_heartbeat.stop();
        const auto begin = std::chrono::steady_clock::now();
        const Milliseconds before = processorTime();
        while (!isOver() && std::chrono::steady_clock::now() - begin < patience) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        *work = processorTime() - before;
        m_heartbeat.start(0);
        return isOver();
    }

private:
    void beat()
    {
        constexpr Milliseconds nothing(0.2);
        const Milliseconds now = processorTime();
        const Milliseconds turn = now - std::exchange(m_last, now);
        m_longest = std::max(m_longest, turn);
        m_quiet = turn < nothing ? m_quiet + 1 : 0;
    }

    QTimer m_heartbeat;
    Milliseconds m_last = processorTime();
    Milliseconds m_longest{0};
    int m_quiet = 0; ///< turns in a row with nothing to do
};
