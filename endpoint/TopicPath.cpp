#include "endpoint/TopicPath_p.h"

namespace LocalCommunication {

namespace {

/// MQTT counts the bytes of a topic in 16 bits.
constexpr int longestPath = 65535;

} // namespace

QByteArray encodedLevel(const QByteArray &name)
{
    return name.toPercentEncoding();
}

QByteArray topicPath(const QByteArray &prefix, const TopicName &name)
{
    if (name.channel.isEmpty() || name.topic.isEmpty()) {
        return QByteArray();
    }
    if (name.channel.size() > longestPath || name.topic.size() > longestPath) {
        return QByteArray(); // before the encoding makes them three times as long
    }
    const QByteArray path = prefix + encodedLevel(name.channel) + '/' + encodedLevel(name.topic);
    return path.size() <= longestPath ? path : QByteArray();
}

} // namespace LocalCommunication
