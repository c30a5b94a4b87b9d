#pragma once

#include "tests/world/SimulatedClock.h"

#include <QAbstractEventDispatcher>
#include <QPointer>

#include <functional>
#include <limits>
#include <map>
#include <utility>
#include <vector>

class QSocketNotifier;

namespace World {

/// One of the programs of a world. All of them run in this thread; each event belongs to one, so that it can
/// stand still or end apart from the others.
using Process = int;

/// What belongs to no program: the broker, the network and the hand of the world itself.
constexpr Process nobody = 0;

/// The event loop of a simulated world: it does whatever is due next and moves the clock there, so nothing
/// ever waits. Qt's timers and socket notifiers of this thread run by it. What is due at the same instant is
/// done in the order in which it was asked for; so the same world goes the same way each time.
class SimulatedTime final : public QAbstractEventDispatcher, public SimulatedClock::Waiter
{
    Q_OBJECT

public:
    /// Sockets of the simulated network have numbers from here on, which no file has.
    static constexpr int firstSocket = 1'000'000;

    static SimulatedTime *instance();

    /// Begins a world on this time of day. `isReadable` tells whether something can be read from a socket of
    /// the network.
    void begin(std::chrono::system_clock::time_point timeOfDay, std::function<bool(int)> isReadable);
    void end();

    Instant now() const { return SimulatedClock::now(); }

    /// A new program; one with a window is a program whose calls may wait for another one.
    Process newProcess(bool hasWindow);
    /// What is done here, and by all timers that are started here, belongs to a program.
    void as(Process process, const std::function<void()> &work);
    Process current() const { return m_current; }
    /// Nothing of a program is done until then.
    void freeze(Process process, Instant until);
    /// Nothing of it is done any more.
    void kill(Process process) { freeze(process, Instant::max()); }
    bool hasEnded(Process process) const { return frozenUntil(process) == Instant::max(); }
    bool isFrozen(Process process) const { return frozenUntil(process) > now(); }
    /// When nobody stands still any more.
    Instant allAwake() const;
    Instant frozenUntil(Process process) const { return m_frozenUntil.at(static_cast<size_t>(process)); }

    /// To be done by a program at an instant.
    void at(Instant instant, Process process, std::function<void()> work);
    /// Something came that can be read from this socket: whoever listens is told.
    void noteReadable(int socket);

    /// Does all that is due within so much time.
    void run(Instant duration);

    /// The longest time for which a question of a program with a window was waited for.
    Instant longestWait() const { return m_longestWait; }
    /// True once a program has waited in vain, on one connection, more often than thrice in a minute. Waits
    /// that nobody notices do not count.
    bool waitsInVainAgain() const { return m_waitsInVainAgain; }
    qint64 eventCount() const { return m_eventCount; }

    // For Qt and for the system's poll():

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override { return false; }
    void registerSocketNotifier(QSocketNotifier *notifier) override;
    void unregisterSocketNotifier(QSocketNotifier *notifier) override;
    void registerTimer(int id, int interval, Qt::TimerType type, QObject *object) override;
    bool unregisterTimer(int id) override;
    bool unregisterTimers(QObject *object) override;
    QList<TimerInfo> registeredTimers(QObject *object) const override;
    int remainingTime(int id) override;
    void wakeUp() override {}
    void interrupt() override {}
    void flush() override {}
    int wait(pollfd *sockets, std::size_t count, std::chrono::milliseconds limit) override;

private:
    /// When, and of those of one instant the one that was asked for first.
    using Turn = std::pair<Instant, quint64>;

    struct Event
    {
        Process process;
        std::function<void()> work;
        int timer = 0; ///< whose time it is, if a timer's
    };

    struct Timer
    {
        QObject *object;
        std::chrono::milliseconds interval;
        Qt::TimerType type;
        Process process;
        Turn turn;
        bool isBeingTold = false;
    };

    struct Listener
    {
        QSocketNotifier *notifier;
        Process process;
    };

    /// A question, which takes one wait for each message that comes meanwhile.
    struct WaitedFor
    {
        int socket = 0;
        qint64 event = 0;
        Instant since{};
        Instant end{};
    };

    void enter(Process process);
    void exchangeKept(Process process);
    Turn add(Instant instant, Event event);
    bool step(Turn before);
    void postpone(Event event, Turn turn);
    bool mayRun(Process process) const;
    void tellTimer(int id);
    void startTimer(int id, Timer *timer);
    void tellReader(int socket);
    bool isReadableBefore(int socket, Instant end);
    void noteWait(int socket, Instant end);
    void noteInVain(int socket);
    void sendPosted() const;

    std::function<bool(int)> m_isReadable;
    std::map<Turn, Event> m_events;
    quint64 m_count = 0;
    std::map<int, Timer> m_timers;
    std::map<int, Listener> m_listeners;                      // by socket
    std::vector<Instant> m_frozenUntil;                       // by process
    std::vector<bool> m_hasWindow;                            // by process
    std::map<Process, std::vector<QPointer<QObject>>> m_kept; // in the event loop, by program
    Process m_current = nobody;
    Process m_present = nobody; ///< whose objects are in the event loop now
    bool m_isWaiting = false;   // a call of a program waits for another program
    WaitedFor m_waitedFor;
    std::map<int, std::vector<Instant>> m_inVain; // ends of such waits, by socket
    bool m_waitsInVainAgain = false;
    Instant m_longestWait{};
    qint64 m_eventCount = 0;
    qint64 m_currentEvent = 0;
};

} // namespace World
