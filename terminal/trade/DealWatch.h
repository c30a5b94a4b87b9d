#pragma once

#include "terminal/trade/TradeRecords.h"

#include <QHash>
#include <QObject>

namespace Terminal {

/// Notices that orders of the account are dealt, whichever chart is shown. It knows orders from lists of
/// them, and what became of one from the word of the trading module: of orders that it never knew as working
/// it tells nothing.
class DealWatch : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Orders as they are known now; those that may still be dealt are watched from now on.
    void take(const OrderRecords &orders);
    /// The trading module tells that an order has this status now.
    void hear(const QString &number, const QString &status);

Q_SIGNALS:
    /// Of `order` something was dealt; all that was left when its status says so.
    void dealt(const OrderRecord &order);

private:
    QHash<QString, OrderRecord> m_watched; ///< by number
};

} // namespace Terminal
