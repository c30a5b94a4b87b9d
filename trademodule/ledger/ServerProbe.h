#pragma once

#include "trademodule/ledger/PostgreSqlAddress.h"

#include <QLocalSocket>
#include <QTcpSocket>
#include <QTimer>

namespace TradeModule {

/// Asks whether a PostgreSQL server answers, on the event loop: to find the way back to one that is away
/// waits for nobody, however silent it is.
class ServerProbe
{
public:
    explicit ServerProbe(PostgreSqlAddress address);
    Q_DISABLE_COPY_MOVE(ServerProbe)

    /// True once, when the server has answered since it was asked. Otherwise it is asked again, unless a
    /// question of the last seconds is still open.
    bool hasAnswered();

private:
    void ask();
    void greet(QIODevice *connection);
    void end(bool hasAnswered);

    const PostgreSqlAddress m_address;
    QTcpSocket m_tcp;
    QLocalSocket m_local;
    QTimer m_patience; ///< runs while the question is open
    bool m_hasAnswered = false;
};

} // namespace TradeModule
