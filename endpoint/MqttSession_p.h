#pragma once

#include "endpoint/BusAddress.h"
#include "endpoint/MqttConnection_p.h"
#include "endpoint/TopicPath_p.h"
#include "endpoint/WarningThrottle_p.h"

#include <QDeadlineTimer>
#include <QHostInfo>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>

namespace LocalCommunication {

/// The membership in one bus over any number of connections: joins, notices the loss, joins again
/// and makes the subscriptions again. Everything runs on the owner's event loop; only request() waits.
class MqttSession : public QObject
{
    Q_OBJECT

public:
    explicit MqttSession(QObject *parent);
    ~MqttSession() override;

    /// Joins in the background, again and again until close(). `subscriptions` are topic paths.
    void open(const BusAddress &address, const QVector<QByteArray> &subscriptions);
    void close();

    bool isOpen() const { return m_open; }
    bool isJoined() const { return m_connection && m_connection->isAccepted(); }
    const QByteArray &prefix() const { return m_address.prefix; }

    /// The path on which answers to this session arrive.
    const QByteArray &replyPath() const { return m_replyPath; }

    /// Requires isOpen().
    void subscribe(const QVector<QByteArray> &paths);

    /// Hands a message to the bus; false, with a warning in the log, when there is none or when it
    /// takes no more. `correlation` belongs to an answer and may be empty.
    bool publish(const QByteArray &path, const QByteArray &payload, const QByteArray &correlation = {});

    /// Publishes a question and waits for its answer. Empty when none came in time. Other messages that
    /// come meanwhile are announced after the return.
    QByteArray request(const QByteArray &path, const QByteArray &payload, int timeoutMs);

    /// The oldest message that nobody took yet.
    std::optional<BusMessage> takeMessage();

    /// Writes a warning about a message that did not make it, unless there were too many of late.
    void warnNotSent(const QByteArray &path, const QString &why);

Q_SIGNALS:
    void messagesArrived();
    void ready();

private:
    struct HeldMessage
    {
        QByteArray path;
        QByteArray payload;
        QByteArray responsePath;
        QByteArray correlation;
    };

    bool isLocal() const { return m_address.transport == BusAddress::Transport::UnixSocket; }
    void join();
    void resolveHost();
    void handleHostFound(const QHostInfo &result);
    void openConnection(const QString &host);
    void handleOpened();
    bool isTrustedBroker();
    void scheduleBusyRetry();
    void loseConnection(const QString &reason);
    void dropConnection();
    void reportUnsent();
    void reportFailure(const QString &reason);
    void scheduleRetry();

    void subscribeAll();
    void subscribeNow(const QVector<QByteArray> &paths);
    void handleReadable();
    void handleWritable();
    void handleAccepted();
    void handleAcceptTimeout();
    void keepAlive();
    bool findRefused();
    bool readOnce();
    bool write();
    void collect();
    void announce();
    void announceSoon();
    void updateWriteNotifier();

    bool send(const QByteArray &path, const QByteArray &payload, const QByteArray &responsePath,
              const QByteArray &correlation);
    bool isHolding() const;
    void sendHeld();
    void waitForTraffic(const QDeadlineTimer &deadline);
    void joinNow(const QDeadlineTimer &deadline);
    void flush();

    BusAddress m_address;
    bool m_open = false;
    const QByteArray m_clientId;
    QByteArray m_replyPath;
    QVector<QByteArray> m_subscriptions;

    std::unique_ptr<MqttConnection> m_connection;
    std::unique_ptr<QSocketNotifier> m_readNotifier;
    std::unique_ptr<QSocketNotifier> m_writeNotifier;
    QTimer m_retryTimer;
    QTimer m_acceptTimer;
    QTimer m_keepAliveTimer;
    int m_hostLookup = 0;
    int m_hostTries = 0; // each takes the next address of the name
    int m_busyTries = 0;
    int m_retryDelayMs = 0;
    bool m_readyIsDue = false;
    QStringList m_reportedFailures; // since it was joined last
    WarningThrottle m_notSentWarning;

    std::deque<HeldMessage> m_held; // until a broker elsewhere has accepted this client
    qint64 m_heldBytes = 0;

    std::deque<BusMessage> m_inbox;
    quint64 m_requests = 0;
    QByteArray m_awaited; // the correlation of the question that waits for its answer
    std::optional<QByteArray> m_answer;
};

} // namespace LocalCommunication
