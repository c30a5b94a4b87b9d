#pragma once

#include "endpoint/BusAddress.h"
#include "endpoint/BusMessage_p.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

#include <deque>
#include <memory>
#include <optional>
#include <utility>

class QDeadlineTimer;
struct mosquitto;

namespace LocalCommunication {

/// One connection to a broker, from opening to loss; for the next one make a new object. Owns the
/// handle of the MQTT library, whose header only the source file of this class includes.
///
/// The library's callbacks do no more than write down what happened; it is picked up from here after
/// every call, when the library can be called again.
class MqttConnection
{
public:
    enum class Opened { UnderWay, Busy, Failed };

    /// `will` is what the broker publishes when this connection is lost.
    MqttConnection(BusAddress address, const QByteArray &clientId, const std::optional<BusMessage> &will);
    ~MqttConnection();
    Q_DISABLE_COPY_MOVE(MqttConnection)

    /// Begins to connect without waiting; `host` may be the resolved address of the configured one.
    /// Busy: the broker has too many callers at this instant, to be tried again in a millisecond.
    Opened open(const QByteArray &host);

    /// Sends what is left, waits for the receipts of what is to be kept, says goodbye to the broker and waits
    /// until it has ended the connection, and so has read everything. False when it does not: 100 ms without
    /// a sign of life are enough, and two seconds at the longest.
    bool leave();

    int descriptor() const;
    bool wantsToWrite() const;

    /// Each handles what there is to do now; false when the connection is lost.
    bool read();
    bool write();
    bool keepAlive();

    /// One packet for the whole list unless that is very long. False as for publish().
    bool subscribe(const QVector<QByteArray> &paths);

    /// False when the library refused, or found the connection lost: descriptor() is -1 then. error() tells
    /// why.
    bool publish(const BusMessage &message);

    bool isAccepted() const { return m_accepted; }
    bool isEverySubscriptionInPlace() const { return m_subscriptionsUnderWay.isEmpty(); }
    QVector<QByteArray> takeRefusedSubscriptions() { return std::exchange(m_refusedSubscriptions, {}); }
    std::deque<BusMessage> &received() { return m_received; }

    /// One for every message that was to be kept and that the broker has decided on: empty, or why it does
    /// not keep it. One more when it says at the greeting that it keeps none.
    QVector<QString> takeReceipts() { return std::exchange(m_receipts, {}); }

    /// How many messages have left this process since the last call, in the order of publishing.
    int takeSentCount() { return std::exchange(m_sentCount, 0); }

    /// Why the last call failed or the connection ended, in the broker's words if it gave any.
    QString error() const { return m_brokersReason.isEmpty() ? m_error : m_brokersReason; }

private:
    struct Callbacks;
    friend struct Callbacks;

    struct HandleDeleter
    {
        void operator()(mosquitto *handle) const;
    };

    using Handle = std::unique_ptr<mosquitto, HandleDeleter>;

    static Handle newHandle(const QByteArray &clientId, MqttConnection *self);
    bool isLocal() const { return m_address.transport == BusAddress::Transport::UnixSocket; }
    QString configure(const std::optional<BusMessage> &will);
    int configureTls();
    bool hasReachedBroker();
    void awaitReceipts(const QDeadlineTimer &deadline);
    bool subscribeAtOnce(const QVector<QByteArray> &paths);
    bool succeeded(int code);
    bool isAliveAfter(int code);

    const BusAddress m_address;
    Handle m_handle;

    bool m_accepted = false;
    bool m_refused = false;
    QHash<int, QVector<QByteArray>> m_subscriptionsUnderWay; // by packet number
    QVector<QByteArray> m_refusedSubscriptions;
    std::deque<BusMessage> m_received;
    QSet<int> m_keptUnderWay; // packet numbers of messages without a receipt
    QVector<QString> m_receipts;
    int m_sentCount = 0;
    QString m_error;
    QString m_tlsReason; // of the last error in the library's own words
    QString m_brokersReason;
};

} // namespace LocalCommunication
