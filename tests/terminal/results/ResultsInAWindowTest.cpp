// Results in the terminal's window, from the trading module on the sample's ledger to the list, and from the
// list to the chart and into a file.
#include "terminal/results/ResultsPanel.h"
#include "terminal/results/ResultsView.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/TradeDocks.h"
#include "tests/terminal/support/TradingWindow.h"

#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QTest>

namespace Terminal {
namespace {

class ResultsInAWindow : public TradingWindow
{
protected:
    void SetUp() override
    {
        TradingWindow::SetUp();
        openWindow(QStringLiteral("cost"), {QStringLiteral("000001")});
        QApplication::setActiveWindow(m_window.get()); // a bare screen has nobody who does
        results()->open();
        ASSERT_TRUE(waitUntil([this] { return model()->rowCount({}) == 3 && model()->hasRow(0); }));
    }

    ResultsDock *results() { return m_window->results(); }
    ResultsPanel *panel() { return results()->panel(); }
    ResultsModel *model() { return panel()->model(); }

    void choose(const char *box, const QVariant &choice)
    {
        auto *const choices = panel()->findChild<QComboBox *>(QLatin1String(box));
        const int place = choices->findData(choice);
        ASSERT_GE(place, 0);
        choices->setCurrentIndex(place);
        Q_EMIT choices->activated(place);
    }

    void showList(ResultGroup group)
    {
        choose("resultsGroups", static_cast<int>(group));
        ASSERT_TRUE(waitUntil([=] { return model()->whole().wish.group == group && model()->hasRow(0); }));
    }

    QString shown(int row, ResultField field)
    {
        const auto &fields = Trading::fieldsOf(model()->wish().group);
        const auto column = std::find(fields.begin(), fields.end(), field) - fields.begin();
        return model()->index(row, static_cast<int>(column)).data().toString();
    }

    std::string labels()
    {
        QStringList texts;
        for (const QLabel *const label : m_window->findChildren<QLabel *>()) {
            texts.append(label->text());
        }
        return texts.join(QLatin1Char('|')).toStdString();
    }

    /// What another process says.
    QByteArray command(const QStringList &arguments)
    {
        QProcess process;
        process.start(QStringLiteral(TRADEMODULE),
                      QStringList{QStringLiteral("--ledger"), ledger()} + arguments);
        process.waitForFinished();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    }

    QString write(const QByteArray &text)
    {
        QFile file(m_folder.filePath(QStringLiteral("more.csv")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
};

TEST_F(ResultsInAWindow, ListTheSamplesTotals)
{
    EXPECT_EQ(shown(0, ResultField::Profit), QStringLiteral("+18,907.98"));
    EXPECT_EQ(shown(1, ResultField::Profit), QStringLiteral("+347,629.53"));
    EXPECT_EQ(shown(2, ResultField::Profit), QStringLiteral("+147,314.64"));
    EXPECT_THAT(labels(), ::testing::HasSubstr("盈亏 +513,852.15"));
}

TEST_F(ResultsInAWindow, WriteTheFileThatTheCommandWrites)
{
    const QString path = m_folder.filePath(QStringLiteral("results.csv"));
    for (const ResultGroup group : Trading::resultGroups()) {
        QFile::remove(path);
        showList(group);

        results()->exportTo(path);

        ASSERT_TRUE(waitUntil([&] { return QFile::exists(path); }));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll().toStdString(), command({QStringLiteral("results"), QStringLiteral("--csv"),
                                                         QStringLiteral("--by"), Trading::wordOf(group)})
                                                    .toStdString());
    }
}

TEST_F(ResultsInAWindow, LeadToTheChartOfASale)
{
    showList(ResultGroup::Sale);
    Q_EMIT panel()->view()->horizontalHeader()->sectionClicked(11); // the largest profit first
    ASSERT_TRUE(waitUntil([this] { return model()->hasRow(0); }));
    const QString day = shown(0, ResultField::Date);
    ASSERT_NE(shown(0, ResultField::Code), QStringLiteral("000001"));
    panel()->view()->focusRows();

    QTest::keyClick(panel()->view(), Qt::Key_Return);

    EXPECT_EQ(chart()->data().security.code, shown(0, ResultField::Code));
    const BarRange shownBars = barsInView(chart()->span(), chart()->data().bars.size());
    const auto isThatDay = [&day](const Bar &bar) { return dayOf(bar).dashedText() == day; };
    const auto &bars = chart()->data().bars;
    EXPECT_TRUE(std::any_of(bars.begin() + static_cast<long>(shownBars.first),
                            bars.begin() + static_cast<long>(shownBars.end), isThatDay));
}

TEST_F(ResultsInAWindow, FollowAnImportAndItsUndoing)
{
    importBesideCharts(
        write("成交日期,成交时间,证券代码,证券名称,买卖标志,成交价格,成交数量,成交金额,成交编号\n"
              "20251103,10:00:00,600519,贵州茅台,买入,1400.00,100,140000.00,9001\n"
              "20251104,10:00:00,600519,贵州茅台,卖出,1500.00,500,750000.00,9002\n"));
    EXPECT_TRUE(waitUntil([this] { return shown(1, ResultField::Profit) != QStringLiteral("+347,629.53"); }));
    EXPECT_EQ(shown(1, ResultField::Held), QStringLiteral("0"));

    command({QStringLiteral("--bus"), address(), QStringLiteral("undo"), QStringLiteral("2")});

    EXPECT_TRUE(waitUntil([this] { return shown(1, ResultField::Profit) == QStringLiteral("+347,629.53"); }));
}

/// The choice, the command beside it, and what is shown of it: list, panel and line of states.
TEST_F(ResultsInAWindow, FollowTheWayToReckonCosts)
{
    startOverlays();
    m_window->trade()->setShown(true);
    results()->open();
    choose("resultsMethods", QStringLiteral("diluted"));
    ASSERT_TRUE(waitUntil([this] { return model()->whole().costMethod == QLatin1String("diluted"); }));
    EXPECT_EQ(command({QStringLiteral("cost"), QStringLiteral("--lang"), QStringLiteral("en")}),
              QByteArray("diluted (diluted)\n"));
    EXPECT_TRUE(waitUntil([this] {
        const auto &account = desk()->account();
        return account && account->costMethod == QLatin1String("diluted");
    }));
    EXPECT_TRUE(
        waitUntil([this] { return QString::fromStdString(labels()).contains(QStringLiteral(u"(摊薄)")); }));

    command({QStringLiteral("--bus"), address(), QStringLiteral("cost"), QStringLiteral("fifo")});

    EXPECT_TRUE(waitUntil([this] { return model()->whole().costMethod == QLatin1String("fifo"); }));
    EXPECT_EQ(panel()->findChild<QComboBox *>(QStringLiteral("resultsMethods"))->currentData().toString(),
              QStringLiteral("fifo"));
}

TEST_F(ResultsInAWindow, GoWithTheOtherAmounts)
{
    action("隐藏金额")->trigger();

    EXPECT_EQ(shown(0, ResultField::Profit), QStringLiteral("***"));
    EXPECT_THAT(labels(), ::testing::Not(::testing::HasSubstr("513,852.15")));
}

TEST_F(ResultsInAWindow, StandBesideOrdersAndPositionsOfWhichEachHasItsKey)
{
    QTest::keyClick(m_window.get(), Qt::Key_F3);
    EXPECT_TRUE(waitUntil([this] { return m_window->trade()->panel()->isVisible(); }));
    EXPECT_TRUE(waitUntil([this] { return panel()->visibleRegion().isEmpty(); }));

    QTest::keyClick(m_window.get(), Qt::Key_F4);

    EXPECT_TRUE(waitUntil([this] { return !panel()->visibleRegion().isEmpty(); }));
    EXPECT_TRUE(panel()->view()->hasFocus());
}

} // namespace
} // namespace Terminal
