#include "tests/trademodule/support/TestLedger.h"

#include "tests/support/TestBroker.h"
#include "tests/trademodule/support/PostgreSqlServer.h"

class TestLedger::Private
{
public:
    const QString database = newName();

private:
    static QString newName()
    {
        static int count = 0;
        return QStringLiteral("ledger%1").arg(++count);
    }
};

TestLedger::TestLedger() : d(std::make_unique<Private>())
{
    PostgreSqlServer::instance().createDatabase(d->database);
}

TestLedger::~TestLedger()
{
    PostgreSqlServer::instance().dropDatabase(d->database);
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
