// The window's bars, its look and its export.
#include "terminal/trade/OrderResults.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/TradeDocks.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolBar>

namespace Terminal {
namespace {

class MainWindowTest : public OverlayWindow
{
};

TEST_F(MainWindowTest, OffersToExportTheChartAtItsKey)
{
    show({});
    bool opened = false;
    whenOpen<QFileDialog>([&opened](QFileDialog *dialog) {
        opened = true;
        dialog->reject();
    });
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    QTest::keyClick(chart(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(opened);
}

TEST_F(MainWindowTest, ExportsTheChartWithoutTheAccount)
{
    show({});
    m_window->trade()->setShown(true);
    QApplication::processEvents();
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("chart.png"));
    whenOpen<QFileDialog>([&file](QFileDialog *dialog) {
        dialog->selectFile(file);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    QTest::keyClick(chart(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(QImage(file).size(), m_window->centralWidget()->size());
    EXPECT_LT(QImage(file).width(), m_window->width() - 200) << "the ticket stands beside the chart";
}

TEST_F(MainWindowTest, LooksAsIfItHadBeenOpenedInTheThemeThatItIsChangedTo)
{
    const auto picture = [this] {
        m_window->trade()->setShown(true);
        QApplication::processEvents();
        return m_window->grab().toImage();
    };
    show({}, ChartPeriod::Day, ThemeKind::Light);
    const QImage light = picture();
    show({}, ChartPeriod::Day, ThemeKind::Dark);
    const QImage dark = picture();
    action("深色")->trigger();
    EXPECT_EQ(picture(), light);
    action("深色")->trigger();
    EXPECT_EQ(picture(), dark);
}

TEST_F(MainWindowTest, NamesItsAccountInItsTitleInTheLanguageOfTheWindow)
{
    TerminalOptions options;
    options.ledger = QStringLiteral("/home/me/account.db");
    openWindow({QStringLiteral("600519")}, options);
    EXPECT_THAT(m_window->windowTitle().toStdString(), ::testing::HasSubstr("600519"));
    EXPECT_THAT(m_window->windowTitle().toStdString(), ::testing::HasSubstr("account.db（模拟）"));
    speakEnglish();
    EXPECT_THAT(m_window->windowTitle().toStdString(), ::testing::HasSubstr("account.db (paper)"));
}

TEST_F(MainWindowTest, NamesNoAccountThatItDoesNotKnow)
{
    show({});
    EXPECT_FALSE(m_window->windowTitle().contains(QStringLiteral(u"–")));
}

TEST_F(MainWindowTest, KeepsTheChartWhenOtherBarsCannotBeLoaded)
{
    show({});
    EXPECT_FALSE(m_window->load(QStringLiteral("600519"), ChartPeriod::Minute, onDay(20000101)));
    EXPECT_TRUE(m_window->loadError().contains(QStringLiteral("600519_20000101.csv")));
    EXPECT_EQ(chart()->data().period, ChartPeriod::Day);
}

TEST_F(MainWindowTest, SpeaksChineseAndEnglish)
{
    show({});
    const auto periodTexts = [this] {
        QStringList texts;
        for (const QAction *const action : m_window->findChildren<QAction *>()) {
            texts.append(action->text());
        }
        return texts;
    };
    EXPECT_TRUE(periodTexts().contains(QStringLiteral(u"日线")));
    for (QAction *const action : m_window->findChildren<QAction *>()) {
        if (action->text() == QLatin1String("English")) {
            action->trigger();
        }
    }
    EXPECT_TRUE(periodTexts().contains(QStringLiteral("Day")));
    EXPECT_TRUE(periodTexts().contains(QStringLiteral(u"中文")));
}

TEST_F(MainWindowTest, HasRoomForItsToolBarInBothLanguages)
{
    show({});
    ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Minute));
    const auto widest = [this] {
        QApplication::processEvents();
        int width = 0;
        for (const QToolBar *const bar : m_window->findChildren<QToolBar *>()) {
            width = std::max(width, bar->sizeHint().width());
        }
        return width;
    };
    EXPECT_LE(widest(), 1280);
    speakEnglish();
    EXPECT_LE(widest(), 1280);
}

/// The message at the top of the chart; empty when there is none.
QString shownMessage(const MainWindow &window)
{
    const auto *const message = window.findChild<QLabel *>(QStringLiteral("messageBar"));
    return message->isVisible() ? message->text() : QString();
}

TEST_F(MainWindowTest, ExportsTheChartWithoutTheMessageOfAnOrder)
{
    show({});
    m_window->centralWidget()->grab(); // every text is laid out
    const auto exported = [this] {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("chart.png"));
        whenOpen<QFileDialog>([&file](QFileDialog *dialog) {
            dialog->selectFile(file);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        activateWindow();
        QTest::keyClick(chart(), Qt::Key_S, Qt::ControlModifier);
        return QImage(file);
    };
    const QImage bare = exported();
    ASSERT_FALSE(bare.isNull());
    m_window->prompts()->show(QStringLiteral("sell 5000 × 1405.00: accepted"));
    EXPECT_EQ(exported(), bare);
}

/// Opens all that stands beside the chart, with two messages in the ticket, in a window of this size.
class MainWindowOfSmallSize : public MainWindowTest
{
protected:
    void openAll()
    {
        TerminalOptions options;
        options.size = small;
        options.practice =
            QStringLiteral("a practice with a name that is longer than the window is wide, by far");
        openWindow({QStringLiteral("600519"), ChartPeriod::Minute}, options);
        ASSERT_EQ(m_window->setReplaying(true), QString());
        activateWindow();
        for (const Qt::Key key : {Qt::Key_F6, Qt::Key_F5, Qt::Key_F4, Qt::Key_F3}) {
            QTest::keyClick(chart(), key);
            QApplication::processEvents();
        }
        for (const char *const number : {"1", "2"}) {
            m_window->trade()->ticket()->results()->tell(
                QLatin1String(number),
                QStringLiteral("600519 Buy 100 × 1420.00: refused: the price is not within the limits of "
                               "the day, and the market is closed"),
                OrderResults::Tone::Bad);
        }
        QTest::keyClick(chart(), Qt::Key_F1);
        QApplication::processEvents();
    }

    static constexpr QSize small{800, 500};
};

TEST_F(MainWindowOfSmallSize, StaysAsItIsWhateverIsOpenedInIt)
{
    openAll();
    EXPECT_EQ(m_window->size(), small);
    speakEnglish();
    EXPECT_EQ(m_window->size(), small);
    ASSERT_EQ(m_window->setReplaying(false), QString());
    ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Day));
    QApplication::processEvents();
    EXPECT_EQ(m_window->size(), small);
}

TEST_F(MainWindowOfSmallSize, LeavesTheChartEnoughToBeReadInBothLanguages)
{
    constexpr int readable = 120;
    openAll();
    EXPECT_GE(chart()->height(), readable);
    speakEnglish();
    EXPECT_GE(chart()->height(), readable);
}

TEST_F(MainWindowOfSmallSize, HasTheTitlesOfItsDocksWhenItIsEnlarged)
{
    openAll();
    const auto *const orders = m_window->findChild<QDockWidget *>(QStringLiteral("ordersDock"));
    EXPECT_NE(orders->titleBarWidget(), nullptr);
    m_window->resize(1280, 720);
    QApplication::processEvents();
    EXPECT_EQ(orders->titleBarWidget(), nullptr);
}

TEST_F(MainWindowTest, KeepsAMessageWholeWhenTheChartBecomesNarrower)
{
    show({});
    m_window->prompts()->show(QString(80, QLatin1Char('m')));
    m_window->resize(700, m_window->height());
    QApplication::processEvents();
    const auto *const message = m_window->findChild<QLabel *>(QStringLiteral("messageBar"));
    EXPECT_GE(message->x(), 0);
    EXPECT_LE(message->geometry().right(), chart()->width());
}

TEST_F(MainWindowOfSmallSize, BringsThePriceIntoViewAtTheKeyOfTheTicket)
{
    openAll();
    const auto *const price = m_window->findChild<QWidget *>(QStringLiteral("orderPrice"));
    EXPECT_EQ(price->visibleRegion().boundingRect(), price->rect());
    const auto *const send = m_window->findChild<QWidget *>(QStringLiteral("sendOrder"));
    EXPECT_EQ(send->visibleRegion().boundingRect(), send->rect());
}

TEST_F(MainWindowOfSmallSize, HasRoomForTheTabsOfItsDocksBelowTheirTables)
{
    openAll();
    int tabBars = 0;
    for (const QTabBar *const tabs :
         m_window->findChildren<QTabBar *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (tabs->isVisible()) {
            EXPECT_GE(tabs->height(), tabs->sizeHint().height());
            const auto *const orders = m_window->findChild<QDockWidget *>(QStringLiteral("ordersDock"));
            EXPECT_GE(tabs->geometry().top(), orders->geometry().bottom());
            tabBars += 1;
        }
    }
    EXPECT_EQ(tabBars, 1);
}

TEST_F(MainWindowTest, GivesALongMessageAsManyLinesAsItTakes)
{
    show({});
    const auto *const bar = m_window->findChild<QLabel *>(QStringLiteral("messageBar"));
    m_window->prompts()->show(QStringLiteral("short"));
    const int oneLine = bar->contentsRect().height() - 2 * bar->margin();

    m_window->prompts()->show(QString(1000, QLatin1Char('x')));

    const int letters = 1000 * bar->fontMetrics().horizontalAdvance(QLatin1Char('x'));
    const int lines = (bar->contentsRect().height() - 2 * bar->margin()) / oneLine;
    EXPECT_GE(lines * bar->width(), letters);
    EXPECT_TRUE(bar->parentWidget()->rect().contains(bar->geometry()));
}

TEST_F(MainWindowTest, TakesAMessageAwayWhenAmountsAreHidden)
{
    show({});
    m_window->prompts()->show(QStringLiteral("sell 5000 × 1405.00: accepted"));
    ASSERT_NE(shownMessage(*m_window), QString());
    action("隐藏金额")->trigger();
    EXPECT_EQ(shownMessage(*m_window), QString());
}

} // namespace
} // namespace Terminal
