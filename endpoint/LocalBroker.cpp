#include "endpoint/LocalBroker.h"

#include "endpoint/BusAddress.h"
#include "endpoint/BusDirectory_p.h"
#include "endpoint/DirectoryLock_p.h"
#include "endpoint/Logging_p.h"
#include "endpoint/Platform_p.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <unistd.h>

namespace LocalCommunication {

namespace {

constexpr int ReadyPollMs = 2;
constexpr int StartTimeoutMs = 20000;
constexpr int WatchMs = 250;

/// A broker that lived this long did not die of its configuration.
constexpr int HealthyLifeMs = 5000;
constexpr int FirstRestartMs = 10;
constexpr int LastRestartMs = 5000;

constexpr int StopTimeoutMs = 1000;

/// Why each line: a queue that is too short loses messages of a reader that is only slow, and 0 does
/// not mean "no limit" in every version; some versions refuse packets above 2 MB by default; nothing
/// has to outlive the broker.
const char Configuration[] = "# Written by the terminal at every start.\n"
                             "listener 0 bus.sock\n"
                             "allow_anonymous true\n"
                             "max_queued_messages 1000000000\n"
                             "max_packet_size 268435455\n"
                             "retain_available false\n"
                             "persistence false\n"
                             "sys_interval 0\n"
                             "log_type error\n"
                             "log_type warning\n"
                             "log_dest stderr\n";

/// Started by root the broker would give up its rights, and with them its own directory.
const char StayRoot[] = "user root\n";

/// What it says of that at every start is no news.
const char RootWarning[] = "should not be run as root";

QString brokerProgram()
{
    const QString name = QStringLiteral("mosquitto");
    const QString inPath = QStandardPaths::findExecutable(name);
    const QStringList usualPlaces{
        QStringLiteral("/usr/sbin"), QStringLiteral("/usr/local/sbin"), QStringLiteral("/opt/homebrew/sbin"),
        QStringLiteral("/opt/homebrew/opt/mosquitto/sbin"), QStringLiteral("/usr/local/opt/mosquitto/sbin")};
    return inPath.isEmpty() ? QStandardPaths::findExecutable(name, usualPlaces) : inPath;
}

/// True when somebody takes connections there, or would if he had not so many at this instant.
bool answers(const QString &socketPath)
{
    QLocalSocket probe;
    probe.connectToServer(socketPath);
    return probe.state() != QLocalSocket::UnconnectedState;
}

/// The broker's process: it keeps the lock of its directory and does not outlive the terminal.
class BrokerProcess : public QProcess
{
public:
    BrokerProcess(const DirectoryLock &lock, QObject *parent) : QProcess(parent), m_lock(lock) {}

protected:
    void setupChildProcess() override
    {
        m_lock.handDown();
        Platform::endWithParent(m_parent);
    }

private:
    const DirectoryLock &m_lock;
    const pid_t m_parent = ::getpid();
};

} // namespace

class Q_DECL_HIDDEN LocalBroker::Private : public QObject
{
public:
    explicit Private(LocalBroker *broker);

    void serve();
    void startProcess();
    QString writeConfiguration() const;
    void awaitReadiness();
    void handleFinished();
    void handleOutput();
    void retryLater();
    void stop();
    void fail(const QString &why);
    void report(const QString &why);
    void enter(State next);
    QString directory() const { return QFileInfo(address.socketPath).path(); }

    LocalBroker *const q;
    State state = State::Stopped;
    QString problem;
    QString program;
    BusAddress address;
    DirectoryLock lock;
    BrokerProcess process;
    QString lastOutput;
    QElapsedTimer sinceStart;
    QTimer watchTimer; // serve() again
    QTimer readyTimer;
    int restartDelayMs = 0;
};

LocalBroker::Private::Private(LocalBroker *broker) : QObject(broker), q(broker), process(lock, this)
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    watchTimer.setSingleShot(true);
    readyTimer.setInterval(ReadyPollMs);
    connect(&watchTimer, &QTimer::timeout, this, &Private::serve);
    connect(&readyTimer, &QTimer::timeout, this, &Private::awaitReadiness);
    connect(&process, &QProcess::readyRead, this, &Private::handleOutput);
    connect(&process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &Private::handleFinished);
    connect(&process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            fail(
                QStringLiteral("The broker '%1' can not be started: %2").arg(program, process.errorString()));
        }
    });
}

LocalBroker::LocalBroker(QObject *parent) : QObject(parent), d(std::make_unique<Private>(this)) {}

LocalBroker::~LocalBroker()
{
    d->stop();
}

void LocalBroker::start(const QString &address)
{
    stop();
    d->address = BusAddress::ofDirectory(address);
    if (!d->address.isValid()) {
        d->report(d->address.problem); // no time heals it
    } else if (!d->address.isEmbedded) {
        d->enter(State::Elsewhere);
    } else {
        d->serve();
    }
}

void LocalBroker::stop()
{
    d->stop();
    d->enter(State::Stopped);
}

LocalBroker::State LocalBroker::state() const
{
    return d->state;
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

/// Who holds the lock serves; everybody else uses his broker and waits for his end.
void LocalBroker::Private::serve()
{
    const QString unsafe = BusDirectory::make(directory());
    if (!unsafe.isEmpty()) {
        fail(unsafe);
        return;
    }
    const bool isOurs = lock.tryAcquire(directory() + QStringLiteral("/broker.lock"));
    if (!isOurs && state == State::Reused) {
        watchTimer.start(WatchMs);
    } else if (answers(address.socketPath)) {
        lock.release();
        watchTimer.start(WatchMs);
        enter(State::Reused);
    } else if (!isOurs) {
        watchTimer.start(WatchMs);
        enter(State::Starting);
    } else {
        startProcess();
    }
}

void LocalBroker::Private::startProcess()
{
    const QString found = program.isEmpty() ? brokerProgram() : program;
    const QString unwritable = writeConfiguration();
    if (found.isEmpty()) {
        fail(QStringLiteral("The program 'mosquitto' is not installed; "
                            "install it with: apt install mosquitto, or: brew install mosquitto"));
    } else if (!unwritable.isEmpty()) {
        fail(unwritable);
    } else {
        if (problem.isEmpty()) {
            enter(State::Starting);
        }
        sinceStart.start();
        // Relative names, because the listener's path may hold neither blanks nor many bytes.
        process.setWorkingDirectory(directory());
        process.start(found, {QStringLiteral("-c"), QStringLiteral("mosquitto.conf")});
        readyTimer.start();
    }
}

/// Empty, or why it can not be written.
QString LocalBroker::Private::writeConfiguration() const
{
    QSaveFile file(directory() + QStringLiteral("/mosquitto.conf"));
    const QByteArray text = QByteArray(::geteuid() == 0 ? StayRoot : "") + Configuration;
    const bool written = file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
    return written ? QString() : QStringLiteral("'%1': %2").arg(file.fileName(), file.errorString());
}

void LocalBroker::Private::awaitReadiness()
{
    if (process.state() == QProcess::Running && answers(address.socketPath)) {
        readyTimer.stop();
        enter(State::Running);
    } else if (sinceStart.hasExpired(StartTimeoutMs)) {
        process.kill(); // a new one is started when this one is gone
    }
}

void LocalBroker::Private::handleFinished()
{
    handleOutput();
    const QString reason = lastOutput.isEmpty() ? QString() : QStringLiteral(": ") + lastOutput;
    if (readyTimer.isActive()) {
        fail(QStringLiteral("The broker does not start%1").arg(reason));
        return;
    }
    qCWarning(lcBus, "The broker has ended%s; it is started again", qUtf8Printable(reason));
    enter(State::Starting);
    retryLater();
}

/// The broker writes only when something is wrong.
void LocalBroker::Private::handleOutput()
{
    const QList<QByteArray> lines = process.readAll().trimmed().split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && !line.contains(RootWarning)) {
            lastOutput = QString::fromUtf8(line);
            qCWarning(lcBus, "mosquitto: %s", line.constData());
        }
    }
}

void LocalBroker::Private::retryLater()
{
    const bool wasHealthy = sinceStart.isValid() && sinceStart.hasExpired(HealthyLifeMs);
    restartDelayMs =
        wasHealthy ? FirstRestartMs : std::clamp(4 * restartDelayMs, FirstRestartMs, LastRestartMs);
    watchTimer.start(restartDelayMs);
}

void LocalBroker::Private::stop()
{
    watchTimer.stop();
    readyTimer.stop();
    if (process.state() != QProcess::NotRunning) {
        const QSignalBlocker quiet(process);
        process.terminate();
        if (!process.waitForFinished(StopTimeoutMs)) {
            process.kill();
            process.waitForFinished(StopTimeoutMs);
        }
    }
    lock.release();
    problem.clear();
    lastOutput.clear();
    sinceStart.invalidate();
    restartDelayMs = 0;
}

void LocalBroker::Private::fail(const QString &why)
{
    readyTimer.stop();
    retryLater();
    report(why);
}

void LocalBroker::Private::report(const QString &why)
{
    if (problem != why) {
        problem = why;
        qCWarning(lcBus, "%s", qUtf8Printable(why));
    }
    enter(State::Failed);
}

/// The one place where the state changes.
void LocalBroker::Private::enter(State next)
{
    if (next != State::Failed && next != State::Starting) {
        problem.clear();
    }
    if (state != next) {
        state = next;
        Q_EMIT q->stateChanged(next);
    }
}

} // namespace LocalCommunication
