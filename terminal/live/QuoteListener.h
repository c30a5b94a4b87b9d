#pragma once

#include "endpoint/EndPoint.h"

#include <QObject>

namespace Terminal {

class Today;

/// Hears the quotes of the market on the bus, and tells today of them. On a client of its own, so that nobody
/// else in this program has to look at each of them.
class QuoteListener : public QObject
{
    Q_OBJECT

public:
    /// `today` must outlive this object.
    explicit QuoteListener(Today *today);

    /// Joins the bus. To be called once.
    void start(const QString &busAddress);

    bool isJoined() const { return m_endPoint.isConnected(); }

private:
    void take(const QByteArray &payload);

    Today *m_today;
    LocalCommunication::EndPoint m_endPoint{nullptr};
};

} // namespace Terminal
