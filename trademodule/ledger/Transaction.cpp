#include "trademodule/ledger/Transaction.h"

#include "trademodule/Error.h"

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

void Transaction::attempt(const std::function<void()> &part)
{
    control("SAVEPOINT part");
    try {
        part();
    } catch (const LedgerUnavailable &) {
        throw;
    } catch (const LeaseLost &) {
        throw;
    } catch (const Error &) {
        control("ROLLBACK TO SAVEPOINT part");
        control("RELEASE SAVEPOINT part");
        throw;
    }
    control("RELEASE SAVEPOINT part");
}

/// A part of which is not known where it begins, or that it is undone, must not be committed with the others.
void Transaction::control(const char *statement)
{
    try {
        m_database->run(QLatin1String(statement));
    } catch (const LedgerUnavailable &) {
        throw;
    } catch (const Error &error) {
        throw LedgerUnavailable(error.reason());
    }
}

} // namespace TradeModule
