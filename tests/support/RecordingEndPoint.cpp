// A bus client without a bus: the class of endpoint/EndPoint.h, keeping a record of what it is told. It uses
// all of the memory that a client may have, as a terminal's own may do.
#include "endpoint/EndPoint.h"
#include "tests/support/RecordedBus.h"

#include <QPointer>

#include <algorithm>
#include <iterator>

namespace {

QList<QPointer<LocalCommunication::EndPoint>> &livingEndPoints()
{
    static QList<QPointer<LocalCommunication::EndPoint>> endPoints;
    return endPoints;
}

constexpr unsigned char ownByte = 0xA5;

void record(const QString &operation)
{
    RecordedBus::instance().operations.append(operation);
}

} // namespace

RecordedBus &RecordedBus::instance()
{
    static RecordedBus bus;
    return bus;
}

void RecordedBus::reset()
{
    *this = RecordedBus();
}

int RecordedBus::endPointCount() const
{
    return livingEndPoints().size();
}

void RecordedBus::deliver(const QByteArray &topic, const QByteArray &payload)
{
    const auto receivers = livingEndPoints();
    for (const auto &endPoint : receivers) {
        if (endPoint) {
            Q_EMIT endPoint->messageReceived(topic, payload, QByteArray());
        }
    }
}

namespace LocalCommunication {

/// Records, before the next operation, that somebody has begun to listen.
class EndPoint::Private
{
public:
    void noteListeners(int count)
    {
        if (count > 0 && !m_isListenedTo) {
            m_isListenedTo = true;
            record(QStringLiteral("listened to"));
        }
    }

private:
    bool m_isListenedTo = false;
};

EndPoint::EndPoint(QObject *parent) : QObject(parent), d(std::make_unique<Private>())
{
    std::fill(std::begin(m_reserved), std::end(m_reserved), ownByte);
    livingEndPoints().append(this);
    record(parent == nullptr ? QStringLiteral("create") : QStringLiteral("create with parent"));
}

EndPoint::~EndPoint()
{
    livingEndPoints().removeAll(this);
    const bool isIntact = std::all_of(std::begin(m_reserved), std::end(m_reserved),
                                      [](unsigned char byte) { return byte == ownByte; });
    if (!isIntact) {
        qFatal("somebody has written into the bus client");
    }
    record(QStringLiteral("destroy"));
}

void EndPoint::connect(QString address)
{
    d->noteListeners(receivers(SIGNAL(messageReceived(QByteArray, QByteArray, QByteArray))));
    record(QStringLiteral("connect ") + address);
}

void EndPoint::disconnect()
{
    record(QStringLiteral("disconnect"));
    if (RecordedBus::instance().duringDisconnect) {
        RecordedBus::instance().duringDisconnect();
    }
}

void EndPoint::subscribe(QByteArray channel, QList<QByteArray> topics)
{
    d->noteListeners(receivers(SIGNAL(messageReceived(QByteArray, QByteArray, QByteArray))));
    record(QStringLiteral("subscribe list ") +
           QString::fromUtf8(channel + ' ' + QByteArrayList(topics).join(',')));
}

void EndPoint::subscribe(QByteArray channel, QByteArray topic)
{
    d->noteListeners(receivers(SIGNAL(messageReceived(QByteArray, QByteArray, QByteArray))));
    record(QStringLiteral("subscribe ") + QString::fromUtf8(channel + ' ' + topic));
}

bool EndPoint::sendMessage(QByteArray channel, QByteArray topic, QByteArray payload)
{
    RecordedBus &bus = RecordedBus::instance();
    if (bus.takesMessages) {
        bus.sent.push_back({channel, topic, payload});
    }
    if (bus.duringSend) {
        bus.duringSend();
    }
    return bus.takesMessages;
}

QByteArray EndPoint::request(QByteArray topic, QByteArray payload)
{
    RecordedBus &bus = RecordedBus::instance();
    bus.requests.push_back({"Global", topic, payload});
    return bus.answerRequest ? bus.answerRequest(bus.requests.back()) : QByteArray();
}

void EndPoint::setRequestTimeout(std::chrono::milliseconds) {}

bool EndPoint::isConnected() const
{
    return RecordedBus::instance().takesMessages;
}

} // namespace LocalCommunication
