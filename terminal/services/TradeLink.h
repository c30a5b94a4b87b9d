#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/services/Gate.h"

#include <QTimer>

namespace Terminal {

/// Watches whether a trading module answers on the bus: it asks a harmless question until it is
/// answered, once at the start and again whenever somebody wants to know.
class TradeLink : public QObject
{
    Q_OBJECT

public:
    explicit TradeLink(QObject *parent);

    /// Starts to ask on the bus instance of `address`.
    void start(const QString &address);

    /// True when it has answered once.
    bool isAnswering() const { return m_answering; }

    /// A gate that opens when a trading module has answered a question that is asked then. What the bus
    /// brought before that answer has been handled. The link must outlive the gate.
    Gate answerGate();

Q_SIGNALS:
    /// The first answer came.
    void answering();

    /// An answer came.
    void answered();

private:
    void ask();
    void takeAnswer();

    LocalCommunication::EndPoint m_endPoint;
    QByteArray m_channel;
    QTimer m_timer;
    bool m_answering = false;
};

} // namespace Terminal
