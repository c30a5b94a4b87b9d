#include "endpoint/MqttConnection_p.h"

#include "endpoint/Platform_p.h"

#include <QDeadlineTimer>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

/// On a Unix socket the end of the stream tells when the broker is gone; a keep-alive would only
/// throw out a terminal whose user interface is busy for long.
constexpr auto noKeepAlive = 0s;
constexpr auto tcpKeepAlive = 60s;

/// A broker that takes nothing for this long while this client wants to leave is not waited for.
constexpr auto longestStall = 100ms;
constexpr auto longestFarewell = 2s;

constexpr int atMostOnce = 0;
constexpr int atLeastOnce = 1; // the one that has a receipt
/// Brokers elsewhere limit the size of a packet.
constexpr int largestSubscription = 16 << 10;

constexpr int firstRefusal = 0x80; // of MQTT 5's reason codes

int qualityOf(const BusMessage &message)
{
    return message.isRetained ? atLeastOnce : atMostOnce;
}

/// Set up at first use, for the life of the process.
void initializeLibrary()
{
    struct Library
    {
        Library() { mosquitto_lib_init(); }
        ~Library() { mosquitto_lib_cleanup(); }
    };
    static const Library library;
}

struct PropertiesDeleter
{
    void operator()(mosquitto_property *list) const { mosquitto_property_free_all(&list); }
};
using Properties = std::unique_ptr<mosquitto_property, PropertiesDeleter>;

Properties propertiesOf(const BusMessage &message)
{
    mosquitto_property *list = nullptr;
    if (!message.responsePath.isEmpty()) {
        mosquitto_property_add_string(&list, MQTT_PROP_RESPONSE_TOPIC, message.responsePath.constData());
    }
    if (!message.correlation.isEmpty()) {
        mosquitto_property_add_binary(&list, MQTT_PROP_CORRELATION_DATA, message.correlation.constData(),
                                      static_cast<uint16_t>(message.correlation.size()));
    }
    return Properties(list);
}

QByteArray responsePathOf(const mosquitto_property *list)
{
    char *text = nullptr;
    mosquitto_property_read_string(list, MQTT_PROP_RESPONSE_TOPIC, &text, false);
    const std::unique_ptr<char, decltype(&free)> owner(text, &free);
    return QByteArray(text);
}

QByteArray correlationOf(const mosquitto_property *list)
{
    void *data = nullptr;
    uint16_t size = 0;
    mosquitto_property_read_binary(list, MQTT_PROP_CORRELATION_DATA, &data, &size, false);
    const std::unique_ptr<void, decltype(&free)> owner(data, &free);
    return QByteArray(static_cast<const char *>(data), size);
}

/// As the broker says at the greeting; one that says nothing of it does.
bool keepsMessages(const mosquitto_property *list)
{
    uint8_t isAvailable = 1;
    mosquitto_property_read_byte(list, MQTT_PROP_RETAIN_AVAILABLE, &isAvailable, false);
    return isAvailable != 0;
}

QString errorText(int code)
{
    QString text =
        code == MOSQ_ERR_ERRNO ? qt_error_string(errno) : QString::fromLocal8Bit(mosquitto_strerror(code));
    if (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text;
}

/// From "OpenSSL Error[0]: error:0A000086:SSL routines::certificate verify failed".
QString tlsReasonIn(const QString &line)
{
    QString reason = line.section(QLatin1Char(':'), -1).trimmed();
    if (reason.contains(QLatin1String("certificate verify failed"))) {
        reason += QStringLiteral(" (it is out of date, or the authority of ca_file has not signed it)");
    }
    return reason;
}

/// False when nothing happens for so long that it is not waited for any more.
bool isReady(int descriptor, short events)
{
    pollfd entry{descriptor, events, 0};
    return ::poll(&entry, 1, static_cast<int>(longestStall.count())) != 0;
}

/// Keeps a socket open that somebody else closes.
class SecondHold
{
public:
    explicit SecondHold(int descriptor) : m_descriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0)) {}
    ~SecondHold() { ::close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(SecondHold)

    /// Tells the other side that nothing more comes, and reads whatever that one still sends until it has
    /// ended the connection. False when it does not in time.
    bool awaitEnd(const QDeadlineTimer &deadline) const
    {
        ::shutdown(m_descriptor, SHUT_WR);
        char unwanted[4096];
        while (!deadline.hasExpired() && isReady(m_descriptor, POLLIN)) {
            const ssize_t count = ::recv(m_descriptor, unwanted, sizeof unwanted, MSG_DONTWAIT);
            if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) {
                return true;
            }
        }
        return false;
    }

private:
    const int m_descriptor;
};

/// What the library asks when a key has turned out to be protected; else it would ask at the console.
int knowNoPassphrase(char *, int, int, void *)
{
    return 0;
}

const char *orNull(const QByteArray &text)
{
    return text.isEmpty() ? nullptr : text.constData();
}

} // namespace

/// What the library calls. It holds its locks meanwhile, so nothing here calls it back.
struct MqttConnection::Callbacks
{
    static void connected(mosquitto *, void *self, int reason, int, const mosquitto_property *list)
    {
        auto *connection = static_cast<MqttConnection *>(self);
        connection->m_accepted = reason == 0;
        connection->m_refused = reason != 0;
        if (connection->m_refused) {
            connection->m_brokersReason = QStringLiteral("the broker refuses this client: ") +
                                          QLatin1String(mosquitto_reason_string(reason));
        }
        if (reason == MQTT_RC_RETAIN_NOT_SUPPORTED || !keepsMessages(list)) {
            connection->m_receipts.push_back(QStringLiteral("the broker keeps no messages"));
        }
    }

    static void disconnected(mosquitto *, void *self, int reason, const mosquitto_property *)
    {
        auto *connection = static_cast<MqttConnection *>(self);
        if (reason >= firstRefusal && connection->m_brokersReason.isEmpty()) {
            connection->m_brokersReason = QStringLiteral("the broker ended the connection: ") +
                                          QLatin1String(mosquitto_reason_string(reason));
        }
    }

    static void subscribed(mosquitto *, void *self, int packet, int count, const int *granted,
                           const mosquitto_property *)
    {
        auto *connection = static_cast<MqttConnection *>(self);
        const QVector<QByteArray> paths = connection->m_subscriptionsUnderWay.take(packet);
        for (int i = 0; i < std::min(count, paths.size()); ++i) {
            if (granted[i] >= firstRefusal) {
                connection->m_refusedSubscriptions.append(paths[i]);
            }
        }
    }

    static void received(mosquitto *, void *self, const mosquitto_message *message,
                         const mosquitto_property *list)
    {
        BusMessage copy;
        copy.path = QByteArray(message->topic);
        copy.payload = QByteArray(static_cast<const char *>(message->payload), message->payloadlen);
        if (list) {
            copy.responsePath = responsePathOf(list);
            copy.correlation = correlationOf(list);
        }
        static_cast<MqttConnection *>(self)->m_received.push_back(std::move(copy));
    }

    /// Of an error of TLS the library's result says no more than that there was one.
    static void logged(mosquitto *, void *self, int level, const char *text)
    {
        if (level == MOSQ_LOG_ERR) {
            static_cast<MqttConnection *>(self)->m_tlsReason = tlsReasonIn(QString::fromLocal8Bit(text));
        }
    }

    static void sent(mosquitto *, void *self, int packet, int reason, const mosquitto_property *)
    {
        auto *connection = static_cast<MqttConnection *>(self);
        ++connection->m_sentCount;
        if (connection->m_keptUnderWay.remove(packet)) {
            connection->m_receipts.push_back(reason < firstRefusal
                                                 ? QString()
                                                 : QStringLiteral("the broker does not keep the message: ") +
                                                       QLatin1String(mosquitto_reason_string(reason)));
        }
    }
};

void MqttConnection::HandleDeleter::operator()(mosquitto *handle) const
{
    mosquitto_destroy(handle);
}

/// The library makes a pair of sockets for each.
MqttConnection::Handle MqttConnection::newHandle(const QByteArray &clientId, MqttConnection *self)
{
    const Platform::SocketPairGuard kept;
    return Handle(mosquitto_new(clientId.constData(), true, self));
}

MqttConnection::MqttConnection(BusAddress address, const QByteArray &clientId,
                               const std::optional<BusMessage> &will)
    : m_address(std::move(address))
{
    initializeLibrary();
    m_handle = newHandle(clientId, this);
    mosquitto_connect_v5_callback_set(m_handle.get(), &Callbacks::connected);
    mosquitto_disconnect_v5_callback_set(m_handle.get(), &Callbacks::disconnected);
    mosquitto_subscribe_v5_callback_set(m_handle.get(), &Callbacks::subscribed);
    mosquitto_message_v5_callback_set(m_handle.get(), &Callbacks::received);
    mosquitto_publish_v5_callback_set(m_handle.get(), &Callbacks::sent);
    m_error = configure(will);
}

MqttConnection::~MqttConnection() = default;

/// Empty, or what the library does not take.
QString MqttConnection::configure(const std::optional<BusMessage> &will)
{
    mosquitto *handle = m_handle.get();
    mosquitto_int_option(handle, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
    mosquitto_int_option(handle, MOSQ_OPT_TCP_NODELAY, 1);
#if LIBMOSQUITTO_VERSION_NUMBER >= 2001000
    mosquitto_int_option(handle, MOSQ_OPT_DISABLE_SOCKETPAIR, 1); // saves two descriptors
#endif
    int code = MOSQ_ERR_SUCCESS;
    if (!m_address.username.isEmpty()) {
        code = mosquitto_username_pw_set(handle, m_address.username.constData(), orNull(m_address.password));
    }
    if (code == MOSQ_ERR_SUCCESS && m_address.transport == BusAddress::Transport::Tls) {
        code = configureTls();
    }
    if (code == MOSQ_ERR_SUCCESS && will) {
        code = mosquitto_will_set_v5(handle, will->path.constData(), will->payload.size(),
                                     will->payload.constData(), qualityOf(*will), will->isRetained, nullptr);
    }
    return code == MOSQ_ERR_SUCCESS ? QString() : errorText(code);
}

int MqttConnection::configureTls()
{
    mosquitto_log_callback_set(m_handle.get(), &Callbacks::logged); // costs a line of text for every packet
    const QByteArray ca = QFile::encodeName(m_address.caFile);
    const QByteArray cert = QFile::encodeName(m_address.certFile);
    const QByteArray key = QFile::encodeName(m_address.keyFile);
    return ca.isEmpty() ? mosquitto_int_option(m_handle.get(), MOSQ_OPT_TLS_USE_OS_CERTS, 1)
                        : mosquitto_tls_set(m_handle.get(), ca.constData(), nullptr, orNull(cert),
                                            orNull(key), &knowNoPassphrase);
}

MqttConnection::Opened MqttConnection::open(const QByteArray &host)
{
    if (!m_error.isEmpty()) {
        return Opened::Failed; // could not be configured
    }
    const int code = isLocal()
                         ? mosquitto_connect_bind_v5(m_handle.get(), host.constData(), 0,
                                                     static_cast<int>(noKeepAlive.count()), nullptr, nullptr)
                         : mosquitto_connect_async(m_handle.get(), host.constData(), m_address.port,
                                                   static_cast<int>(tcpKeepAlive.count()));
    if (isLocal() && code == MOSQ_ERR_ERRNO && Platform::isCrowded(errno)) {
        return Opened::Busy;
    }
    if (!succeeded(code)) {
        return Opened::Failed;
    }
    Platform::closeOnExec(descriptor());
    return Opened::UnderWay;
}

/// The library closes its socket with the goodbye, and the system then throws away what the broker has not
/// read yet if there is anything that this client has not read. So the socket is held open until the broker
/// ends it.
bool MqttConnection::leave()
{
    const QDeadlineTimer deadline(longestFarewell);
    awaitReceipts(deadline);
    const SecondHold socket(descriptor());
    mosquitto_disconnect(m_handle.get());
    while (wantsToWrite()) {
        if (deadline.hasExpired() || !isReady(descriptor(), POLLOUT)) {
            return false;
        }
        if (!succeeded(mosquitto_loop_write(m_handle.get(), 1))) {
            return true; // the broker is gone
        }
    }
    return socket.awaitEnd(deadline);
}

/// What the broker is to keep, a farewell above all, counts as sent with its receipt, and none is read after
/// the goodbye.
void MqttConnection::awaitReceipts(const QDeadlineTimer &deadline)
{
    bool isAlive = true;
    while (isAlive && !m_keptUnderWay.isEmpty() && !deadline.hasExpired()) {
        const auto events = static_cast<short>(wantsToWrite() ? POLLIN | POLLOUT : POLLIN);
        isAlive = isReady(descriptor(), events) && write() && read();
    }
}

int MqttConnection::descriptor() const
{
    return mosquitto_socket(m_handle.get());
}

bool MqttConnection::wantsToWrite() const
{
    return mosquitto_want_write(m_handle.get());
}

bool MqttConnection::read()
{
    return hasReachedBroker() && isAliveAfter(mosquitto_loop_read(m_handle.get(), 1)) && !m_refused;
}

bool MqttConnection::write()
{
    return hasReachedBroker() && isAliveAfter(mosquitto_loop_write(m_handle.get(), 1));
}

/// The MQTT library takes a TLS connection that was refused for one that is still on its way, and would
/// keep this process busy with it.
bool MqttConnection::hasReachedBroker()
{
    if (!m_accepted && !isLocal()) {
        m_error = Platform::connectionProblem(descriptor());
        return m_error.isEmpty();
    }
    return true;
}

bool MqttConnection::keepAlive()
{
    return isAliveAfter(mosquitto_loop_misc(m_handle.get()));
}

bool MqttConnection::subscribe(const QVector<QByteArray> &paths)
{
    QVector<QByteArray> packet;
    int bytes = 0;
    for (const QByteArray &path : paths) {
        if (bytes + path.size() > largestSubscription && !packet.isEmpty()) {
            if (!subscribeAtOnce(packet)) {
                return false;
            }
            packet.clear();
            bytes = 0;
        }
        packet.append(path);
        bytes += path.size();
    }
    return subscribeAtOnce(packet);
}

bool MqttConnection::subscribeAtOnce(const QVector<QByteArray> &paths)
{
    std::vector<char *> filters;
    for (const QByteArray &path : paths) {
        filters.push_back(const_cast<char *>(path.constData())); // the library's signature lacks a const
    }
    int packet = 0;
    const int code = mosquitto_subscribe_multiple(m_handle.get(), &packet, static_cast<int>(filters.size()),
                                                  filters.data(), atMostOnce, MQTT_SUB_OPT_NO_LOCAL, nullptr);
    if (!isAliveAfter(code)) {
        return false;
    }
    m_subscriptionsUnderWay.insert(packet, paths);
    return true;
}

bool MqttConnection::publish(const BusMessage &message)
{
    const Properties properties = propertiesOf(message);
    int packet = 0;
    const int code = mosquitto_publish_v5(m_handle.get(), &packet, message.path.constData(),
                                          message.payload.size(), message.payload.constData(),
                                          qualityOf(message), message.isRetained, properties.get());
    if (message.isRetained) {
        m_keptUnderWay.insert(packet);
    }
    return isAliveAfter(code);
}

/// The library does not always say so when it has found the connection lost while it was sending.
bool MqttConnection::isAliveAfter(int code)
{
    if (succeeded(code) && descriptor() < 0) {
        return succeeded(MOSQ_ERR_CONN_LOST);
    }
    return code == MOSQ_ERR_SUCCESS;
}

bool MqttConnection::succeeded(int code)
{
    if (code == MOSQ_ERR_SUCCESS) {
        return true;
    }
    m_error = errorText(code);
    if (!m_tlsReason.isEmpty()) {
        m_error += QStringLiteral(": ") + m_tlsReason;
    }
    if (code == MOSQ_ERR_CONN_LOST && isLocal() && !m_accepted) {
        m_error += QStringLiteral(" (a line ALL: ALL in /etc/hosts.deny has this effect too)");
    }
    return false;
}

} // namespace LocalCommunication
