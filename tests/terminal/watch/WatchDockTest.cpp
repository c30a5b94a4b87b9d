#include "terminal/watch/WatchDock.h"
#include "terminal/watch/WatchView.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

namespace Terminal {
namespace {

const Trading::TradingDate march27 = Trading::TradingDate::of(2026, 3, 27).value();
const Security moutai{QStringLiteral("600519"), Market::Shanghai, QStringLiteral(u"贵州茅台")};

class WatchDockTest : public ::testing::Test
{
protected:
    WatchDockTest()
    {
        m_dock.action()->trigger();
        m_window.show();
    }

    WatchView *view() { return m_window.findChild<WatchView *>(); }
    QString cell(int row, WatchColumn column)
    {
        return view()->model()->index(row, static_cast<int>(column)).data().toString();
    }

    WatchDock::Facts facts()
    {
        return {[](const QString &code) { return code == moutai.code ? &moutai : nullptr; },
                [](const Security &) {
                    return LastPrice{1320, PriceOrigin::Close, march27};
                },
                [this](const QString &, Trading::TradingDate) {
                    ++m_asked;
                    return 1200.0;
                }};
    }

    int m_asked = 0;
    QMainWindow m_window;
    WatchDock m_dock{&m_window, facts()};
};

TEST_F(WatchDockTest, TellsTheLastPriceAndTheChangeOfEachSecurity)
{
    m_dock.setCodes({moutai.code});
    EXPECT_EQ(cell(0, WatchColumn::Name), moutai.name);
    EXPECT_EQ(cell(0, WatchColumn::Last), QStringLiteral("1320.00"));
    EXPECT_EQ(cell(0, WatchColumn::Change), QStringLiteral("+10.00%"));
}

TEST_F(WatchDockTest, ReadsTheCloseBeforeOnceHoweverOftenPricesChange)
{
    m_dock.setCodes({moutai.code});
    m_dock.showPrices();
    m_dock.showPrices();
    EXPECT_EQ(m_asked, 1);
}

TEST_F(WatchDockTest, KeepsASecurityThatTheDataFolderDoesNotHave)
{
    m_dock.setCodes({QStringLiteral("000002")});
    EXPECT_EQ(cell(0, WatchColumn::Code), QStringLiteral("000002"));
    EXPECT_EQ(cell(0, WatchColumn::Last), QStringLiteral(u"–"));
}

TEST_F(WatchDockTest, TakesTheShownSecurityAndGivesItBack)
{
    m_dock.setShownCode(moutai.code);
    EXPECT_FALSE(m_dock.watchAction()->isChecked());
    m_dock.watchAction()->trigger();
    EXPECT_EQ(m_dock.codes(), QStringList(moutai.code));
    EXPECT_TRUE(m_dock.watchAction()->isChecked());
    m_dock.watchAction()->trigger();
    EXPECT_TRUE(m_dock.codes().isEmpty());
}

TEST_F(WatchDockTest, OpensAChartByEnterAndForgetsASecurityByDelete)
{
    m_dock.setCodes({moutai.code, QStringLiteral("000002")});
    QSignalSpy asked(&m_dock, &WatchDock::chartAsked);
    view()->setCurrentIndex(view()->model()->index(0, 0));
    QTest::keyClick(view(), Qt::Key_Return);
    ASSERT_EQ(asked.count(), 1);
    EXPECT_EQ(asked.front().front().toString(), moutai.code);
    QTest::keyClick(view(), Qt::Key_Delete);
    EXPECT_EQ(m_dock.codes(), QStringList(QStringLiteral("000002")));
    EXPECT_FALSE(m_dock.watchAction()->isChecked());
}

} // namespace
} // namespace Terminal
