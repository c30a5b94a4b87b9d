#include "trademodule/ledger/ServingTable.h"

#include "trademodule/ledger/Transaction.h"

#include <QDateTime>

namespace TradeModule {

LedgerServer ServingTable::server()
{
    Rows row =
        m_database->run(QStringLiteral("SELECT host, process, process_start, since, fence FROM serving"));
    if (!row.next()) {
        return {};
    }
    return {{row.value(0).toString(), row.value(1).toLongLong(), row.value(2).toString()},
            row.value(3).toString(),
            row.value(4).toLongLong()};
}

qint64 ServingTable::fence()
{
    Rows row = m_database->run(QStringLiteral("SELECT fence FROM serving"));
    return row.next() ? row.value(0).toLongLong() : 0;
}

LedgerServer ServingTable::enter()
{
    const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    if (m_database->isReadOnly()) {
        return {ProcessIdentity::own(), now, fence()};
    }
    Transaction transaction(m_database);
    const LedgerServer own{ProcessIdentity::own(), now, fence() + 1};
    m_database->run(
        QStringLiteral("UPDATE serving SET fence = ?, host = ?, process = ?, process_start = ?, since = ?"),
        {own.fence, own.process.host, own.process.number, own.process.start, own.since});
    transaction.commit();
    return own;
}

} // namespace TradeModule
