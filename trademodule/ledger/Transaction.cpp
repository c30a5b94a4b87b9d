#include "trademodule/ledger/Transaction.h"

namespace TradeModule {

Transaction::Transaction(Database *database) : m_database(database)
{
    m_database->begin();
}

Transaction::~Transaction()
{
    if (m_isOpen) {
        m_database->rollback();
    }
}

void Transaction::commit()
{
    m_database->commit();
    m_isOpen = false;
}

} // namespace TradeModule
