// The bus client of another maker's terminal, declared as that maker would: the same operations, and members
// of its own in all of the room that a client may take. Nothing of our header is used here.
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <chrono>
#include <memory>

namespace LocalCommunication {

class Q_DECL_EXPORT EndPoint : public QObject
{
    Q_OBJECT

public:
    explicit EndPoint(QObject *parent);
    ~EndPoint() override;

    void connect(QString address);
    void disconnect();
    void subscribe(QByteArray channel, QList<QByteArray> topics);
    void subscribe(QByteArray channel, QByteArray topic);
    bool sendMessage(QByteArray channel, QByteArray topic, QByteArray payload);
    QByteArray request(QByteArray topic, QByteArray payload);
    void setRequestTimeout(std::chrono::milliseconds timeout);
    bool isConnected() const;

Q_SIGNALS:
    void messageReceived(QByteArray topic, QByteArray payload, QByteArray replyChannel);

private:
    class Private;
    const std::unique_ptr<Private> d;
    unsigned char m_reserved[248];
};

static_assert(sizeof(EndPoint) == sizeof(QObject) + 256, "the largest client that a terminal may bring");

} // namespace LocalCommunication
