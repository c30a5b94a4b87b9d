#pragma once

#include "endpoint/EndPoint.h"
#include "tests/support/BusThread.h"
#include "tests/support/TestBroker.h"

#include <gmock/gmock.h>

#include <QByteArray>
#include <QVector>

#include <memory>

/// An endpoint that writes down what reaches it.
class RecordingEndPoint : public LocalCommunication::EndPoint
{
public:
    struct Message
    {
        QByteArray topic;
        QByteArray payload;
        QByteArray replyChannel;
    };

    RecordingEndPoint() : EndPoint(nullptr)
    {
        QObject::connect(
            this, &EndPoint::messageReceived, this,
            [this](const QByteArray &topic, const QByteArray &payload, const QByteArray &replyChannel) {
                messages.append({topic, payload, replyChannel});
            });
        QObject::connect(this, &EndPoint::ready, this, [this] { ++readyCount; });
    }

    /// Joins and waits until the bus has taken every subscription made so far.
    bool join(const QString &address)
    {
        const int before = readyCount;
        connect(address);
        return waitUntil([&] { return readyCount > before; });
    }

    /// Subscribes and waits until others can rely on it.
    bool listen(const QByteArray &channel, const QByteArray &topic)
    {
        const int before = readyCount;
        subscribe(channel, topic);
        return waitUntil([&] { return readyCount > before; });
    }

    bool waitForMessages(int count, std::chrono::milliseconds patience = std::chrono::seconds(20))
    {
        return waitUntil([&] { return messages.size() >= count; }, patience);
    }

    QList<QByteArray> payloads() const
    {
        QList<QByteArray> all;
        for (const Message &message : messages) {
            all.append(message.payload);
        }
        return all;
    }

    QVector<Message> messages;
    int readyCount = 0;
};

/// Another program on the bus: answers every question on Global/`topic` with "answer to <payload>". Before
/// an answer it publishes `before` messages on c/t, and after it `after` more, numbered from 0.
class BackgroundResponder
{
public:
    BackgroundResponder(const QString &address, const QByteArray &topic, int before = 0, int after = 0)
        : m_thread(address, topic,
                   [this, topic, before, after](LocalCommunication::EndPoint &own, const QByteArray &payload,
                                                const QByteArray &replyChannel) {
                       publish(own, before);
                       own.sendMessage(replyChannel, topic, "answer to " + payload);
                       publish(own, after);
                   })
    {
    }

private:
    void publish(LocalCommunication::EndPoint &own, int count)
    {
        for (int i = 0; i < count; ++i) {
            own.sendMessage("c", "t", QByteArray::number(m_number++));
        }
    }

    int m_number = 0;
    BusThread m_thread;
};
