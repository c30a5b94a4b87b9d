#pragma once

#include "trademodule/check/CheckedBus.h"

#include <QIODevice>

namespace TradeModule {

/// Writes down what is said on another bus, a JSON object per line: {"from":"check","channel":…,"payload":…},
/// from "check" or from "module". A payload that is no JSON object is a text.
class TranscriptBus : public CheckedBus
{
public:
    /// Both must outlive it.
    TranscriptBus(CheckedBus *bus, QIODevice *out) : m_bus(bus), m_out(out) {}

    void setListener(const Hear &hear) override;
    void listen(const QByteArray &channel, const QByteArray &topic) override
    {
        m_bus->listen(channel, topic);
    }
    void say(const QByteArray &channel, const QByteArray &topic, const QByteArray &payload) override;
    QByteArray request(const QByteArray &topic, const QByteArray &payload) override;
    bool hearUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience) override
    {
        return m_bus->hearUntil(condition, patience);
    }

private:
    void write(const char *from, const QByteArray &channel, const QByteArray &payload);

    CheckedBus *const m_bus;
    QIODevice *const m_out;
};

} // namespace TradeModule
