#include "endpoint/Readiness.h"

#include "endpoint/EndPoint.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QTimer>
#include <QUuid>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

constexpr auto askInterval = 150ms;

// What every trading module knows; docs/bus-protocol.md is where the words are told.
const QByteArray everybody = QByteArrayLiteral("Global");
const QByteArray questions = QByteArrayLiteral("TradeQuery");
const QByteArray presence = QByteArrayLiteral("TradePresence");

/// The cost of a security that need not be held: any answer will do.
QByteArray harmlessQuestion(const QByteArray &channel)
{
    return R"({"cmd":"HolderCostPrice","market":"SH","screenId":")" + channel + R"(","stkcode":"000001"})";
}

bool isOnline(const QByteArray &word)
{
    return QJsonDocument::fromJson(word).object().value(QLatin1String("online")).toBool();
}

} // namespace

class Q_DECL_HIDDEN Readiness::Private
{
public:
    explicit Private(Readiness *readiness);

    void take(const QByteArray &topic, const QByteArray &payload);
    void setReady();

    Readiness *const q;
    const QByteArray channel = "readiness-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
    EndPoint endPoint{nullptr};
    QTimer asking; // runs until it is ready
    QTimer limit;
};

Readiness::Private::Private(Readiness *readiness) : q(readiness)
{
    asking.setInterval(askInterval);
    limit.setSingleShot(true);
    endPoint.subscribe(channel, questions);
    endPoint.subscribe(everybody, presence);
    QObject::connect(&asking, &QTimer::timeout, q, &Readiness::ask);
    QObject::connect(&limit, &QTimer::timeout, q, &Readiness::timeIsUp);
    QObject::connect(&endPoint, &EndPoint::ready, q, [this] {
        if (asking.isActive()) {
            q->ask();
        }
        Q_EMIT q->joined();
    });
    QObject::connect(&endPoint, &EndPoint::messageReceived, q,
                     [this](const QByteArray &topic, const QByteArray &payload) { take(topic, payload); });
}

/// The receivers come last: they may end this object.
void Readiness::Private::take(const QByteArray &topic, const QByteArray &payload)
{
    const QPointer<Readiness> alive(q);
    if (topic == presence) {
        const bool isThere = isOnline(payload);
        Q_EMIT q->announced(payload);
        if (alive && isThere) {
            setReady();
        }
        return;
    }
    Q_EMIT q->answered(payload);
    if (alive) {
        setReady();
    }
}

void Readiness::Private::setReady()
{
    if (asking.isActive()) {
        asking.stop();
        limit.stop();
        Q_EMIT q->ready();
    }
}

Readiness::Readiness(QObject *parent) : QObject(parent), d(std::make_unique<Private>(this)) {}

Readiness::~Readiness() = default;

void Readiness::start(const QString &address, std::optional<std::chrono::milliseconds> limit)
{
    stop();
    d->asking.start();
    if (limit) {
        d->limit.start(*limit);
    }
    d->endPoint.connect(address);
}

void Readiness::stop()
{
    d->asking.stop();
    d->limit.stop();
    d->endPoint.disconnect();
}

bool Readiness::isJoined() const
{
    return d->endPoint.isConnected();
}

void Readiness::ask()
{
    if (isJoined()) { // else there is nobody yet, and a warning for every try
        d->endPoint.sendMessage(everybody, questions, harmlessQuestion(d->channel));
    }
}

} // namespace LocalCommunication
