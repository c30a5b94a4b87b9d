#pragma once

#include <QString>

namespace TradeModule {

/// A line of a statement that is no trade.
struct LeftOut
{
    QString kind; ///< such as "dividends", for the person who imports
};

} // namespace TradeModule
