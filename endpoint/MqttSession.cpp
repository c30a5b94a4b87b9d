#include "endpoint/MqttSession_p.h"

#include "endpoint/BusDirectory_p.h"
#include "endpoint/Logging_p.h"
#include "endpoint/Platform_p.h"

#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QPointer>
#include <QRandomGenerator>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace LocalCommunication {

Q_LOGGING_CATEGORY(lcBus, "tradechart.bus")

namespace {

constexpr int FirstRetryMs = 50;
constexpr int LastRetryMs = 2000;

/// How often a broker that has too many callers at once is tried before it counts as one that hangs.
constexpr int BusyTriesInARow = 500;
constexpr int BusyRetryMs = 1;

/// A broker that hangs takes connections but never answers.
constexpr int AcceptTimeoutMs = 10000;
constexpr int KeepAliveTickMs = 1000;

/// Messages handled in one turn of the event loop, so that a flood leaves room for the user's input.
constexpr int MaxReadsPerTurn = 64;

/// Above this a broker that does not read costs the terminal its memory.
constexpr qint64 MaxUnsentBytes = 64 << 20;

/// An MQTT packet has at most 256 MiB, its topic and properties included.
constexpr int MaxPayloadBytes = 268'435'455 - 3 * 65'536;

/// A broker that takes nothing for this long while this client wants to leave is not waited for.
constexpr int FlushStallMs = 100;
constexpr int FlushMs = 2000;

QByteArray newClientId()
{
    return QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
}

} // namespace

MqttSession::MqttSession(QObject *parent)
    : QObject(parent),
      m_clientId(newClientId()),
      m_retryTimer(this),
      m_acceptTimer(this),
      m_keepAliveTimer(this)
{
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setTimerType(Qt::PreciseTimer);
    m_acceptTimer.setSingleShot(true);
    m_acceptTimer.setInterval(AcceptTimeoutMs);
    m_keepAliveTimer.setInterval(KeepAliveTickMs);
    connect(&m_retryTimer, &QTimer::timeout, this, &MqttSession::join);
    connect(&m_acceptTimer, &QTimer::timeout, this, &MqttSession::handleAcceptTimeout);
    connect(&m_keepAliveTimer, &QTimer::timeout, this, &MqttSession::keepAlive);
}

MqttSession::~MqttSession()
{
    close();
}

void MqttSession::open(const BusAddress &address, const QVector<QByteArray> &subscriptions)
{
    close();
    m_address = address;
    m_replyPath = topicPath(m_address.prefix, {"reply." + m_clientId, QByteArrayLiteral("answer")});
    m_subscriptions = subscriptions;
    m_open = true;
    join();
}

void MqttSession::close()
{
    if (m_readNotifier && (isJoined() || isLocal())) {
        flush();
    }
    reportUnsent();
    dropConnection();
    m_retryTimer.stop();
    if (m_hostLookup != 0) {
        QHostInfo::abortHostLookup(m_hostLookup);
        m_hostLookup = 0;
    }
    m_inbox.clear();
    m_reportedFailures.clear();
    m_retryDelayMs = 0;
    m_open = false;
}

/// What was sent is on its way before the goodbye, unless the broker does not take it.
void MqttSession::flush()
{
    const QDeadlineTimer deadline(FlushMs);
    m_connection->close();
    while (m_connection->wantsToWrite()) {
        pollfd entry{m_connection->descriptor(), POLLOUT, 0};
        const bool stalled = ::poll(&entry, 1, FlushStallMs) == 0;
        if (stalled || deadline.hasExpired() || !m_connection->write()) {
            return;
        }
    }
}

// Joining ---------------------------------------------------------------------------------------

void MqttSession::join()
{
    if (isLocal()) {
        openConnection(m_address.socketPath);
    } else if (QHostAddress(m_address.host).isNull()) {
        resolveHost();
    } else {
        openConnection(m_address.host);
    }
}

/// The MQTT library would wait for the name server.
void MqttSession::resolveHost()
{
    m_hostLookup = QHostInfo::lookupHost(m_address.host, this, &MqttSession::handleHostFound);
}

void MqttSession::handleHostFound(const QHostInfo &result)
{
    if (result.lookupId() != m_hostLookup) {
        return;
    }
    m_hostLookup = 0;
    if (result.error() != QHostInfo::NoError || result.addresses().isEmpty()) {
        loseConnection(result.errorString());
    } else if (m_address.transport == BusAddress::Transport::Tls) {
        openConnection(m_address.host); // certificates hold names; the name server has just answered
    } else {
        const QList<QHostAddress> addresses = result.addresses();
        openConnection(addresses[m_hostTries++ % addresses.size()].toString());
    }
}

void MqttSession::openConnection(const QString &host)
{
    if (m_address.isEmbedded) {
        const QString problem = BusDirectory::problemWith(QFileInfo(m_address.socketPath).path());
        if (!problem.isEmpty()) {
            loseConnection(problem);
            return;
        }
    }
    if (!m_connection) {
        m_connection = std::make_unique<MqttConnection>(m_address, m_clientId);
    }
    switch (m_connection->open(QFile::encodeName(host))) {
    case MqttConnection::Opened::UnderWay:
        handleOpened();
        break;
    case MqttConnection::Opened::Busy:
        scheduleBusyRetry();
        break;
    case MqttConnection::Opened::Failed:
        loseConnection(m_connection->error());
        break;
    }
}

void MqttSession::handleOpened()
{
    m_busyTries = 0;
    m_retryTimer.stop();
    if (!isTrustedBroker()) {
        loseConnection(QStringLiteral("the broker there belongs to another user"));
        return;
    }
    const int descriptor = m_connection->descriptor();
    m_readNotifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(m_readNotifier.get(), &QSocketNotifier::activated, this, &MqttSession::handleReadable);
    m_acceptTimer.start();
    if (isLocal()) {
        subscribeAll();
    } else {
        m_keepAliveTimer.start();
    }
}

/// Whoever could put a socket into our directory could read the account.
bool MqttSession::isTrustedBroker()
{
    return !m_address.isEmbedded || Platform::peerUser(m_connection->descriptor()) == ::geteuid();
}

/// The handle stays: so many callers at once need it again in a moment.
void MqttSession::scheduleBusyRetry()
{
    if (++m_busyTries > BusyTriesInARow) {
        loseConnection(QStringLiteral("the broker does not accept connections"));
        return;
    }
    m_retryTimer.start(BusyRetryMs);
}

void MqttSession::loseConnection(const QString &reason)
{
    reportUnsent();
    reportFailure(reason);
    dropConnection();
    scheduleRetry();
}

void MqttSession::dropConnection()
{
    m_acceptTimer.stop();
    m_keepAliveTimer.stop();
    m_readNotifier.reset();
    m_writeNotifier.reset();
    m_connection.reset();
    m_held.clear();
    m_heldBytes = 0;
    m_busyTries = 0;
    m_readyIsDue = false;
}

void MqttSession::reportUnsent()
{
    const auto count = m_connection ? m_connection->unsentMessages() + static_cast<int>(m_held.size()) : 0;
    if (count > 0) {
        qCWarning(lcBus, "%s: %d messages were lost with the connection",
                  qUtf8Printable(m_address.toString()), count);
    }
}

/// One line for every new reason, not one for every try.
void MqttSession::reportFailure(const QString &reason)
{
    if (m_reportedFailures.contains(reason)) {
        return;
    }
    m_reportedFailures.append(reason);
    qCWarning(lcBus, "%s: %s; trying again until the bus is there", qUtf8Printable(m_address.toString()),
              qUtf8Printable(reason));
}

/// Doubled every time, and spread so that a thousand clients do not come back in the same instant.
void MqttSession::scheduleRetry()
{
    m_retryDelayMs = std::clamp(2 * m_retryDelayMs, FirstRetryMs, LastRetryMs);
    m_retryTimer.start(m_retryDelayMs / 2 + QRandomGenerator::global()->bounded(m_retryDelayMs));
}

void MqttSession::handleAccepted()
{
    m_acceptTimer.stop();
    m_retryDelayMs = 0;
    if (!isLocal()) {
        subscribeAll();
        sendHeld();
    }
    if (!m_reportedFailures.isEmpty()) {
        m_reportedFailures.clear();
        qCInfo(lcBus, "%s: joined", qUtf8Printable(m_address.toString()));
    }
}

void MqttSession::handleAcceptTimeout()
{
    loseConnection(QStringLiteral("the broker does not answer"));
}

// Subscriptions ---------------------------------------------------------------------------------

void MqttSession::subscribe(const QVector<QByteArray> &paths)
{
    m_subscriptions += paths;
    if (m_readNotifier && !isHolding()) {
        subscribeNow(paths);
    }
}

/// On this machine sent right behind the greeting. What this client asks is sent afterwards, and so is
/// handled when its subscriptions are in place.
void MqttSession::subscribeAll()
{
    subscribeNow(QVector<QByteArray>{m_replyPath} + m_subscriptions);
}

void MqttSession::subscribeNow(const QVector<QByteArray> &paths)
{
    m_readyIsDue = true;
    if (!m_connection->subscribe(paths)) {
        qCWarning(lcBus, "%s: subscribing to '%s' failed: %s", qUtf8Printable(m_address.toString()),
                  paths.constFirst().constData(), qUtf8Printable(m_connection->error()));
    }
    updateWriteNotifier();
}

// Traffic ---------------------------------------------------------------------------------------

void MqttSession::handleReadable()
{
    for (int i = 0; i < MaxReadsPerTurn; ++i) {
        if (!readOnce() || Platform::bytesToRead(m_connection->descriptor()) == 0) {
            break;
        }
    }
    updateWriteNotifier();
    announce();
}

/// While TLS shakes hands, reading is what goes on when writing is possible.
void MqttSession::handleWritable()
{
    if (write() && m_address.transport == BusAddress::Transport::Tls) {
        readOnce();
    }
    updateWriteNotifier();
    announce();
}

void MqttSession::keepAlive()
{
    if (!m_connection->keepAlive()) {
        loseConnection(m_connection->error());
    }
    updateWriteNotifier();
}

/// The MQTT library takes a TLS connection that was refused for one that is still on its way, and would
/// keep this process busy with it.
bool MqttSession::findRefused()
{
    if (m_connection->isAccepted() || isLocal()) {
        return false;
    }
    const QString problem = Platform::connectionProblem(m_connection->descriptor());
    if (!problem.isEmpty()) {
        loseConnection(problem);
    }
    return !problem.isEmpty();
}

bool MqttSession::readOnce()
{
    if (findRefused()) {
        return false;
    }
    const bool alive = m_connection->read();
    collect();
    if (!m_connection) {
        return false;
    }
    if (!alive) {
        const bool early = isLocal() && !m_connection->isAccepted();
        loseConnection(m_connection->error() +
                       (early ? QStringLiteral(" (a line ALL: ALL in /etc/hosts.deny has this effect too)")
                              : QString()));
    }
    return alive;
}

bool MqttSession::write()
{
    if (findRefused()) {
        return false;
    }
    const bool alive = m_connection->write();
    if (!alive) {
        loseConnection(m_connection->error());
    }
    return alive;
}

/// Takes over what the connection has written down.
void MqttSession::collect()
{
    for (const QByteArray &path : m_connection->takeRefusedSubscriptions()) {
        qCWarning(lcBus, "%s: the broker refuses the subscription to '%s'",
                  qUtf8Printable(m_address.toString()), path.constData());
    }
    std::deque<BusMessage> &received = m_connection->received();
    for (; !received.empty(); received.pop_front()) {
        if (received.front().path != m_replyPath) {
            m_inbox.push_back(std::move(received.front()));
        } else if (!m_awaited.isEmpty() && received.front().correlation == m_awaited) {
            m_answer = std::move(received.front().payload);
        }
    }
    if (m_connection->isAccepted() && m_acceptTimer.isActive()) {
        handleAccepted(); // may send, and so find the connection lost
    }
}

/// The last thing that every entry from the event loop does: a receiver may destroy this object.
void MqttSession::announce()
{
    const QPointer<MqttSession> alive(this);
    if (m_readyIsDue && isJoined() && m_connection->isEverySubscriptionInPlace()) {
        m_readyIsDue = false;
        Q_EMIT ready();
    }
    if (!alive || m_inbox.empty()) {
        return;
    }
    if (m_inbox.size() > 1) { // should a receiver run an event loop, the messages behind its own go on there
        announceSoon();
    }
    Q_EMIT messagesArrived();
}

void MqttSession::announceSoon()
{
    QMetaObject::invokeMethod(this, &MqttSession::announce, Qt::QueuedConnection);
}

/// Made when it is needed first, which on a Unix socket is hardly ever.
void MqttSession::updateWriteNotifier()
{
    const bool wanted = m_readNotifier && m_connection->wantsToWrite();
    if (wanted && !m_writeNotifier) {
        m_writeNotifier =
            std::make_unique<QSocketNotifier>(m_connection->descriptor(), QSocketNotifier::Write);
        connect(m_writeNotifier.get(), &QSocketNotifier::activated, this, &MqttSession::handleWritable);
    } else if (m_writeNotifier) {
        m_writeNotifier->setEnabled(wanted);
    }
}

std::optional<BusMessage> MqttSession::takeMessage()
{
    if (m_inbox.empty()) {
        return std::nullopt;
    }
    std::optional<BusMessage> message(std::move(m_inbox.front()));
    m_inbox.pop_front();
    return message;
}

// Sending ---------------------------------------------------------------------------------------

bool MqttSession::publish(const QByteArray &path, const QByteArray &payload, const QByteArray &correlation)
{
    return send(path, payload, QByteArray(), correlation);
}

bool MqttSession::send(const QByteArray &path, const QByteArray &payload, const QByteArray &responsePath,
                       const QByteArray &correlation)
{
    if (!m_readNotifier) {
        warnNotSent(path, QStringLiteral("there is no bus"));
    } else if (path.isEmpty()) {
        warnNotSent(path, QStringLiteral("its channel or topic is empty or too long"));
    } else if (payload.size() > MaxPayloadBytes) {
        warnNotSent(path, QStringLiteral("it is larger than %1 bytes").arg(MaxPayloadBytes));
    } else if (m_connection->unsentBytes() + m_heldBytes > MaxUnsentBytes) {
        warnNotSent(path, QStringLiteral("the broker does not take messages any more"));
    } else if (isHolding()) {
        m_held.push_back({path, payload, responsePath, correlation});
        m_heldBytes += payload.size();
        return true;
    } else if (!m_connection->publish(path, payload, responsePath, correlation)) {
        warnNotSent(path, m_connection->error());
        if (m_connection->descriptor() < 0) {
            loseConnection(m_connection->error());
        }
    } else {
        updateWriteNotifier();
        return true;
    }
    return false;
}

/// A broker elsewhere that refuses this client would throw away its own words about that, if more than
/// the greeting had been sent.
bool MqttSession::isHolding() const
{
    return !isLocal() && !isJoined();
}

void MqttSession::sendHeld()
{
    m_heldBytes = 0;
    const std::deque<HeldMessage> held = std::exchange(m_held, {});
    for (const HeldMessage &each : held) {
        send(each.path, each.payload, each.responsePath, each.correlation);
    }
}

void MqttSession::warnNotSent(const QByteArray &path, const QString &why)
{
    if (m_notSentWarning.isDue()) {
        qCWarning(lcBus, "A message to '%s' was not sent: %s (%d more before it)", path.constData(),
                  qUtf8Printable(why), m_notSentWarning.takeSuppressed());
    }
}

QByteArray MqttSession::request(const QByteArray &path, const QByteArray &payload, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs, Qt::PreciseTimer);
    joinNow(deadline);
    m_awaited = QByteArray::number(++m_requests);
    m_answer.reset();
    if (send(path, payload, m_replyPath, m_awaited)) {
        while (!m_answer && m_connection && !deadline.hasExpired()) {
            waitForTraffic(deadline);
        }
    }
    m_awaited.clear();
    updateWriteNotifier();
    if (!m_inbox.empty() || m_readyIsDue) {
        announceSoon();
    }
    return std::exchange(m_answer, std::nullopt).value_or(QByteArray());
}

/// A crowded broker takes a caller after a millisecond or two.
void MqttSession::joinNow(const QDeadlineTimer &deadline)
{
    while (m_busyTries > 0 && !deadline.hasExpired()) {
        ::poll(nullptr, 0, BusyRetryMs);
        join();
    }
}

void MqttSession::waitForTraffic(const QDeadlineTimer &deadline)
{
    const short events = m_connection->wantsToWrite() ? POLLIN | POLLOUT : POLLIN;
    pollfd entry{m_connection->descriptor(), events, 0};
    if (::poll(&entry, 1, static_cast<int>(deadline.remainingTime())) <= 0) {
        return; // time is up, or a signal came
    }
    if ((entry.revents & POLLOUT) == 0 || write()) {
        readOnce();
    }
}

} // namespace LocalCommunication
