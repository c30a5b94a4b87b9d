#include "tests/trademodule/support/TestLedger.h"

#include "tests/support/TestBroker.h"

#include <QFileInfo>
#include <QTemporaryDir>

class TestLedger::Private
{
public:
    QTemporaryDir directory;
};

TestLedger::TestLedger() : d(std::make_unique<Private>()) {}

TestLedger::~TestLedger() = default;

QString TestLedger::location() const
{
    return d->directory.filePath(QStringLiteral("account.db"));
}

bool TestLedger::waitUntilWritten(std::chrono::milliseconds patience) const
{
    // what does not fit into the cache goes into the write-ahead log before the commit
    constexpr qint64 moreThanTheSchema = 1000000;
    const QString log = location() + QStringLiteral("-wal");
    return waitUntil([&log] { return QFileInfo(log).size() > moreThanTheSchema; }, patience);
}

QString TestLedger::unavailable()
{
    return {};
}
