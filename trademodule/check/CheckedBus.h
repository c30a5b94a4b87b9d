#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>

namespace TradeModule {

/// A message that was heard.
struct HeardMessage
{
    QByteArray channel;
    QByteArray topic;
    QByteArray payload;
};

/// The bus between the one who checks and the module that is checked.
class CheckedBus
{
public:
    using Hear = std::function<void(const HeardMessage &)>;

    CheckedBus() = default;
    CheckedBus(const CheckedBus &) = delete;
    CheckedBus &operator=(const CheckedBus &) = delete;
    virtual ~CheckedBus() = default;

    /// Hands every message over, during the calls below.
    virtual void setListener(const Hear &hear) = 0;

    /// Hears a channel's messages of a topic from now on.
    virtual void listen(const QByteArray &channel, const QByteArray &topic) = 0;

    /// Publishes; what is said after listen() is answered after it, too.
    virtual void say(const QByteArray &channel, const QByteArray &topic, const QByteArray &payload) = 0;

    /// Asks for an answer to this asker, as MQTT's request and response do. Empty without one in time.
    virtual QByteArray request(const QByteArray &topic, const QByteArray &payload) = 0;

    /// Lets messages come until the condition holds; false when it does not within the time.
    virtual bool hearUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience) = 0;
};

} // namespace TradeModule
