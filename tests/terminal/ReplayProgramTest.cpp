// Pictures of a replayed day, made by the built program.
#include "terminal/chart/view/ChartView.h"
#include "terminal/session/TradingSession.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/MainWindow.h"
#include "tests/support/TimeZone.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/Pixels.h"
#include "tests/terminal/support/TerminalProgramFixture.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QTableView>

namespace Terminal {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class ReplayProgram : public Program
{
protected:
    static QStringList replayTo(const char *minute)
    {
        return {QStringLiteral("--code"),      QStringLiteral("600536"),   QStringLiteral("--day"),
                QStringLiteral("20230711"),    QStringLiteral("--replay"), QStringLiteral("60"),
                QStringLiteral("--replay-to"), QLatin1String(minute)};
    }
};

TEST_F(ReplayProgram, DrawsADayAsFarAsItWasPlayed)
{
    ASSERT_EQ(snapshot(replayTo("1000")).exitCode, 0);
    const QImage early(picture());
    ASSERT_EQ(snapshot(replayTo("1430")).exitCode, 0);
    const QColor background = makeTheme(ThemeKind::Dark, RiseColour::Red).background;
    const auto drawn = [&background](const QImage &image) {
        const QRect column(image.width() / 2 + 37, 100, 1, 460);
        return column.height() - pixelsOf(image.copy(column), background);
    };
    EXPECT_GT(drawn(QImage(picture())), drawn(early));
}

TEST_F(ReplayProgram, DrawsAPictureNoLargerThanAskedForAndSaysNothing)
{
    const Outcome outcome =
        snapshot(replayTo("1000") + QStringList({QStringLiteral("--lang"), QStringLiteral("en"),
                                                 QStringLiteral("--size"), QStringLiteral("700x500")}));
    ASSERT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(QImage(picture()).size(), QSize(700, 500));
    EXPECT_EQ(outcome.messages, QString());
}

#ifdef TRADEMODULE

/// Orders at one minute and price, and where their marker is in a picture of the window.
class ReplayProgramOrderScene : public ReplayProgram
{
protected:
    Outcome takePicture(const char *minute, const QStringList &orders,
                        const QStringList &overlays = {QStringLiteral("--overlays"),
                                                       QStringLiteral("orders")})
    {
        QStringList arguments = withPractice() + replayTo(minute) + overlays;
        for (const QString &order : orders) {
            arguments += {QStringLiteral("--order"), order};
        }
        return snapshot(arguments);
    }

    std::string orders()
    {
        QProcess list;
        list.start(QStringLiteral(TRADEMODULE),
                   {QStringLiteral("--ledger"), practice(), QStringLiteral("orders")});
        list.waitForFinished();
        return QString::fromUtf8(list.readAllStandardOutput()).simplified().toStdString();
    }

    /// A window that is laid out as the one in the picture.
    struct WindowOfThePicture
    {
        WindowOfThePicture()
        {
            EXPECT_TRUE(window.load(QStringLiteral("600536"), ChartPeriod::Minute, onDay(20230711)));
            window.setReplaying(true);
            session.replay()->playTo(atTime(1335));
            window.grab();
        }

        static TerminalOptions options()
        {
            TerminalOptions options;
            options.size = QSize(1280, 720);
            options.practice = QStringLiteral("practice.db");
            options.day = onDay(20230711);
            return options;
        }

        static DayPlan plan()
        {
            DayPlan plan;
            plan.practised = PractisedDay{QStringLiteral("600536"), onDay(20230711), {}};
            return plan;
        }

        TradingSession session{DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value(), plan(), {}};
        MainWindow window{&session, options()};
    };

    /// The rows of the picture's list of orders, their left half: how wide the list is depends on what stands
    /// beside it.
    QImage orderRows()
    {
        const WindowOfThePicture shown;
        const MainWindow &window = shown.window;
        const auto *const list =
            window.trade()->panel()->findChild<QTableView *>(QStringLiteral("ordersView"))->viewport();
        return QImage(picture()).copy(
            {list->mapTo(&window, QPoint()), QSize(list->width() / 2, list->height())});
    }

    /// How many pixels of `colour` the picture has where the marker of an order hangs.
    int markerPixels(int minute, double price, const QColor &colour)
    {
        const WindowOfThePicture shown;
        const MainWindow &window = shown.window;
        const ChartGeometry &geometry = window.chart()->chartGeometry();
        const QPoint anchor(static_cast<int>(geometry.barToX(minute - 9 * 60 - 30)),
                            static_cast<int>(geometry.priceToY(price)));
        const QRect area(window.chart()->canvas()->mapTo(&window, anchor) - QPoint(8, 0), QSize(17, 17));
        return pixelsOf(QImage(picture()).copy(area), colour);
    }
};

TEST_F(ReplayProgramOrderScene, ShowsTheOrdersAsTheLastQuoteLeftThem)
{
    importStatement();
    const Outcome outcome =
        takePicture("1335", {QStringLiteral("0945 buy 3000 50.70"), QStringLiteral("1042 buy 1000 50.40"),
                             QStringLiteral("1334 sell 1900 50.64")});
    ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    EXPECT_THAT(orders(), HasSubstr("buy 50.70 3000 3000 0 dealt"));
    EXPECT_THAT(orders(), HasSubstr("buy 50.40 1000 0 0 open"));
    EXPECT_THAT(orders(), HasSubstr("sell 50.64 1900 1800 0 part dealt")); // a quarter of 7200

    const ChartTheme theme = makeTheme(ThemeKind::Dark, RiseColour::Red);
    const int dealt = markerPixels(9 * 60 + 45, 50.70, theme.rise);
    const int waiting = markerPixels(10 * 60 + 42, 50.40, theme.rise);
    EXPECT_GT(waiting, 10);
    EXPECT_GT(dealt, 2 * waiting); // filled, not hollow
}

TEST_F(ReplayProgramOrderScene, IsOfTheRecordedDayWhereverTheMachineStands)
{
    importStatement();
    for (const char *const zone : {westernmostZone, easternmostZone}) {
        m_environment.insert(QStringLiteral("TZ"), QLatin1String(zone));
        const Outcome outcome = takePicture("1000", {QStringLiteral("0945 buy 3000 50.70")});
        ASSERT_EQ(outcome.exitCode, 0) << zone << qPrintable(outcome.messages);
        EXPECT_THAT(orders(), HasSubstr("1 2023-07-11 09:45:00 600536 SH buy 50.70 3000 3000 0 dealt"));
    }
}

TEST_F(ReplayProgramOrderScene, PlacesItsOrdersWithoutOverlaysToo)
{
    const Outcome outcome = takePicture("1335", {QStringLiteral("0945 buy 3000 50.70")}, {});
    ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    EXPECT_THAT(orders(), HasSubstr("buy 50.70 3000 3000 0 dealt"));
}

TEST_F(ReplayProgramOrderScene, ListsItsOrdersInThePanel)
{
    const QColor background = makeTheme(ThemeKind::Dark, RiseColour::Red).background;
    const auto inkPixels = [this, &background] {
        const QImage rows = orderRows();
        return rows.width() * rows.height() - pixelsOf(rows, background);
    };
    ASSERT_EQ(takePicture("1335", {}).exitCode, 0);
    EXPECT_EQ(inkPixels(), 0);
    ASSERT_EQ(takePicture("1335", {QStringLiteral("0945 buy 3000 50.70")}).exitCode, 0);
    const int ofOne = inkPixels();
    EXPECT_GT(ofOne, 300);
    ASSERT_EQ(
        takePicture("1335", {QStringLiteral("0945 buy 3000 50.70"), QStringLiteral("1000 buy 100 50.10")})
            .exitCode,
        0);
    EXPECT_GT(inkPixels(), ofOne * 3 / 2);
}

/// Nothing of a replay reaches an account that was not begun for it.
TEST_F(ReplayProgramOrderScene, IsPlayedOnNoOtherAccountThanOneThatPractisesItsDay)
{
    importStatement();
    const Outcome ofAccount = snapshot(withLedger() + replayTo("1000"));
    EXPECT_EQ(ofAccount.exitCode, 1);
    EXPECT_THAT(ofAccount.messages.toStdString(), HasSubstr("practice --day 20230711 --copy"));
    QStringList otherDay = replayTo("1000");
    otherDay.replaceInStrings(QStringLiteral("20230711"), QStringLiteral("20230712"));
    const Outcome ofOtherDay = snapshot(withPractice() + otherDay);
    EXPECT_EQ(ofOtherDay.exitCode, 1);
    EXPECT_THAT(ofOtherDay.messages.toStdString(), HasSubstr("它练习的是 2023-07-11"));
    EXPECT_FALSE(QFile::exists(picture()));
}

TEST_F(ReplayProgramOrderScene, GoesOnWhereItsLedgerWasPlayedTo)
{
    importStatement();
    const QStringList buy{QStringLiteral("--order"), QStringLiteral("0945 buy 3000 50.70")};
    const QStringList ledger = withPractice();
    ASSERT_EQ(snapshot(ledger + replayTo("1000") + buy).exitCode, 0);
    const Outcome late = snapshot(ledger + replayTo("1030") + buy);
    EXPECT_EQ(late.exitCode, 1) << "its minute is over";
    EXPECT_THAT(late.messages.toStdString(), HasSubstr("09:45:00"));
    ASSERT_EQ(snapshot(ledger + replayTo("1030")).exitCode, 0);
    EXPECT_THAT(orders(), HasSubstr("buy 50.70 3000 3000 0 dealt"));
    EXPECT_THAT(orders(), ::testing::Not(HasSubstr("2 2023-07-11")));
}

TEST_F(ReplayProgramOrderScene, IsNotDrawnWithoutAnOrderThatIsRefused)
{
    const Outcome outcome = takePicture("1000", {QStringLiteral("0945 sell 100 51.00")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.messages.toStdString(), HasSubstr("可卖数量为 0 股"));
    EXPECT_FALSE(QFile::exists(picture()));
}

TEST_F(ReplayProgramOrderScene, OfAPastDayWaitsForTheOrdersOfThatDay)
{
    const QStringList pastDay = {QStringLiteral("--code"),     QStringLiteral("600536"),
                                 QStringLiteral("--period"),   QStringLiteral("minute"),
                                 QStringLiteral("--overlays"), QStringLiteral("orders")};
    const Outcome outcome = snapshot(withLedger() + pastDay);
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    const Outcome alone = snapshot(pastDay + QStringList({QStringLiteral("--timeout"), QStringLiteral("1")}));
    EXPECT_EQ(alone.exitCode, 1);
    EXPECT_TRUE(alone.messages.contains(QStringLiteral("EntrustHistoryTrade"))) << qPrintable(alone.messages);
}

#endif

} // namespace
} // namespace Terminal
