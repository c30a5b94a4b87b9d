#pragma once

#include "endpoint/EndPoint.h"

#include <QTimer>

namespace Terminal {

/// Watches whether a trading module answers on the bus: it asks a harmless question until it is
/// answered.
class TradeLink : public QObject
{
    Q_OBJECT

public:
    explicit TradeLink(QObject *parent);

    /// Starts to ask on the bus instance of `address`.
    void start(const QString &address);

    bool isAnswering() const { return m_answering; }

Q_SIGNALS:
    /// The first answer came.
    void answering();

private:
    void ask();
    void takeAnswer();

    LocalCommunication::EndPoint m_endPoint;
    QByteArray m_channel;
    QTimer m_timer;
    bool m_answering = false;
};

} // namespace Terminal
