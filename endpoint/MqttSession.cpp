#include "endpoint/MqttSession_p.h"

#include "endpoint/BusDirectory_p.h"
#include "endpoint/Platform_p.h"
#include "endpoint/TopicPath_p.h"

#include <QDeadlineTimer>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QPointer>
#include <QRandomGenerator>
#include <QUuid>

#include <algorithm>
#include <poll.h>
#include <unistd.h>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr Retry::Pace pace{50ms, 2s, 2};

constexpr auto timeInCrowd = 1ms;

/// A broker that hangs takes connections but never answers.
constexpr auto timeToAccept = 10s;

/// A broker that accepts this client and drops it at once is not joined in a storm: only a connection that
/// has lasted counts as a success.
constexpr auto timeToSettle = 5s;

constexpr auto keepAliveInterval = 1s;

QByteArray newClientId()
{
    return QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
}

/// Between half and one and a half of it, so that a thousand clients do not come back in the same instant.
std::chrono::milliseconds spread(std::chrono::milliseconds delay)
{
    const auto whole = static_cast<int>(delay.count());
    return delay / 2 + std::chrono::milliseconds(QRandomGenerator::global()->bounded(whole));
}

} // namespace

MqttSession::MqttSession(QObject *parent)
    : QObject(parent),
      m_timer(this),
      m_clientId(newClientId()),
      m_lookup(this),
      m_opening(this, HostLookup::defaultPatience),
      m_retry(pace),
      m_keepAliveTimer(this),
      m_announcing(this),
      m_inbox(this)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_keepAliveTimer.setInterval(keepAliveInterval);
    m_announcing.setSingleShot(true);
    m_announcing.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &MqttSession::handleTimeout);
    connect(&m_keepAliveTimer, &QTimer::timeout, this, &MqttSession::keepAlive);
    connect(&m_announcing, &QTimer::timeout, this, &MqttSession::announce);
    connect(&m_inbox, &Inbox::delivered, this, &MqttSession::messageArrived);
    connect(&m_inbox, &Inbox::hasRoom, this, &MqttSession::updateWatch);
    connect(&m_lookup, &HostLookup::found, this, &MqttSession::connectTo);
    connect(&m_lookup, &HostLookup::failed, this, &MqttSession::loseConnection);
    connect(&m_opening, &LimitedWait::tooLong, this,
            [this] { loseConnection(QStringLiteral("the name server does not answer")); });
}

MqttSession::~MqttSession()
{
    close();
}

void MqttSession::open(const BusAddress &address, const QVector<QByteArray> &subscriptions,
                       const std::optional<BusMessage> &will)
{
    close();
    m_address = address;
    m_replyPath = topicPath(m_address.prefix, {"reply." + m_clientId, QByteArrayLiteral("answer")});
    m_subscriptions = subscriptions;
    m_will = will;
    m_outage.begin(m_address.toString());
    m_losses.begin(m_address.toString());
    m_retry.reset();
    join();
}

void MqttSession::close()
{
    if (isConnected() && !isHolding()) {
        sayGoodbye();
    }
    m_losses.lostWithConnection(m_outbox.size());
    enter(State::Closed);
    m_receipts.clear();
    m_inbox.clear();
    m_patience = nullptr;
}

/// Still in the old thread.
bool MqttSession::event(QEvent *event)
{
    if (event->type() == QEvent::ThreadChange) {
        m_patience = nullptr;
    }
    return QObject::event(event);
}

void MqttSession::sayGoodbye()
{
    const bool isHeard = m_connection->leave();
    m_outbox.noteSent(m_connection->takeSentCount());
    if (!isHeard && m_outbox.size() == 0) {
        m_losses.perhapsLost();
    }
}

// States ----------------------------------------------------------------------------------------

/// The one place where the state changes, and with it what the timer is for.
void MqttSession::enter(State next)
{
    m_state = next;
    m_timer.stop();
    if (next != State::Crowded) {
        m_triesInCrowd = 0;
    }
    switch (next) {
    case State::Closed:
        m_lookup.cancel();
        m_opening.cancel();
        dropConnection();
        break;
    case State::Resolving:
        m_lookup.start(m_address.host, m_address.transport == BusAddress::Transport::Tls
                                           ? HostLookup::Gives::Name
                                           : HostLookup::Gives::Address);
        break;
    case State::Crowded:
        m_timer.start(timeInCrowd);
        break;
    case State::Greeting:
        m_timer.start(timeToAccept);
        break;
    case State::Joined:
        m_outage.joined();
        m_timer.start(timeToSettle);
        break;
    case State::Waiting:
        dropConnection();
        m_timer.start(spread(m_retry.nextDelay()));
        break;
    }
}

void MqttSession::handleTimeout()
{
    switch (m_state) {
    case State::Crowded:
    case State::Waiting:
        join();
        break;
    case State::Greeting:
        loseConnection(QStringLiteral("the broker does not answer"));
        break;
    case State::Joined:
        m_retry.reset();
        m_outage.settled();
        break;
    case State::Closed:
    case State::Resolving:
        break; // they wait for no time
    }
}

// Joining ---------------------------------------------------------------------------------------

void MqttSession::join()
{
    if (isLocal()) {
        connectTo(m_address.socketPath);
    } else if (QHostAddress(m_address.host).isNull()) {
        enter(State::Resolving);
    } else {
        connectTo(m_address.host);
    }
}

void MqttSession::connectTo(const QString &host)
{
    if (m_address.isEmbedded) {
        const QString problem = BusDirectory::problemWith(QFileInfo(m_address.socketPath).path());
        if (!problem.isEmpty()) {
            loseConnection(problem);
            return;
        }
    }
    if (isNameAskedByLibrary(host)) {
        openAside(QFile::encodeName(host));
        return;
    }
    if (!m_connection) {
        m_connection = std::make_shared<MqttConnection>(m_address, m_clientId, m_will);
    }
    handleOpened(m_connection->open(QFile::encodeName(host)));
}

/// Certificates hold names: with TLS the library wants the name, and asks the name server once more.
bool MqttSession::isNameAskedByLibrary(const QString &host) const
{
    return !isLocal() && QHostAddress(host).isNull();
}

void MqttSession::openAside(const QByteArray &host)
{
    auto opening = std::make_shared<MqttConnection>(m_address, m_clientId, m_will);
    m_opening.start([this, opening, host]() -> LimitedWait::Then {
        const MqttConnection::Opened opened = opening->open(host);
        return [this, opening, opened] {
            m_connection = opening;
            handleOpened(opened);
        };
    });
}

void MqttSession::handleOpened(MqttConnection::Opened opened)
{
    switch (opened) {
    case MqttConnection::Opened::UnderWay:
        greet();
        break;
    case MqttConnection::Opened::Busy:
        waitForRoom();
        break;
    case MqttConnection::Opened::Failed:
        loseConnection(m_connection->error());
        break;
    }
}

/// On this machine the subscriptions go out right after the greeting. What this client asks is sent
/// after them, and so is handled when they are in place.
void MqttSession::greet()
{
    if (!isTrustedBroker()) {
        loseConnection(QStringLiteral("the broker there belongs to another user"));
        return;
    }
    m_watch = std::make_unique<SocketWatch>(m_connection->descriptor(), this);
    connect(m_watch.get(), &SocketWatch::readable, this, &MqttSession::handleReadable);
    connect(m_watch.get(), &SocketWatch::writable, this, &MqttSession::handleWritable);
    enter(State::Greeting);
    if (isLocal()) {
        subscribeAll();
    } else {
        m_keepAliveTimer.start();
    }
}

/// Whoever could put a socket into our directory could read the account.
bool MqttSession::isTrustedBroker() const
{
    return !m_address.isEmbedded || Platform::peerUser(m_connection->descriptor()) == ::geteuid();
}

/// The connection stays: so many callers at once need its handle again in a moment.
void MqttSession::waitForRoom()
{
    if (++m_triesInCrowd > Platform::mostTriesInCrowd) {
        loseConnection(QStringLiteral("the broker does not accept connections"));
    } else {
        enter(State::Crowded);
    }
}

void MqttSession::handleAccepted()
{
    enter(State::Joined);
    patience();
    if (!isLocal()) {
        subscribeAll();
        sendHeld();
    }
}

void MqttSession::loseConnection(const QString &reason)
{
    leavePatience();
    m_losses.lostWithConnection(m_outbox.size());
    m_outage.failed(reason);
    enter(State::Waiting);
}

void MqttSession::dropConnection()
{
    m_keepAliveTimer.stop();
    m_watch.reset();
    m_connection.reset();
    m_outbox.clear();
    m_readyIsDue = false;
}

// Subscriptions ---------------------------------------------------------------------------------

void MqttSession::subscribe(const QVector<QByteArray> &paths)
{
    m_subscriptions += paths;
    if (isConnected() && !isHolding() && !paths.isEmpty()) {
        subscribeNow(paths);
    }
}

void MqttSession::subscribeAll()
{
    subscribeNow(QVector<QByteArray>{m_replyPath} + m_subscriptions);
}

void MqttSession::subscribeNow(const QVector<QByteArray> &paths)
{
    m_readyIsDue = true;
    if (!m_connection->subscribe(paths)) {
        m_losses.notSubscribed(paths.constFirst(), m_connection->error());
        loseIfClosed();
    }
    updateWatch();
}

/// What is sent may find the connection lost.
void MqttSession::loseIfClosed()
{
    if (m_connection->descriptor() < 0) {
        loseConnection(m_connection->error());
    }
}

// Traffic ---------------------------------------------------------------------------------------

void MqttSession::handleReadable()
{
    const QDeadlineTimer end(m_inbox.readingTime());
    while (read() && !m_inbox.isFull() && Platform::bytesToRead(m_connection->descriptor()) > 0 &&
           !end.hasExpired()) {
    }
    updateWatch();
    announce();
}

/// While TLS shakes hands, reading is what goes on when writing is possible.
void MqttSession::handleWritable()
{
    if (write() && m_address.transport == BusAddress::Transport::Tls) {
        read();
    }
    updateWatch();
    announce();
}

void MqttSession::keepAlive()
{
    if (!m_connection->keepAlive()) {
        loseConnection(m_connection->error());
    }
    updateWatch();
}

/// False when the connection is lost.
bool MqttSession::read()
{
    const bool isAlive = m_connection->read();
    collect();
    if (isConnected() && !isAlive) {
        loseConnection(m_connection->error());
    }
    return isConnected();
}

/// False when the connection is lost.
bool MqttSession::write()
{
    const bool isAlive = m_connection->write();
    m_outbox.noteSent(m_connection->takeSentCount());
    if (!isAlive) {
        loseConnection(m_connection->error());
    }
    return isAlive;
}

/// Takes over what the connection has written down. Sending what was held may find the connection lost.
void MqttSession::collect()
{
    m_outbox.noteSent(m_connection->takeSentCount());
    for (const QByteArray &path : m_connection->takeRefusedSubscriptions()) {
        m_losses.notSubscribed(path, QStringLiteral("the broker refuses it"));
    }
    for (const QString &receipt : m_connection->takeReceipts()) {
        m_receipts.push_back(receipt);
    }
    std::deque<BusMessage> &received = m_connection->received();
    for (; !received.empty(); received.pop_front()) {
        takeIn(std::move(received.front()));
    }
    if (m_state == State::Greeting && m_connection->isAccepted()) {
        handleAccepted();
    }
}

void MqttSession::takeIn(BusMessage &&message)
{
    if (message.path != m_replyPath) {
        m_inbox.add(std::move(message));
        return;
    }
    patience().hear(message.correlation.toULongLong(), Clock::now());
    if (m_request) {
        m_request->take(message);
    }
}

/// The last thing that every entry from the event loop does: a receiver may destroy this object.
void MqttSession::announce()
{
    const QPointer<MqttSession> alive(this);
    if (isReady()) {
        m_readyIsDue = false;
        Q_EMIT ready();
    }
    while (alive && !m_receipts.empty()) {
        const QString receipt = m_receipts.front();
        m_receipts.pop_front();
        Q_EMIT receiptCame(receipt);
    }
    if (alive) {
        m_inbox.run();
    }
}

bool MqttSession::isReady() const
{
    return m_readyIsDue && isJoined() && m_connection->isEverySubscriptionInPlace();
}

void MqttSession::updateWatch()
{
    if (isConnected()) {
        m_watch->setWatchesWriting(m_connection->wantsToWrite());
        m_watch->setWatchesReading(!m_inbox.isFull());
    }
}

// Sending ---------------------------------------------------------------------------------------

/// A broker elsewhere that refuses this client would throw away its own words about that, if more than the
/// greeting had been sent. So what is to be sent is held until it has accepted.
bool MqttSession::publish(const BusMessage &message)
{
    const QString problem = isConnected() ? m_outbox.problemWith(message) : QStringLiteral("there is no bus");
    if (!problem.isEmpty()) {
        m_losses.notSent(message.path, problem);
        return false;
    }
    if (isHolding()) {
        m_outbox.hold(message);
        return true;
    }
    if (!m_connection->publish(message)) {
        m_losses.notSent(message.path, m_connection->error());
        loseIfClosed();
        return false;
    }
    m_outbox.handOver(message);
    m_outbox.noteSent(m_connection->takeSentCount());
    updateWatch();
    return true;
}

void MqttSession::sendHeld()
{
    for (const BusMessage &message : m_outbox.takeHeld()) {
        publish(message);
    }
}

void MqttSession::warnNotSent(const QByteArray &path, const QString &why)
{
    m_losses.notSent(path, why);
}

// Asking ----------------------------------------------------------------------------------------

QByteArray MqttSession::request(const QByteArray &path, const QByteArray &payload,
                                std::chrono::milliseconds timeout)
{
    const auto began = Clock::now();
    joinCrowd(QDeadlineTimer(timeout, Qt::PreciseTimer));
    const quint64 question = patience().nextQuestion(began);
    QByteArray answer;
    if (publish({path, payload, m_replyPath, QByteArray::number(question)})) {
        const auto wait = patience().ask(path, question, began, timeout, m_inbox.isCrowded());
        m_request.emplace(QByteArray::number(question), wait - (Clock::now() - began));
        waitForAnswer();
        answer = m_request->answer();
        m_request.reset();
    }
    if (!isConnected()) {
        leavePatience();
    }
    announceLater();
    return answer;
}

void MqttSession::waitForAnswer()
{
    while (isConnected() && !m_request->isOver() && !m_inbox.isOverfull()) {
        waitForTraffic(m_request->remainingTime());
    }
    stopWaiting();
}

/// What was read meanwhile.
void MqttSession::announceLater()
{
    updateWatch();
    m_inbox.runSoon();
    if ((isReady() || !m_receipts.empty()) && !m_announcing.isActive()) {
        m_announcing.start(); // once, however many questions are asked before the event loop is back
    }
}

BusPatience &MqttSession::patience()
{
    if (!m_patience) {
        DeliveryTurns *const turns = m_inbox.turns();
        m_patience = turns == nullptr ? std::make_shared<BusPatience>()
                                      : turns->patience(m_address.toString() + QLatin1Char('/') +
                                                        QString::fromLatin1(m_address.prefix));
    }
    return *m_patience;
}

/// Only when this was the last client of the thread that the bus had, it is the bus that was lost, and not
/// this client's connection.
void MqttSession::leavePatience()
{
    constexpr long lastOne = 2; // its thread keeps it as well
    if (m_patience && m_patience.use_count() <= lastOne) {
        m_patience->beginAnew(Clock::now());
    }
    m_patience = nullptr;
}

/// Whose answer lies behind more than can be taken in may answer, but is not waited for either.
void MqttSession::stopWaiting()
{
    if (!isConnected()) {
        return; // who answers on the bus that comes next is not known
    }
    if (!m_request->isAnswered() && m_inbox.isOverfull()) {
        m_losses.notAwaited();
    }
    patience().stopWaiting(Clock::now(), m_inbox.isCrowded());
}

/// A crowded broker takes a caller after a millisecond or two.
void MqttSession::joinCrowd(const QDeadlineTimer &end)
{
    while (m_state == State::Crowded && !end.hasExpired()) {
        ::poll(nullptr, 0, static_cast<int>(timeInCrowd.count()));
        join();
    }
}

void MqttSession::waitForTraffic(std::chrono::milliseconds time)
{
    const short events = m_connection->wantsToWrite() ? POLLIN | POLLOUT : POLLIN;
    pollfd entry{m_connection->descriptor(), events, 0};
    if (::poll(&entry, 1, static_cast<int>(time.count())) <= 0) {
        return; // time is up, or a signal came
    }
    if ((entry.revents & POLLOUT) == 0 || write()) {
        read();
    }
}

} // namespace LocalCommunication
