#pragma once

#include <QByteArray>

namespace LocalCommunication {

/// A place on the bus: a channel, and a topic on it. Any bytes, but none of the two empty.
struct TopicName
{
    QByteArray channel;
    QByteArray topic;

    bool operator==(const TopicName &other) const { return channel == other.channel && topic == other.topic; }
};

/// One level of a path: every byte but A–Z a–z 0–9 - . _ ~ as %XX, so that no name can reach into
/// another level, hold a wildcard or begin with the '$' that brokers keep for themselves.
QByteArray encodedLevel(const QByteArray &name);

/// The path on the wire, `<prefix><channel>/<topic>`. Empty when a name is empty or the path is
/// longer than MQTT can carry (65,535 bytes). `prefix` is encoded and ends in '/', or is empty.
QByteArray topicPath(const QByteArray &prefix, const TopicName &name);

} // namespace LocalCommunication
