#include "endpoint/TopicPath_p.h"

#include <QStringBuilder>

#include <algorithm>

namespace LocalCommunication {

namespace {

/// MQTT counts the bytes of a topic in 16 bits.
constexpr int longestPath = 65535;

bool isPlain(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '-' || byte == '.' || byte == '_' || byte == '~';
}

} // namespace

QByteArray encodedLevel(const QByteArray &name)
{
    return std::all_of(name.begin(), name.end(), isPlain) ? name : name.toPercentEncoding(); // most are
}

QByteArray topicPath(const QByteArray &prefix, const TopicName &name)
{
    if (name.channel.isEmpty() || name.topic.isEmpty()) {
        return QByteArray();
    }
    if (name.channel.size() > longestPath || name.topic.size() > longestPath) {
        return QByteArray(); // before the encoding makes them three times as long
    }
    const QByteArray path = prefix % encodedLevel(name.channel) % '/' % encodedLevel(name.topic);
    return path.size() <= longestPath ? path : QByteArray();
}

} // namespace LocalCommunication
