#pragma once

#include "endpoint/BusAddress.h"
#include "endpoint/BusMessage_p.h"
#include "endpoint/BusPatience_p.h"
#include "endpoint/HostLookup_p.h"
#include "endpoint/Inbox_p.h"
#include "endpoint/LimitedWait_p.h"
#include "endpoint/LossLog_p.h"
#include "endpoint/MqttConnection_p.h"
#include "endpoint/OpenRequest_p.h"
#include "endpoint/OutageLog_p.h"
#include "endpoint/Outbox_p.h"
#include "endpoint/Retry_p.h"
#include "endpoint/SocketWatch_p.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

namespace LocalCommunication {

/// The membership in one bus over any number of connections. Everything runs on the owner's event loop; only
/// request() waits.
///
///  1. open() begins to join: it finds the broker's host if there is one, connects, and greets the broker.
///  2. The broker accepts this client: the session is joined, until it loses the connection.
///  3. Whatever fails on the way, and every loss, leads to another try after a while. Subscriptions are made
///     again on each connection.
///  4. close() sends what is left and ends it, in whatever state it is.
class MqttSession : public QObject
{
    Q_OBJECT

public:
    explicit MqttSession(QObject *parent);
    ~MqttSession() override;

    /// Joins in the background, again and again until close(). `subscriptions` are topic paths; `will` is
    /// what the broker publishes whenever it loses this client.
    void open(const BusAddress &address, const QVector<QByteArray> &subscriptions,
              const std::optional<BusMessage> &will = std::nullopt);
    void close();

    /// When it moves to another thread, it shares that thread's patience from then on.
    bool event(QEvent *event) override;

    bool isOpen() const { return m_state != State::Closed; }
    bool isJoined() const { return m_state == State::Joined; }
    const QByteArray &prefix() const { return m_address.prefix; }

    /// Requires isOpen().
    void subscribe(const QVector<QByteArray> &paths);

    /// Hands a message to the bus; false, with a warning in the log, when there is none or when it takes no
    /// more.
    bool publish(const BusMessage &message);

    /// Publishes a question and waits for its answer. Empty when none came in time. Other messages that
    /// come meanwhile are delivered after the return.
    ///
    /// Nobody is waited for again and again: see Patience. And when more waits to be delivered than an inbox
    /// takes, no answer is looked for behind still more.
    QByteArray request(const QByteArray &path, const QByteArray &payload, std::chrono::milliseconds timeout);

    /// Writes a warning about a message that did not make it, unless there were too many recently.
    void warnNotSent(const QByteArray &path, const QString &why);

Q_SIGNALS:
    /// A message on a path that is subscribed to.
    void messageArrived(const LocalCommunication::BusMessage &message);
    void ready();

    /// The broker's word on a message that it was to keep: empty, or why it does not.
    void receiptCame(const QString &problem);

private:
    enum class State {
        Closed,
        Resolving, ///< the name server looks for the broker's host, for this client or the MQTT library
        Crowded,   ///< the broker has too many callers at this instant; tried again in a millisecond
        Greeting,  ///< connected, but the broker has not accepted this client yet
        Joined,
        Waiting, ///< for the time of the next try
    };

    void enter(State next);
    void handleTimeout();
    bool isConnected() const { return m_state == State::Greeting || m_state == State::Joined; }
    bool isLocal() const { return m_address.transport == BusAddress::Transport::UnixSocket; }

    void sayGoodbye();
    void join();
    void connectTo(const QString &host);
    void openAside(const QByteArray &host);
    void handleOpened(MqttConnection::Opened opened);
    bool isNameAskedByLibrary(const QString &host) const;
    void greet();
    void waitForRoom();
    bool isTrustedBroker() const;
    void handleAccepted();
    void loseConnection(const QString &reason);
    void loseIfClosed();
    void dropConnection();

    void subscribeNow(const QVector<QByteArray> &paths);
    void subscribeAll();

    void handleReadable();
    void handleWritable();
    void keepAlive();
    bool read();
    bool write();
    void collect();
    void takeIn(BusMessage &&message);
    bool isReady() const;
    void announce();
    void updateWatch();

    bool isHolding() const { return !isLocal() && !isJoined(); }
    void sendHeld();
    BusPatience &patience();
    void leavePatience();
    void joinCrowd(const QDeadlineTimer &end);
    void waitForAnswer();
    void stopWaiting();
    void announceLater();
    void waitForTraffic(std::chrono::milliseconds time);

    // for as long as it is open
    State m_state = State::Closed;
    QTimer m_timer; // what the state waits for, at the longest
    BusAddress m_address;
    const QByteArray m_clientId;
    QByteArray m_replyPath; // where answers to this session arrive
    QVector<QByteArray> m_subscriptions;
    std::optional<BusMessage> m_will;
    HostLookup m_lookup;
    LimitedWait m_opening; // of a connection by a name that the library looks up itself
    Retry m_retry;
    int m_triesInCrowd = 0;
    OutageLog m_outage;
    LossLog m_losses;

    // of one connection
    std::shared_ptr<MqttConnection> m_connection;
    std::unique_ptr<SocketWatch> m_watch;
    QTimer m_keepAliveTimer;
    QTimer m_announcing; // of what request() has read
    Outbox m_outbox;
    bool m_readyIsDue = false;

    std::deque<QString> m_receipts;
    Inbox m_inbox;
    std::optional<OpenRequest> m_request;
    std::shared_ptr<BusPatience> m_patience; // of its thread, while it is joined
};

} // namespace LocalCommunication
