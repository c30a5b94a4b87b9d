#include "endpoint/LocalBroker.h"

#include "endpoint/BrokerProbe_p.h"
#include "endpoint/BrokerProcess_p.h"
#include "endpoint/BusAddress.h"
#include "endpoint/BusDirectory_p.h"
#include "endpoint/DirectoryLock_p.h"
#include "endpoint/Logging_p.h"
#include "endpoint/Retry_p.h"

#include <QFileInfo>
#include <QLocalSocket>
#include <QTimer>

#include <chrono>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto readinessInterval = 2ms;
constexpr auto timeToStart = 20s;
constexpr auto watchInterval = 250ms;

constexpr Retry::Pace pace{10ms, 5s, 4};

/// A broker that hangs is found after three to four of them.
constexpr auto probeInterval = 2s;

/// A broker that lived this long did not die of its configuration.
constexpr auto healthyLife = 5s;

/// True when somebody takes connections there, or would if he had not so many at this instant.
bool answers(const QString &socketPath)
{
    QLocalSocket probe;
    probe.connectToServer(socketPath);
    return probe.state() != QLocalSocket::UnconnectedState;
}

} // namespace

/// The life of the broker, stage by stage:
///
///  1. Whoever holds the lock of the bus directory serves it: Launching, then Running.
///  2. Without the lock the broker of another terminal is used: AwaitingOther until it answers, then Reused.
///     It is watched, for its place is taken when it ends.
///  3. What goes wrong, and a broker that ends, leads to Retrying, and after a while to 1 or 2.
class Q_DECL_HIDDEN LocalBroker::Private : public QObject
{
public:
    enum class Stage {
        Stopped,
        Misaddressed, ///< the address is wrong and stays so
        Elsewhere,
        AwaitingOther, ///< another terminal holds the lock, but no broker answers: it comes or goes
        Reused,
        Launching, ///< the process of this object runs but does not answer yet
        Running,
        Retrying, ///< nothing runs until the time of the next try
    };

    explicit Private(LocalBroker *broker);

    State state() const;
    void enter(Stage next, const QString &why = {});
    void handleTimeout();

    void begin(const QString &terminal);
    void end();
    void serve();
    void launch();
    void checkReadiness();
    void handleHanging();
    void handleEnd(const QString &lastWords);
    void fail(const QString &why);
    QString directory() const { return QFileInfo(address.socketPath).path(); }

    LocalBroker *const q;
    Stage stage = Stage::Stopped;
    State told = State::Stopped; // by the last signal
    QTimer timer;                // what the stage waits for
    QString problem;
    BusAddress address;
    QString program;
    DirectoryLock lock;
    BrokerProcess process;
    BrokerProbe probe; // while it is Running
    Clock::time_point launched;
    bool hangs = false; // the process, which is being ended
    Retry retry;
};

LocalBroker::Private::Private(LocalBroker *broker)
    : QObject(broker),
      q(broker),
      timer(this),
      process(lock, this),
      probe(probeInterval, this),
      retry(pace)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &Private::handleTimeout);
    connect(&probe, &BrokerProbe::unanswered, this, &Private::handleHanging);
    connect(&process, &BrokerProcess::couldNotStart, this, &Private::fail);
    connect(&process, &BrokerProcess::ended, this, &Private::handleEnd);
}

LocalBroker::LocalBroker(QObject *parent) : QObject(parent), d(std::make_unique<Private>(this)) {}

LocalBroker::~LocalBroker()
{
    d->end();
}

void LocalBroker::start(const QString &address)
{
    d->end();
    d->begin(address);
}

void LocalBroker::stop()
{
    d->end();
    d->enter(Private::Stage::Stopped);
}

LocalBroker::State LocalBroker::state() const
{
    return d->state();
}

QString LocalBroker::problem() const
{
    return d->problem;
}

qint64 LocalBroker::processId() const
{
    return d->process.processId();
}

void LocalBroker::setProgram(const QString &path)
{
    d->program = path;
}

// Stages ----------------------------------------------------------------------------------------

/// A problem lasts until the broker runs, however often it is tried meanwhile.
LocalBroker::State LocalBroker::Private::state() const
{
    switch (stage) {
    case Stage::Stopped:
        return State::Stopped;
    case Stage::Misaddressed:
        return State::Failed;
    case Stage::Elsewhere:
        return State::Elsewhere;
    case Stage::AwaitingOther:
        return State::Starting;
    case Stage::Reused:
        return State::Reused;
    case Stage::Launching:
    case Stage::Retrying:
        return problem.isEmpty() ? State::Starting : State::Failed;
    case Stage::Running:
        return State::Running;
    }
    return State::Failed;
}

/// The one place where the stage changes, and with it what the timer is for. The signal is the last thing
/// that happens: a receiver may start or stop the broker.
void LocalBroker::Private::enter(Stage next, const QString &why)
{
    stage = next;
    timer.stop();
    probe.stop();
    switch (next) {
    case Stage::Stopped:
    case Stage::Elsewhere:
        problem.clear();
        break;
    case Stage::Running:
        problem.clear();
        probe.start(address.socketPath);
        break;
    case Stage::AwaitingOther:
    case Stage::Reused:
        problem.clear();
        timer.start(watchInterval);
        break;
    case Stage::Launching:
        timer.start(readinessInterval);
        break;
    case Stage::Misaddressed:
        problem = why;
        break;
    case Stage::Retrying:
        problem = why;
        timer.start(retry.nextDelay());
        break;
    }
    if (told != state()) {
        told = state();
        Q_EMIT q->stateChanged(told);
    }
}

void LocalBroker::Private::handleTimeout()
{
    switch (stage) {
    case Stage::AwaitingOther:
    case Stage::Reused:
    case Stage::Retrying:
        serve();
        break;
    case Stage::Launching:
        checkReadiness();
        break;
    case Stage::Stopped:
    case Stage::Misaddressed:
    case Stage::Elsewhere:
    case Stage::Running:
        break; // they wait for no time
    }
}

// Serving ---------------------------------------------------------------------------------------

void LocalBroker::Private::begin(const QString &terminal)
{
    address = BusAddress::ofDirectory(terminal);
    if (!address.isValid()) {
        qCWarning(lcBus, "%s", qUtf8Printable(address.problem));
        enter(Stage::Misaddressed, address.problem);
    } else if (!address.isEmbedded) {
        enter(Stage::Elsewhere);
    } else {
        serve();
    }
}

/// Without a signal: enter() follows.
void LocalBroker::Private::end()
{
    stage = Stage::Stopped;
    timer.stop();
    probe.stop();
    problem.clear();
    process.end();
    lock.release();
    retry.reset();
}

/// Who holds the lock serves; everybody else uses his broker and waits for his end.
void LocalBroker::Private::serve()
{
    const QString unsafe = BusDirectory::make(directory());
    if (!unsafe.isEmpty()) {
        fail(unsafe);
        return;
    }
    const DirectoryLock::Result result = lock.tryAcquire(directory() + QStringLiteral("/broker.lock"));
    if (result == DirectoryLock::Result::Unusable) {
        fail(lock.problem());
    } else if (result == DirectoryLock::Result::ByOther && stage == Stage::Reused) {
        enter(Stage::Reused);
    } else if (answers(address.socketPath)) {
        lock.release();
        enter(Stage::Reused);
    } else if (result == DirectoryLock::Result::ByOther) {
        enter(Stage::AwaitingOther);
    } else {
        launch();
    }
}

void LocalBroker::Private::launch()
{
    const QString why = process.launch(program, directory());
    if (!why.isEmpty()) {
        fail(why);
        return;
    }
    launched = Clock::now();
    hangs = false;
    enter(Stage::Launching);
}

void LocalBroker::Private::checkReadiness()
{
    if (process.state() == QProcess::Running && answers(address.socketPath)) {
        enter(Stage::Running);
        return;
    }
    if (Clock::now() - launched > timeToStart) {
        process.kill(); // another one is started when this one is gone
    }
    enter(Stage::Launching);
}

/// Another one is started when this one is gone.
void LocalBroker::Private::handleHanging()
{
    qCWarning(lcBus, "The broker does not answer any more; it is ended");
    hangs = true;
    process.kill();
}

void LocalBroker::Private::handleEnd(const QString &lastWords)
{
    const QString reason = lastWords.isEmpty() ? QString() : QStringLiteral(": ") + lastWords;
    if (stage == Stage::Launching) {
        fail(QStringLiteral("The broker does not start%1").arg(reason));
        return;
    }
    if (Clock::now() - launched > healthyLife) {
        retry.reset();
    }
    qCWarning(lcBus, "The broker has ended%s; it is started again", qUtf8Printable(reason));
    enter(Stage::Retrying,
          hangs ? QStringLiteral("The broker did not answer any more; another one is started") : QString());
}

void LocalBroker::Private::fail(const QString &why)
{
    if (problem != why) {
        qCWarning(lcBus, "%s", qUtf8Printable(why));
    }
    enter(Stage::Retrying, why);
}

} // namespace LocalCommunication
