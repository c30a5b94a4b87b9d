#include "tests/trademodule/support/TestLedger.h"

#include "tests/support/TestBroker.h"
#include "tests/trademodule/support/PostgreSqlServer.h"

class TestLedger::Private
{
public:
    const QString database = PostgreSqlServer::instance().takeDatabase();
};

TestLedger::TestLedger() : d(std::make_unique<Private>()) {}

TestLedger::~TestLedger()
{
    PostgreSqlServer::instance().giveDatabaseBack(d->database);
}

QString TestLedger::location() const
{
    return PostgreSqlServer::instance().location(d->database);
}

bool TestLedger::waitUntilWritten(std::chrono::milliseconds patience) const
{
    return waitUntil([this] { return PostgreSqlServer::instance().writingConnections(d->database) > 0; },
                     patience);
}

QString TestLedger::unavailable()
{
    return PostgreSqlServer::programDirectory().isEmpty()
               ? QStringLiteral("PostgreSQL IS NOT INSTALLED: the ledger was not tested on it")
               : QString();
}
