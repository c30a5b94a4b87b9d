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
    m_database->run(QStringLiteral("SAVEPOINT part"));
    try {
        part();
    } catch (const LedgerUnavailable &) {
        throw;
    } catch (const LeaseLost &) {
        throw;
    } catch (const Error &) {
        undoPart();
        throw;
    }
    m_database->run(QStringLiteral("RELEASE SAVEPOINT part"));
}

/// What cannot be undone alone must not be committed with the others.
void Transaction::undoPart()
{
    try {
        m_database->run(QStringLiteral("ROLLBACK TO SAVEPOINT part"));
        m_database->run(QStringLiteral("RELEASE SAVEPOINT part"));
    } catch (const LedgerUnavailable &) {
        throw;
    } catch (const Error &error) {
        throw LedgerUnavailable(error.reason());
    }
}

} // namespace TradeModule
