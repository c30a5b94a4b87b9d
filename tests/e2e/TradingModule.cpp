#include "tests/e2e/TradingModule.h"

#include <QFile>

namespace {

constexpr char header[] =
    "成交日期,成交时间,证券代码,证券名称,买卖标志,成交价格,成交数量,成交金额,成交编号,委托编号\n";

} // namespace

TradingModule::~TradingModule()
{
    m_module.terminate();
    if (!m_module.waitForFinished()) {
        m_module.kill();
        m_module.waitForFinished();
    }
}

QStringList TradingModule::onLedger() const
{
    return {QStringLiteral("--bus"), broker.address(), QStringLiteral("--ledger"),
            m_folder.filePath(QStringLiteral("ledger.db"))};
}

void TradingModule::import(const QByteArray &rows)
{
    QFile statement(m_folder.filePath(QStringLiteral("statement.csv")));
    ASSERT_TRUE(statement.open(QIODevice::WriteOnly | QIODevice::Truncate));
    statement.write(header + rows);
    statement.close();
    command({QStringLiteral("import"), statement.fileName()});
}

void TradingModule::command(const QStringList &words)
{
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(TRADEMODULE), onLedger() + words);
    ASSERT_TRUE(program.waitForFinished());
    ASSERT_EQ(program.exitCode(), 0) << program.readAll().toStdString();
}

void TradingModule::serve()
{
    m_module.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_module.start(QStringLiteral(TRADEMODULE), onLedger() + QStringList{QStringLiteral("serve")});
    ASSERT_TRUE(m_module.waitForStarted());
}

bool TradingModule::redrawUntil(Korvane::IChartObject &overlay, const std::function<bool()> &condition)
{
    return waitUntil([&] {
        calc(overlay, chinaSoft, bars);
        return condition();
    });
}
