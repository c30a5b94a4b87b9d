#pragma once

#include "endpoint/EndPoint.h"
#include "trademodule/check/CheckedBus.h"

#include <QObject>

namespace TradeModule {

/// The bus of a terminal's directory.
class EndPointBus : public QObject, public CheckedBus
{
    Q_OBJECT

public:
    /// Questions to request() are waited for so long.
    explicit EndPointBus(std::chrono::milliseconds patience);

    /// False when the bus is not there within the patience.
    bool join(const QString &directory);

    void setListener(const Hear &hear) override { m_hear = hear; }
    void listen(const QByteArray &channel, const QByteArray &topic) override;
    void say(const QByteArray &channel, const QByteArray &topic, const QByteArray &payload) override;
    QByteArray request(const QByteArray &topic, const QByteArray &payload) override;
    bool hearUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience) override;

private:
    const std::chrono::milliseconds m_patience;
    Hear m_hear;
    LocalCommunication::EndPoint m_endPoint{nullptr};
};

} // namespace TradeModule
