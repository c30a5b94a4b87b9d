#pragma once

#include "endpoint/EndPoint.h"

namespace Terminal {

/// What a message on the channel of everybody means to a combined overlay of the security `code`.
struct SharedNews
{
    enum Kind {
        None,
        Data,   ///< it has taken past trades, or was told of a change and has asked for today's
        Spoilt, ///< it has taken another overlay's question for an answer and lost its trades
    };
    Kind kind = None;
    QString code;
};

SharedNews readSharedNews(const QByteArray &topic, const QByteArray &payload);

/// Listens where combined overlays listen, since they do not tell when they have something new to draw.
class SharedChannel : public QObject
{
    Q_OBJECT

public:
    explicit SharedChannel(QObject *parent);

    /// Listens on the bus instance of `address`.
    void start(const QString &address);

Q_SIGNALS:
    /// Combined overlays of the security have news; its kind is not None.
    void heard(const SharedNews &news);

private:
    LocalCommunication::EndPoint m_endPoint;
};

} // namespace Terminal
