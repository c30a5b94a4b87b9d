#include "tests/world/WorldHome.h"

#include "tests/world/SimulatedMarket.h"
#include "trademodule/ledger/Ledger.h"
#include "trading/Market.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace World {

namespace {

constexpr qint64 sharesAtFirst = 8000;
constexpr qint64 sharesLater = 300;
constexpr Trading::TradingDate dayOfPurchase = Trading::TradingDate::of(2024, 1, 2).value();
constexpr Trading::ClockTime timeOfPurchase = Trading::ClockTime::of(10, 0).value();

/// In memory where there is such a place: worlds need no disk.
QString place()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/world-XXXXXX");
}

TradeModule::Statement purchasesOf(qint64 shares)
{
    TradeModule::Statement statement;
    statement.file = QStringLiteral("statement.csv");
    for (const Terminal::Security &security : SimulatedMarket::securities()) {
        TradeModule::Execution execution{security.id(),  TradeModule::Side::Buy,       dayOfPurchase,
                                         timeOfPurchase, Trading::Money::ofCents(950), shares};
        execution.amount = execution.price.times(shares).value();
        statement.executions.append(execution);
    }
    return statement;
}

} // namespace

WorldHome &WorldHome::instance()
{
    static WorldHome home;
    return home;
}

WorldHome::WorldHome() : m_directory(place())
{
    QFile list(path("securities.csv"));
    if (!m_directory.isValid() || !list.open(QIODevice::WriteOnly)) {
        qFatal("no world can live in %s: %s", qUtf8Printable(m_directory.path()),
               qUtf8Printable(m_directory.errorString()));
    }
    list.write("code,market,name\n");
    for (const Terminal::Security &security : SimulatedMarket::securities()) {
        list.write((security.code + QLatin1Char(',') + Trading::marketLetters(security.market) +
                    QStringLiteral(",Shares\n"))
                       .toUtf8());
    }
    list.close();
    m_folder = Terminal::DataFolder::open(m_directory.path()).value();
    TradeModule::Ledger(path("first.db")).book(purchasesOf(sharesAtFirst), TradeModule::Ledger::Mode::Keep);
}

TradeModule::Statement WorldHome::purchases()
{
    return purchasesOf(sharesLater);
}

QString WorldHome::newLedger()
{
    for (const char *const name : {"account.db", "account.db-wal", "account.db-shm", "account.db-serving"}) {
        QFile::remove(path(name));
    }
    QFile::copy(path("first.db"), path("account.db"));
    return path("account.db");
}

} // namespace World
