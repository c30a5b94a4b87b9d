// The statement in examples/ is invented, but it could be real.
#include "tests/trademodule/import/StatementTest.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

namespace TradeModule {

namespace {

QString examplesFile(const QString &name)
{
    return QStringLiteral(EXAMPLES_DIR) + QLatin1Char('/') + name;
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

struct Bar
{
    Money low;
    Money high;
};

/// Bars of a security by their day.
std::map<int, Bar> barsOf(const QString &code)
{
    std::map<int, Bar> bars;
    QList<QByteArray> lines = contentsOf(examplesFile(QStringLiteral("daily/%1.csv").arg(code))).split('\n');
    for (const QByteArray &line : lines.mid(1)) {
        const QList<QByteArray> fields = line.split(',');
        if (fields.size() == 6) {
            bars[fields[0].toInt()] = {Money::ofYuan(fields[3].toDouble()).value(),
                                       Money::ofYuan(fields[2].toDouble()).value()};
        }
    }
    return bars;
}

class SampleStatement : public ::testing::Test
{
protected:
    const StatementContents m_contents =
        readStatement(decodeStatement(contentsOf(examplesFile(QStringLiteral("statement.csv")))), {});

    QStringList codes() const
    {
        QStringList found;
        for (const Execution &execution : m_contents.executions) {
            if (!found.contains(execution.security.code)) {
                found.append(execution.security.code);
            }
        }
        return found;
    }
};

} // namespace

TEST_F(SampleStatement, IsReadWithoutAComplaint)
{
    EXPECT_GT(m_contents.executions.size(), 300);
    EXPECT_TRUE(m_contents.badRows.isEmpty());
    EXPECT_EQ(m_contents.repeatedRows + m_contents.equalRows, 0);
}

TEST_F(SampleStatement, TradesAtPricesOfTheDay)
{
    for (const QString &code : codes()) {
        const std::map<int, Bar> bars = barsOf(code);
        for (const Execution &execution : m_contents.executions) {
            if (execution.security.code != code) {
                continue;
            }
            const auto bar = bars.find(execution.date.number());
            ASSERT_NE(bar, bars.end()) << described(execution) << " on a day without a bar";
            EXPECT_FALSE(execution.price < bar->second.low) << described(execution);
            EXPECT_FALSE(execution.price > bar->second.high) << described(execution);
        }
    }
}

TEST_F(SampleStatement, KeepsTheRulesOfTheMarket)
{
    QHash<QString, qint64> held;
    QHash<QString, QPair<int, qint64>> bought;
    for (const Execution &execution : m_contents.executions) {
        const QString &code = execution.security.code;
        EXPECT_EQ(execution.quantity % 100, 0) << described(execution);
        const int time = execution.time.number();
        EXPECT_TRUE((time >= 9300000 && time <= 11300000) || (time >= 13000000 && time <= 15000000))
            << described(execution);
        if (bought[code].first != execution.date.number()) {
            bought[code] = {execution.date.number(), 0};
        }
        if (execution.side == Side::Buy) {
            bought[code].second += execution.quantity;
            held[code] += execution.quantity;
        } else {
            EXPECT_GE(held[code] - bought[code].second, execution.quantity) << described(execution);
            held[code] -= execution.quantity;
        }
    }
}

TEST_F(SampleStatement, LeavesHoldingsWhoseCostIsInSight)
{
    constexpr int visibleBars = 120;
    for (const QString &code : codes()) {
        Holding holding;
        for (const Execution &execution : m_contents.executions) {
            if (execution.security.code == code) {
                holding.add(execution);
            }
        }
        const std::map<int, Bar> bars = barsOf(code);
        double low = 1e9;
        double high = 0;
        std::for_each(std::prev(bars.end(), visibleBars), bars.end(), [&](const auto &bar) {
            low = std::min(low, bar.second.low.yuan());
            high = std::max(high, bar.second.high.yuan());
        });
        ASSERT_TRUE(holding.costPrice().has_value()) << code.toStdString();
        EXPECT_GE(*holding.costPrice(), low);
        EXPECT_LE(*holding.costPrice(), high);
    }
}

TEST_F(SampleStatement, IsWhatItsScriptMakes)
{
    const QTemporaryDir directory;
    const QString made = directory.filePath(QStringLiteral("statement.csv"));

    ASSERT_EQ(QProcess::execute(QStringLiteral("python3"), {QStringLiteral(SAMPLE_SCRIPT), made}), 0);

    EXPECT_EQ(contentsOf(made), contentsOf(examplesFile(QStringLiteral("statement.csv"))));
}

} // namespace TradeModule
