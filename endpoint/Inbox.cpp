#include "endpoint/Inbox_p.h"

#include <QEvent>

#include <utility>

namespace LocalCommunication {

Inbox::~Inbox()
{
    leaveTurns();
}

void Inbox::leaveTurns()
{
    if (m_turns) {
        m_turns->leave(this);
        m_turns.clear();
    }
}

/// Still in the old thread; what is posted goes along.
bool Inbox::event(QEvent *event)
{
    if (event->type() == QEvent::ThreadChange) {
        leaveTurns();
        QMetaObject::invokeMethod(this, &Inbox::runSoon, Qt::QueuedConnection);
    }
    return QObject::event(event);
}

void Inbox::add(BusMessage &&message)
{
    m_bytes += message.cost();
    m_messages.push_back(std::move(message));
}

/// Where there are none nobody can be told either.
DeliveryTurns *Inbox::turns()
{
    if (!m_turns) {
        m_turns = DeliveryTurns::enter();
    }
    return m_turns;
}

void Inbox::run()
{
    if (turns() != nullptr) {
        m_turns->isAnybodyWaiting() ? runSoon() : handOver();
    }
}

void Inbox::runSoon()
{
    if (!m_messages.empty() && turns() != nullptr) {
        m_turns->queue(this);
    }
}

/// Every message is taken before it is handed over.
void Inbox::handOver()
{
    if (m_messages.size() >
        1) { // should a receiver run an event loop, the messages after its own go on there
        runSoon();
    }
    const QPointer<Inbox> alive(this);
    while (alive && !m_messages.empty() && m_turns && m_turns->isOpen()) {
        handOverNext();
    }
    if (alive) {
        runSoon();
    }
}

void Inbox::handOverNext()
{
    const bool wasFull = isFull();
    const BusMessage message = std::move(m_messages.front());
    m_messages.pop_front();
    m_bytes -= message.cost();
    if (wasFull && !isFull()) {
        Q_EMIT hasRoom(); // first: should the receiver run an event loop, what comes next is read there
    }
    Q_EMIT delivered(message);
}

/// All where there is no event loop.
std::chrono::nanoseconds Inbox::readingTime()
{
    return turns() != nullptr ? m_turns->readingTime() : std::chrono::nanoseconds::max();
}

void Inbox::clear()
{
    m_messages.clear();
    m_bytes = 0;
}

} // namespace LocalCommunication
