#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <QtGlobal>

namespace TradeModule {

/// Cuts the connection to a server that does not answer a statement in time, so that nobody waits for ever:
/// the server's client library waits without a limit, but sees at once that its socket was shut. With a
/// thread of its own, which sleeps nearly always.
class StatementWatch
{
public:
    using Clock = std::chrono::steady_clock;

    StatementWatch();
    ~StatementWatch();
    Q_DISABLE_COPY_MOVE(StatementWatch)

    /// From here to done(), at most so long. Nothing is watched without a socket, below 0.
    void begin(int socket, std::chrono::milliseconds longest);
    /// True when the socket was shut since begin().
    bool done();

private:
    void look();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_socket = -1; ///< that is watched; -1 when none is
    Clock::time_point m_deadline;
    bool m_hasCut = false;
    bool m_sleeps = false;     ///< the thread waits for something to watch
    Clock::time_point m_wakes; ///< when it looks again, if it does not sleep
    bool m_ends = false;
    std::thread m_thread;
};

} // namespace TradeModule
