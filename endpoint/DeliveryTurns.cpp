#include "endpoint/DeliveryTurns_p.h"

#include "endpoint/Inbox_p.h"

#include <QAbstractEventDispatcher>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace LocalCommunication {

namespace {

/// The user's input waits as long for what is handed over, and for what is read. It is painted after that, in
/// a sixtieth of a second altogether.
constexpr std::chrono::milliseconds share{3};
constexpr std::chrono::milliseconds shareOfReading{3};

} // namespace

DeliveryTurns::DeliveryTurns(QAbstractEventDispatcher *dispatcher) : QObject(dispatcher), m_nextTurn(this)
{
    m_nextTurn.setSingleShot(true);
    m_nextTurn.setInterval(0); // an event that is posted would still belong to this turn
    connect(&m_nextTurn, &QTimer::timeout, this, &DeliveryTurns::goOn);
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &DeliveryTurns::beTold);
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, &DeliveryTurns::beTold);
}

DeliveryTurns *DeliveryTurns::enter()
{
    QAbstractEventDispatcher *const dispatcher = QAbstractEventDispatcher::instance();
    if (dispatcher == nullptr) {
        return nullptr;
    }
    auto *turns = dispatcher->findChild<DeliveryTurns *>(QString(), Qt::FindDirectChildrenOnly);
    turns = turns == nullptr ? new DeliveryTurns(dispatcher) : turns;
    ++turns->m_members;
    return turns;
}

/// Deleted at once: the library that this code is in may be unloaded next.
void DeliveryTurns::leave(const Inbox *inbox)
{
    m_waiting.erase(std::remove(m_waiting.begin(), m_waiting.end(), inbox), m_waiting.end());
    if (--m_members == 0) {
        delete this;
    }
}

bool DeliveryTurns::isOpen()
{
    if (!m_isUsed) {
        m_isUsed = true;
        m_end = QDeadlineTimer(share);
        return true;
    }
    return !m_end.hasExpired();
}

void DeliveryTurns::queue(Inbox *inbox)
{
    if (std::find(m_waiting.begin(), m_waiting.end(), inbox) == m_waiting.end()) {
        m_waiting.push_back(inbox);
    }
    goOnLater();
}

std::chrono::nanoseconds DeliveryTurns::readingTime() const
{
    return std::chrono::nanoseconds(shareOfReading) / m_members;
}

std::shared_ptr<BusPatience> DeliveryTurns::patience(const QString &bus)
{
    std::shared_ptr<BusPatience> &patience = m_patiences[bus];
    if (!patience) {
        patience = std::make_shared<BusPatience>();
    }
    return patience;
}

void DeliveryTurns::beTold()
{
    m_isTold = true;
    endTurn();
}

void DeliveryTurns::endTurn()
{
    m_isUsed = false;
    for (const auto &[bus, patience] : m_patiences) {
        patience->endTurn();
    }
}

void DeliveryTurns::goOnLater()
{
    if (!m_nextTurn.isActive()) {
        m_nextTurn.start();
    }
}

/// A receiver may destroy its inbox, and this with it, or run an event loop that comes here again. The time
/// begins anew even where the event loop tells of no turns, as one that a host runs without Qt. Where it
/// does, this may be the turn in which the inboxes have begun to wait, and have had their time.
void DeliveryTurns::goOn()
{
    if (!std::exchange(m_isTold, false)) {
        endTurn();
    }
    if (!m_waiting.empty()) {
        goOnLater(); // also in the event loop that a receiver runs
    }
    const QPointer<DeliveryTurns> alive(this);
    while (alive && !m_waiting.empty() && isOpen()) {
        Inbox *const inbox = m_waiting.front();
        m_waiting.pop_front();
        inbox->handOver();
    }
}

} // namespace LocalCommunication
