#include "trademodule/ledger/StatementWatch.h"

#include <sys/socket.h>

namespace TradeModule {

StatementWatch::StatementWatch() : m_thread([this] { look(); }) {}

StatementWatch::~StatementWatch()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void StatementWatch::begin(int socket, std::chrono::milliseconds longest)
{
    const std::lock_guard lock(m_mutex);
    m_socket = socket;
    m_hasCut = false;
    m_deadline = Clock::now() + longest;
    if (m_sleeps || m_deadline < m_wakes) {
        m_changed.notify_one();
    }
}

bool StatementWatch::done()
{
    const std::lock_guard lock(m_mutex);
    m_socket = -1;
    return m_hasCut;
}

/// Wakes up at the deadline of one statement in many: the ones that were done meanwhile cost no switch of
/// threads.
void StatementWatch::look()
{
    std::unique_lock lock(m_mutex);
    while (!m_ends) {
        m_sleeps = m_socket < 0;
        if (m_sleeps) {
            m_changed.wait(lock);
            continue;
        }
        m_wakes = m_deadline;
        m_changed.wait_until(lock, m_wakes);
        if (m_socket >= 0 && !m_hasCut && Clock::now() >= m_deadline) {
            m_hasCut = ::shutdown(m_socket, SHUT_RDWR) == 0;
            m_socket = -1;
        }
    }
}

} // namespace TradeModule
