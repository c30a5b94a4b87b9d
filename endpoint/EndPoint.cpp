#include "endpoint/EndPoint.h"

#include "endpoint/BusAddress.h"
#include "endpoint/Logging_p.h"
#include "endpoint/MqttSession_p.h"
#include "endpoint/OwedAnswers_p.h"
#include "endpoint/TopicPath_p.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <chrono>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

constexpr auto defaultRequestTimeout = 3s;

} // namespace

class Q_DECL_HIDDEN EndPoint::Private
{
public:
    explicit Private(EndPoint *endPoint) : q(endPoint), session(endPoint) {}

    QVector<QByteArray> route(const QVector<TopicName> &names, const QByteArray &prefix);
    void deliver(const BusMessage &message);
    QByteArray replyChannelOf(const BusMessage &message, const TopicName &name);
    bool answer(const QByteArray &channel, const QByteArray &payload);

    EndPoint *const q;
    QString address;
    std::chrono::milliseconds requestTimeout = defaultRequestTimeout;
    QVector<TopicName> subscriptions;
    QHash<QByteArray, TopicName> namesByPath; // of the subscriptions, while there is an address
    OwedAnswers owedAnswers;
    MqttSession session;
};

EndPoint::EndPoint(QObject *parent) : QObject(parent), d(std::make_unique<Private>(this))
{
    QObject::connect(&d->session, &MqttSession::messageArrived, this,
                     [this](const BusMessage &message) { d->deliver(message); });
    QObject::connect(&d->session, &MqttSession::ready, this, &EndPoint::ready);
}

EndPoint::~EndPoint() = default;

void EndPoint::connect(QString address)
{
    if (d->session.isOpen() && address == d->address) {
        return;
    }
    disconnect();
    const BusAddress bus = BusAddress::ofDirectory(address);
    if (!bus.isValid()) {
        qCWarning(lcBus, "%s; there is no connection", qUtf8Printable(bus.problem));
        return;
    }
    if (bus.isPlainOverNetwork()) {
        qCWarning(lcBus, "%s is not encrypted: everybody on the way can read and alter what is said",
                  qUtf8Printable(bus.toString()));
    }
    d->address = address;
    d->session.open(bus, d->route(d->subscriptions, bus.prefix));
}

void EndPoint::disconnect()
{
    d->session.close();
    d->address.clear();
    d->namesByPath.clear();
}

void EndPoint::subscribe(QByteArray channel, QList<QByteArray> topics)
{
    QVector<TopicName> added;
    for (const QByteArray &topic : qAsConst(topics)) {
        const TopicName name{channel, topic};
        if (topicPath(QByteArray(), name).isEmpty()) {
            qCWarning(lcBus, "A subscription to topic '%s' on channel '%s' is refused: empty or too long",
                      topic.constData(), channel.constData());
        } else if (!d->subscriptions.contains(name) && !added.contains(name)) {
            added.append(name);
        }
    }
    d->subscriptions += added;
    if (d->session.isOpen() && !added.isEmpty()) {
        d->session.subscribe(d->route(added, d->session.prefix()));
    }
}

void EndPoint::subscribe(QByteArray channel, QByteArray topic)
{
    subscribe(channel, QList<QByteArray>{topic});
}

bool EndPoint::sendMessage(QByteArray channel, QByteArray topic, QByteArray payload)
{
    if (d->owedAnswers.isOwn(channel)) {
        return d->answer(channel, payload);
    }
    return d->session.publish({topicPath(d->session.prefix(), {channel, topic}), payload, {}, {}});
}

QByteArray EndPoint::request(QByteArray topic, QByteArray payload)
{
    return d->session.request(topicPath(d->session.prefix(), {QByteArrayLiteral("Global"), topic}), payload,
                              d->requestTimeout);
}

void EndPoint::setRequestTimeout(std::chrono::milliseconds timeout)
{
    d->requestTimeout = std::max(0ms, timeout);
}

bool EndPoint::isConnected() const
{
    return d->session.isJoined();
}

/// The paths to subscribe to; what arrives on them is known by its names from now on.
QVector<QByteArray> EndPoint::Private::route(const QVector<TopicName> &names, const QByteArray &prefix)
{
    QVector<QByteArray> paths;
    for (const TopicName &name : names) {
        const QByteArray path = topicPath(prefix, name);
        if (path.isEmpty()) {
            qCWarning(lcBus, "Topic '%s' on channel '%s' is too long for this bus", name.topic.constData(),
                      name.channel.constData());
            continue;
        }
        namesByPath.insert(path, name);
        paths.append(path);
    }
    return paths;
}

/// The last thing that happens: the receiver may ask, leave the bus, run an event loop of its own or destroy
/// the endpoint.
void EndPoint::Private::deliver(const BusMessage &message)
{
    const auto name = namesByPath.constFind(message.path);
    if (name != namesByPath.constEnd()) {
        Q_EMIT q->messageReceived(name->topic, message.payload, replyChannelOf(message, *name));
    }
}

QByteArray EndPoint::Private::replyChannelOf(const BusMessage &message, const TopicName &name)
{
    if (message.responsePath.isEmpty()) {
        return name.channel;
    }
    return owedAnswers.add({message.responsePath, message.correlation});
}

/// What the bus has no room for is still owed: a shorter answer can be given in its place.
bool EndPoint::Private::answer(const QByteArray &channel, const QByteArray &payload)
{
    const std::optional<OwedAnswers::Recipient> recipient = owedAnswers.find(channel);
    if (!recipient) {
        session.warnNotSent(channel, QStringLiteral("the question was answered already or is too old"));
        return false;
    }
    const bool isSent = session.publish({recipient->path, payload, {}, recipient->correlation});
    if (isSent) {
        owedAnswers.noteAnswered(channel);
    }
    return isSent;
}

} // namespace LocalCommunication
