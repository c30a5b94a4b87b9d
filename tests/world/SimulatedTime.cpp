#include "tests/world/SimulatedTime.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSocketNotifier>
#include <QTimerEvent>

#include <algorithm>
#include <poll.h>
#include <utility>

namespace World {

using namespace std::chrono;

namespace {

/// Puts a value back when the block is over.
template <typename Value>
class Restored
{
public:
    Restored(Value *place, Value value) : m_place(place), m_before(std::exchange(*place, value)) {}
    ~Restored() { *m_place = m_before; }
    Q_DISABLE_COPY_MOVE(Restored)

private:
    Value *const m_place;
    const Value m_before;
};

/// Of the bus client: what a user notices, and how often it doubts a module in how long.
constexpr Instant mostUnnoticed = milliseconds(50);
constexpr Instant timeOfDoubts = minutes(1);
constexpr std::size_t mostInVain = 3;

constexpr Instant roundingOfWaits = milliseconds(1);

constexpr quint64 last = std::numeric_limits<quint64>::max();

} // namespace

SimulatedTime *SimulatedTime::instance()
{
    return qobject_cast<SimulatedTime *>(QAbstractEventDispatcher::instance());
}

void SimulatedTime::begin(system_clock::time_point timeOfDay, std::function<bool(int)> isReadable)
{
    m_isReadable = std::move(isReadable);
    m_frozenUntil = {Instant{}};
    m_hasWindow = {false};
    m_longestWait = {};
    m_waitedFor = {};
    m_inVain.clear();
    m_waitsInVainAgain = false;
    m_eventCount = 0;
    m_count = 0;
    SimulatedClock::begin(timeOfDay, this);
}

void SimulatedTime::end()
{
    sendPosted();
    m_events.clear();
    for (const auto &[process, all] : m_kept) {
        for (const QPointer<QObject> &kept : all) {
            delete kept;
        }
    }
    m_kept.clear();
    qDeleteAll(QObjectList(children()));
    m_present = nobody;
    SimulatedClock::end();
}

Process SimulatedTime::newProcess(bool hasWindow)
{
    m_frozenUntil.push_back({});
    m_hasWindow.push_back(hasWindow);
    return static_cast<Process>(m_frozenUntil.size() - 1);
}

void SimulatedTime::as(Process process, const std::function<void()> &work)
{
    const Process before = m_current;
    const Restored<qint64> number(&m_currentEvent, ++m_eventCount);
    enter(process);
    work();
    enter(before);
}

/// What belongs to nobody looks for nothing in an event loop.
void SimulatedTime::enter(Process process)
{
    m_current = process;
    if (process != nobody && process != m_present) {
        exchangeKept(process);
    }
}

/// Each program finds in its event loop what its own objects keep there, such as the turns in which its bus
/// clients hand over, and nothing of another one's.
void SimulatedTime::exchangeKept(Process process)
{
    for (QObject *const kept : QObjectList(children())) {
        kept->setParent(nullptr);
        m_kept[m_present].emplace_back(kept);
    }
    m_present = process;
    for (const QPointer<QObject> &kept : std::exchange(m_kept[process], {})) {
        if (kept) {
            kept->setParent(this);
        }
    }
}

void SimulatedTime::freeze(Process process, Instant until)
{
    Instant &end = m_frozenUntil.at(static_cast<size_t>(process));
    end = std::max(end, until);
}

Instant SimulatedTime::allAwake() const
{
    Instant last = now();
    for (const Instant until : m_frozenUntil) {
        last = until == Instant::max() ? last : std::max(last, until);
    }
    return last;
}

void SimulatedTime::at(Instant instant, Process process, std::function<void()> work)
{
    add(instant, {process, std::move(work)});
}

SimulatedTime::Turn SimulatedTime::add(Instant instant, Event event)
{
    const Turn turn{std::max(instant, now()), ++m_count};
    m_events.emplace(turn, std::move(event));
    return turn;
}

/// While a call of a program waits, no other program's call may: it would have to wait for that one, too.
bool SimulatedTime::mayRun(Process process) const
{
    return !m_isWaiting || !m_hasWindow.at(static_cast<size_t>(process));
}

/// Does the next thing that is due before this turn; false when there is none.
bool SimulatedTime::step(Turn before)
{
    auto next = m_events.begin();
    while (next != m_events.end() && next->first < before && !mayRun(next->second.process)) {
        ++next;
    }
    if (next == m_events.end() || !(next->first < before)) {
        return false;
    }
    const Instant due = next->first.first;
    Event event = std::move(next->second);
    const Turn turn = next->first;
    m_events.erase(next);
    if (due > now() && !m_isWaiting) {
        Q_EMIT aboutToBlock(); // no event loop has anything to do until then
    }
    SimulatedClock::moveTo(due);
    if (hasEnded(event.process)) {
        return true;
    }
    if (isFrozen(event.process)) {
        postpone(std::move(event), {frozenUntil(event.process), turn.second});
    } else {
        as(event.process, event.work);
    }
    return true;
}

/// It keeps its place among those of its program.
void SimulatedTime::postpone(Event event, Turn turn)
{
    const auto timer = m_timers.find(event.timer);
    if (timer != m_timers.end()) {
        timer->second.turn = turn;
    }
    m_events.emplace(turn, std::move(event));
}

void SimulatedTime::run(Instant duration)
{
    const Instant end = now() + duration;
    do {
        sendPosted();
    } while (step({end, last}));
    SimulatedClock::moveTo(end);
}

/// What was to be deleted later is so between two events, as in a program.
void SimulatedTime::sendPosted() const
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// A turn of an event loop inside a call: all that is due now, and nothing that this brings along.
bool SimulatedTime::processEvents(QEventLoop::ProcessEventsFlags /*flags*/)
{
    QCoreApplication::sendPostedEvents();
    const Turn end{now(), m_count + 1};
    bool isBusy = false;
    while (step(end)) {
        isBusy = true;
    }
    return isBusy;
}

// Sockets ---------------------------------------------------------------------------------------

void SimulatedTime::registerSocketNotifier(QSocketNotifier *notifier)
{
    if (notifier->type() != QSocketNotifier::Read) {
        return; // whatever is written there is taken at once
    }
    const auto socket = static_cast<int>(notifier->socket());
    m_listeners[socket] = {notifier, m_current};
    if (socket >= firstSocket && m_isReadable(socket)) {
        noteReadable(socket);
    }
}

void SimulatedTime::unregisterSocketNotifier(QSocketNotifier *notifier)
{
    const auto listener = m_listeners.find(static_cast<int>(notifier->socket()));
    if (listener != m_listeners.end() && listener->second.notifier == notifier) {
        m_listeners.erase(listener);
    }
}

void SimulatedTime::noteReadable(int socket)
{
    const auto listener = m_listeners.find(socket);
    if (listener != m_listeners.end()) {
        add(now(), {listener->second.process, [this, socket] { tellReader(socket); }});
    }
}

/// Again and again, as long as something is left to read.
void SimulatedTime::tellReader(int socket)
{
    const auto listener = m_listeners.find(socket);
    if (listener == m_listeners.end() || !m_isReadable(socket)) {
        return;
    }
    QEvent activation(QEvent::SockAct);
    QCoreApplication::sendEvent(listener->second.notifier, &activation);
    if (m_isReadable(socket)) {
        noteReadable(socket);
    }
}

/// A call that waits for a message: the world goes on without its program.
int SimulatedTime::wait(pollfd *sockets, std::size_t count, milliseconds limit)
{
    const Instant end = now() + limit;
    if (count != 1 || sockets->fd < firstSocket) {
        SimulatedClock::moveTo(end);
        return 0;
    }
    noteWait(sockets->fd, end);
    const bool isReadable = isReadableBefore(sockets->fd, end);
    sockets->revents = isReadable ? POLLIN : 0;
    m_longestWait = std::max(m_longestWait, now() - m_waitedFor.since);
    if (!isReadable) {
        noteInVain(sockets->fd);
    }
    return isReadable ? 1 : 0;
}

/// One question is waited for until one instant, told in whole milliseconds each time.
void SimulatedTime::noteWait(int socket, Instant end)
{
    const bool isSame = m_waitedFor.socket == socket && m_waitedFor.event == m_currentEvent &&
                        end <= m_waitedFor.end + roundingOfWaits;
    if (!isSame) {
        m_waitedFor = {socket, m_currentEvent, now(), end};
    }
}

/// As the bus client promises: a wait in vain ends its trust in the module.
void SimulatedTime::noteInVain(int socket)
{
    if (now() - m_waitedFor.since <= mostUnnoticed) {
        return;
    }
    std::vector<Instant> &ends = m_inVain[socket];
    const std::size_t before = ends.size();
    ends.push_back(now());
    if (before >= mostInVain && m_waitedFor.since - ends[before - mostInVain] < timeOfDoubts) {
        m_waitsInVainAgain = true;
    }
}

bool SimulatedTime::isReadableBefore(int socket, Instant end)
{
    const Restored<bool> waiting(&m_isWaiting, true);
    while (!m_isReadable(socket)) {
        if (!step({end, last})) {
            SimulatedClock::moveTo(end);
            return false;
        }
    }
    return true;
}

// Timers ----------------------------------------------------------------------------------------

void SimulatedTime::registerTimer(int id, int interval, Qt::TimerType type, QObject *object)
{
    Timer timer{object, milliseconds(interval), type, m_current, {}};
    startTimer(id, &timer);
    m_timers.emplace(id, timer);
}

void SimulatedTime::startTimer(int id, Timer *timer)
{
    timer->turn = add(now() + timer->interval, {timer->process, [this, id] { tellTimer(id); }, id});
}

/// The timer may be stopped, and another one have its number, by whoever is told.
void SimulatedTime::tellTimer(int id)
{
    const auto timer = m_timers.find(id);
    if (timer == m_timers.end()) {
        return;
    }
    startTimer(id, &timer->second);
    if (timer->second.isBeingTold) {
        return; // by an event loop inside what it started
    }
    timer->second.isBeingTold = true;
    QTimerEvent event(id);
    QCoreApplication::sendEvent(timer->second.object, &event);
    if (const auto told = m_timers.find(id); told != m_timers.end()) {
        told->second.isBeingTold = false;
    }
}

bool SimulatedTime::unregisterTimer(int id)
{
    const auto timer = m_timers.find(id);
    if (timer == m_timers.end()) {
        return false;
    }
    m_events.erase(timer->second.turn);
    m_timers.erase(timer);
    return true;
}

bool SimulatedTime::unregisterTimers(QObject *object)
{
    std::vector<int> ids;
    for (const auto &[id, timer] : m_timers) {
        if (timer.object == object) {
            ids.push_back(id);
        }
    }
    for (const int id : ids) {
        unregisterTimer(id);
    }
    return !ids.empty();
}

QList<QAbstractEventDispatcher::TimerInfo> SimulatedTime::registeredTimers(QObject *object) const
{
    QList<TimerInfo> found;
    for (const auto &[id, timer] : m_timers) {
        if (timer.object == object) {
            found.append(TimerInfo(id, static_cast<int>(timer.interval.count()), timer.type));
        }
    }
    return found;
}

int SimulatedTime::remainingTime(int id)
{
    const auto timer = m_timers.find(id);
    return timer == m_timers.end()
               ? -1
               : static_cast<int>(duration_cast<milliseconds>(timer->second.turn.first - now()).count());
}

} // namespace World
