#pragma once

#include "endpoint/BusAddress.h"

#include <QByteArray>
#include <QHash>
#include <QVector>

#include <deque>
#include <memory>
#include <utility>

struct mosquitto;

namespace LocalCommunication {

/// A message as it came off the wire.
struct BusMessage
{
    QByteArray path; ///< encoded topic path
    QByteArray payload;
    QByteArray responsePath; ///< where its sender wants the answer; empty when it wants none
    QByteArray correlation;  ///< what the answer has to carry along
};

/// One connection to a broker, from opening to loss; for the next one make a new object. Owns the
/// handle of the MQTT library, whose header only the source file of this class includes.
///
/// The library's callbacks do no more than write down what happened; it is picked up from here after
/// every call, when the library can be called again.
class MqttConnection
{
public:
    enum class Opened { UnderWay, Busy, Failed };

    MqttConnection(BusAddress address, const QByteArray &clientId);
    ~MqttConnection();
    Q_DISABLE_COPY_MOVE(MqttConnection)

    /// Begins to connect without waiting; `host` may be the resolved address of the configured one.
    /// Busy: the broker has too many callers at this instant, to be tried again in a millisecond.
    Opened open(const QByteArray &host);

    /// Goodbye to the broker.
    void close();

    int descriptor() const;
    bool wantsToWrite() const;

    /// Each handles what there is to do now; false when the connection is lost.
    bool read();
    bool write();
    bool keepAlive();

    /// One packet for the whole list.
    bool subscribe(const QVector<QByteArray> &paths);

    /// False when the library refused; error() tells why. `responsePath` and `correlation` may be empty.
    bool publish(const QByteArray &path, const QByteArray &payload, const QByteArray &responsePath,
                 const QByteArray &correlation);

    bool isAccepted() const { return m_accepted; }
    bool isEverySubscriptionInPlace() const { return m_subscriptionsUnderWay.isEmpty(); }
    QVector<QByteArray> takeRefusedSubscriptions() { return std::exchange(m_refusedSubscriptions, {}); }
    std::deque<BusMessage> &received() { return m_received; }

    /// What was published but has not left this process yet.
    qint64 unsentBytes() const { return m_unsentBytes; }
    int unsentMessages() const { return static_cast<int>(m_unsent.size()); }

    /// Why the last call failed or the connection ended, in the broker's words if it gave any.
    QString error() const { return m_brokersReason.isEmpty() ? m_error : m_brokersReason; }

private:
    struct Callbacks;
    friend struct Callbacks;

    struct HandleDeleter
    {
        void operator()(mosquitto *handle) const;
    };

    QString configure();
    bool succeeded(int code);

    const BusAddress m_address;
    std::unique_ptr<mosquitto, HandleDeleter> m_handle;

    bool m_accepted = false;
    bool m_refused = false;
    QHash<int, QVector<QByteArray>> m_subscriptionsUnderWay; // by packet number
    QVector<QByteArray> m_refusedSubscriptions;
    std::deque<BusMessage> m_received;
    std::deque<qint64> m_unsent; // sizes, in the order in which they leave
    qint64 m_unsentBytes = 0;
    QString m_error;
    QString m_brokersReason;
};

} // namespace LocalCommunication
