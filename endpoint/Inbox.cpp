#include "endpoint/Inbox_p.h"

#include <QDeadlineTimer>
#include <QPointer>

#include <chrono>
#include <utility>

namespace LocalCommunication {

namespace {

/// How long messages are handed over in one turn of the event loop: the user's input waits as long.
constexpr std::chrono::milliseconds share{8};

} // namespace

Inbox::Inbox(QObject *parent) : QObject(parent), m_later(this)
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &Inbox::run);
}

void Inbox::add(BusMessage &&message)
{
    m_messages.push_back(std::move(message));
}

/// Every message is taken before it is handed over.
void Inbox::run()
{
    if (m_messages.size() >
        1) { // should a receiver run an event loop, the messages after its own go on there
        runSoon();
    }
    const QPointer<Inbox> alive(this);
    const QDeadlineTimer endOfShare(share);
    while (alive && !m_messages.empty() && !endOfShare.hasExpired()) {
        const BusMessage message = std::move(m_messages.front());
        m_messages.pop_front();
        Q_EMIT delivered(message);
    }
}

/// By a timer: an event that is posted would still belong to this turn.
void Inbox::runSoon()
{
    if (!m_messages.empty()) {
        m_later.start();
    }
}

void Inbox::clear()
{
    m_messages.clear();
}

} // namespace LocalCommunication
