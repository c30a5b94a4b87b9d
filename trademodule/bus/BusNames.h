#pragma once

#include <QByteArray>

namespace TradeModule {

/// The channel of all questions and of notifications to everybody.
inline QByteArray globalChannel()
{
    return QByteArrayLiteral("Global");
}

/// The channel and the topic of the market's quotes.
inline QByteArray marketChannel()
{
    return QByteArrayLiteral("Market");
}
inline QByteArray quoteTopic()
{
    return QByteArrayLiteral("Quote");
}

/// The command that places an order: this module's own, charts only cancel.
constexpr const char *EntrustPlace = "EntrustPlace";

} // namespace TradeModule
