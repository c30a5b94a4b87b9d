#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <vector>

/// What the overlays under test did on the bus, and the voice of everybody else on it.
///
/// It stands behind the recording bus client, which is linked in the place of the real one. There is
/// one for the process; reset() it before a test.
class Q_DECL_EXPORT RecordedBus
{
public:
    struct Message
    {
        QByteArray channel;
        QByteArray topic;
        QByteArray payload;
    };

    static RecordedBus &instance();
    void reset();

    /// Every operation of every end point in order, for example "subscribe Global TradeNotify".
    QStringList operations;
    std::vector<Message> sent;     ///< messages that the bus took
    std::vector<Message> requests; ///< blocking requests; their channel is "Global"

    bool takesMessages = true; ///< what sendMessage() answers
    /// Answers the blocking requests; none: no answer ever comes.
    std::function<QByteArray(const Message &)> answerRequest;
    /// Called inside sendMessage(), for a host that acts at that moment.
    std::function<void()> duringSend;
    /// Called inside disconnect(), for messages that still come at that moment.
    std::function<void()> duringDisconnect;

    /// Number of end points alive.
    int endPointCount() const;

    /// Hands a message to every end point; an end point may be destroyed by it.
    void deliver(const QByteArray &topic, const QByteArray &payload);
};
