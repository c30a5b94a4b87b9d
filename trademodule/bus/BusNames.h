#pragma once

#include <QByteArray>

namespace TradeModule {

/// The channel of all questions and of notifications to everybody.
inline QByteArray globalChannel()
{
    return QByteArrayLiteral("Global");
}

} // namespace TradeModule
