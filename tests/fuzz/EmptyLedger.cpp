#include "tests/fuzz/EmptyLedger.h"

#include "trademodule/ledger/Ledger.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString folderName()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) + QStringLiteral("/ledger-XXXXXX");
}

/// The bytes of a ledger's file.
QByteArray tables()
{
    const QTemporaryDir folder(folderName());
    const QString path = folder.filePath(QStringLiteral("account.db"));
    {
        const TradeModule::Ledger ledger(path);
    } // closed: nothing is left in its write-ahead log
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

EmptyLedger::EmptyLedger() : m_folder(folderName())
{
    static const QByteArray bytes = tables();
    QFile file(location());
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
}

EmptyLedger::~EmptyLedger() = default;

QString EmptyLedger::location() const
{
    return m_folder.filePath(QStringLiteral("account.db"));
}
