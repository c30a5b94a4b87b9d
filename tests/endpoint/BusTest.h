#pragma once

#include "endpoint/EndPoint.h"
#include "tests/support/TestBroker.h"

#include <gmock/gmock.h>

#include <QByteArray>
#include <QVector>

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

    bool waitForMessages(int count, int milliseconds = 20000)
    {
        return waitUntil([&] { return messages.size() >= count; }, milliseconds);
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

/// Answers every question with "answer to <payload>".
class Responder : public RecordingEndPoint
{
public:
    explicit Responder(const QByteArray &topic) : m_topic(topic)
    {
        QObject::connect(
            this, &EndPoint::messageReceived, this,
            [this](const QByteArray &asked, const QByteArray &payload, const QByteArray &replyChannel) {
                sendMessage(replyChannel, asked, "answer to " + payload);
            });
        subscribe("Global", m_topic);
    }

private:
    const QByteArray m_topic;
};
