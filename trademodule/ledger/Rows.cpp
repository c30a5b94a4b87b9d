#include "trademodule/ledger/Rows.h"

#include "trademodule/ledger/Database.h"

namespace TradeModule {

bool Rows::next()
{
    return m_database->readNext(&m_query);
}

} // namespace TradeModule
