#include "endpoint/Announcement.h"

#include "endpoint/BusAddress.h"
#include "endpoint/Logging_p.h"
#include "endpoint/MqttSession_p.h"
#include "endpoint/TopicPath_p.h"

namespace LocalCommunication {

class Q_DECL_HIDDEN Announcement::Private
{
public:
    explicit Private(Announcement *announcement) : q(announcement), session(announcement) {}

    void join();
    void sayWord();
    void handleReceipt(const QString &problem);
    BusMessage message(const QByteArray &payload) const;

    Announcement *const q;
    BusAddress address;
    Notice notice;
    bool isKept = true; // as far as is known
    MqttSession session;
};

Announcement::Announcement(QObject *parent) : QObject(parent), d(std::make_unique<Private>(this))
{
    connect(&d->session, &MqttSession::ready, this, [this] { d->sayWord(); });
    connect(&d->session, &MqttSession::receiptCame, this,
            [this](const QString &problem) { d->handleReceipt(problem); });
}

Announcement::~Announcement()
{
    stop();
}

void Announcement::start(const QString &address, const Notice &notice)
{
    stop();
    d->address = BusAddress::ofDirectory(address);
    if (!d->address.isValid()) {
        qCWarning(lcBus, "%s; nothing is announced", qUtf8Printable(d->address.problem));
        return;
    }
    d->notice = notice;
    d->isKept = true;
    d->join();
}

void Announcement::say(const QByteArray &word)
{
    d->notice.word = word;
    if (d->session.isJoined()) {
        d->sayWord();
    }
}

void Announcement::stop()
{
    if (d->session.isJoined()) {
        d->session.publish(d->message(d->notice.farewell));
    }
    d->session.close();
}

void Announcement::Private::join()
{
    session.open(address, {}, message(notice.farewell));
}

void Announcement::Private::sayWord()
{
    session.publish(message(notice.word));
}

BusMessage Announcement::Private::message(const QByteArray &payload) const
{
    BusMessage message{topicPath(address.prefix, {notice.channel, notice.topic}), payload, {}, {}};
    message.isRetained = isKept;
    return message;
}

/// A broker that keeps nothing does not even take a client whose farewell it is to keep.
void Announcement::Private::handleReceipt(const QString &problem)
{
    if (problem.isEmpty()) {
        Q_EMIT q->kept();
    } else if (isKept) {
        isKept = false;
        qCWarning(lcBus, "%s: %s; who joins later does not hear '%s'", qUtf8Printable(address.toString()),
                  qUtf8Printable(problem), notice.topic.constData());
        join();
        Q_EMIT q->notKept(problem);
    }
}

} // namespace LocalCommunication
