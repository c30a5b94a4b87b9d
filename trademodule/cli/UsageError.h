#pragma once

#include "trademodule/Error.h"

namespace TradeModule {

/// The command line cannot be understood.
class UsageError : public Error
{
public:
    using Error::Error;
};

} // namespace TradeModule
