// The window with prices before ex-dates adjusted: what stands on the chart stays true to each other.
#include "terminal/chart/marks/glyphs/GlyphSet.h"
#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ReadoutBar.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QTemporaryDir>

#include <cmath>

namespace Terminal {
namespace {

constexpr Trading::TradingDate exDate = onDay(20211008);

/// A window on days of 600519, of which one share becomes two on 20211008.
class AdjustedPrices : public OverlayWindow
{
protected:
    void SetUp() override
    {
        QDir(m_data.path()).mkpath(QStringLiteral("daily"));
        QDir(m_data.path()).mkpath(QStringLiteral("minute"));
        QDir(m_data.path()).mkpath(QStringLiteral("actions"));
        for (const char *const file :
             {"securities.csv", "daily/600519.csv", "daily/000001.csv", "minute/000001_20180108.csv"}) {
            const QString name = QString::fromLatin1(file);
            ASSERT_TRUE(QFile::copy(QStringLiteral(TRADECHART_EXAMPLES "/") + name, m_data.filePath(name)));
        }
        writeActions("exdate,bonus\n20211008,1\n");
    }

    QString writeActions(const QByteArray &content, const char *code = "600519")
    {
        QFile file(m_data.filePath(QStringLiteral("actions/%1.csv").arg(QLatin1String(code))));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    void open(const QStringList &overlays = {}, PriceView prices = PriceView::Raw,
              const OpenedChart &shown = {QStringLiteral("600519")})
    {
        TerminalOptions options;
        options.overlays = overlays;
        options.prices = prices;
        options.size = QSize(1280, 720);
        options.language = QStringLiteral("en");
        overlayLog();
        openWindow(shown, options, m_data.path());
        startOverlays(TEST_OVERLAYS, openGates());
        QApplication::processEvents();
    }

    void pressItsKey()
    {
        activateWindow();
        QTest::keyClick(chart(), Qt::Key_F, Qt::ControlModifier);
        QApplication::processEvents();
    }

    const Bar &barOf(Trading::TradingDate day) const
    {
        const Bars &bars = chart()->data().bars;
        return *std::find_if(bars.begin(), bars.end(), [day](const Bar &bar) { return dayOf(bar) == day; });
    }

    /// The days around the ex-date.
    void lookAtTheExDate()
    {
        const auto at = static_cast<double>(&barOf(exDate) - chart()->data().bars.data());
        chart()->setSpan({at - 20, at + 20});
        QApplication::processEvents();
    }

    QString readout() const { return m_window->findChild<ReadoutBar *>()->summary(); }

    /// In the corner of both axes.
    int accentsInTheCorner()
    {
        const QRect canvas = chart()->canvas()->geometry();
        const QImage corner =
            chart()
                ->grab(QRect(canvas.bottomRight() - QPoint(40, 0), chart()->rect().bottomRight()))
                .toImage();
        return pixelsOf(corner, chart()->theme().accent);
    }

    QTemporaryDir m_data;
};

TEST_F(AdjustedPrices, AreNotShownUnlessTheyAreChosen)
{
    open();
    EXPECT_EQ(chart()->data().view, PriceView::Raw);
    EXPECT_EQ(barOf(onDay(20210930)).close, 1830);
    EXPECT_FALSE(action("Adjusted prices")->isChecked());
    EXPECT_FALSE(readout().contains(QStringLiteral("Adjusted")));
    EXPECT_EQ(accentsInTheCorner(), 0);
}

TEST_F(AdjustedPrices, ComeAndGoAtTheirKeyWhileTheSameBarsStayInView)
{
    open();
    lookAtTheExDate();
    const BarSpan span = chart()->span();
    pressItsKey();
    EXPECT_EQ(chart()->data().view, PriceView::Adjusted);
    EXPECT_EQ(barOf(onDay(20210930)).close, 915);
    EXPECT_EQ(chart()->span().first, span.first);
    EXPECT_EQ(chart()->span().last, span.last);
    pressItsKey();
    EXPECT_EQ(barOf(onDay(20210930)).close, 1830);
    EXPECT_EQ(chart()->span().first, span.first);
}

TEST_F(AdjustedPrices, AreNamedAboveTheChartAndAtThePriceScale)
{
    open();
    pressItsKey();
    EXPECT_TRUE(readout().contains(QStringLiteral("Day · Adjusted"))) << qPrintable(readout());
    EXPECT_TRUE(chartTitle(*chart()).contains(QStringLiteral("Adjusted")));
    EXPECT_GT(accentsInTheCorner(), 0);
    action("中文")->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(readout().contains(QStringLiteral("前复权"))) << qPrintable(readout());
}

TEST_F(AdjustedPrices, StayChosenForOtherPeriodsAndSecurities)
{
    open({}, PriceView::Adjusted);
    action("Week")->trigger();
    EXPECT_EQ(chart()->data().period, ChartPeriod::Week);
    EXPECT_EQ(chart()->data().view, PriceView::Adjusted);
    EXPECT_EQ(barOf(onDay(20210930)).close, 915);
    load({QStringLiteral("000001")});
    EXPECT_EQ(chart()->data().view, PriceView::Adjusted); // nothing is known to have happened
    EXPECT_TRUE(m_window->shownOptions().prices == PriceView::Adjusted);
}

/// The change of the ex-date: its close against half of the close before.
TEST_F(AdjustedPrices, HaveTheSameChangesAsRawOnes)
{
    open();
    const auto bar = static_cast<size_t>(&barOf(exDate) - chart()->data().bars.data());
    const double raw = changeAt(bar, chart()->data());
    EXPECT_NEAR(raw, barOf(exDate).close / 915 - 1, 1e-12);
    pressItsKey();
    EXPECT_NEAR(changeAt(bar, chart()->data()), raw, 1e-12);
    EXPECT_NEAR(changeAt(bar - 1, chart()->data()),
                barOf(onDay(20210930)).close / barOf(onDay(20210929)).close - 1, 1e-12);
}

TEST_F(AdjustedPrices, HaveTheMarksOfTradesOnTheirBars)
{
    open({QStringLiteral("trades")});
    pressItsKey();
    lookAtTheExDate();
    const DrawnMarks *const marks =
        m_window->overlays()->drawnMarks(*findOverlayKind(QStringLiteral("trades")));
    ASSERT_NE(marks, nullptr);
    const QImage picture = canvasPicture();
    int before = 0;
    int after = 0;
    for (const DrawnMark &mark : marks->all()) {
        const PlaceList::Range places = marks->placesOf(mark);
        ASSERT_EQ(std::distance(places.begin(), places.end()), 1);
        const QPointF place = *places.begin();
        const Bar &bar = chart()->data().bars[static_cast<size_t>(chart()->barAt(place.x()))];
        EXPECT_NEAR(place.y() + seriesGlyphHeight / 2, geometry().priceToY(bar.high), 1e-6) << bar.date;
        EXPECT_LE(mark.box.bottom(), geometry().priceToY(bar.high) + 1) << bar.date;
        const QImage painted = picture.copy(mark.box.toAlignedRect());
        const ChartTheme &theme = chart()->theme();
        EXPECT_GT(
            pixelsOf(painted, theme.rise) + pixelsOf(painted, theme.fall) + pixelsOf(painted, theme.both), 20)
            << bar.date;
        (dayOf(bar) < exDate ? before : after) += 1;
    }
    EXPECT_GT(before, 0);
    EXPECT_GT(after, 0);
}

TEST_F(AdjustedPrices, HaveMarksThatAreClickedWhereTheyStand)
{
    open({QStringLiteral("trades")});
    pressItsKey();
    lookAtTheExDate();
    const auto bar = static_cast<int>(&barOf(exDate) - chart()->data().bars.data());
    const int marked = bar - 3 - bar % 3; // the test's overlay marks each third bar
    bool opened = false;
    whenOpen<QMenu>([&opened](QMenu *menu) {
        opened = true;
        menu->close();
    });
    click(onMark(marked));
    EXPECT_TRUE(opened);
}

/// What was paid is in today's prices, which are the adjusted ones.
TEST_F(AdjustedPrices, HaveTheCostLineAtItsPrice)
{
    open({QStringLiteral("cost")});
    const double cost = costPrice();
    pressItsKey();
    EXPECT_EQ(costPrice(), cost);
    const int x = static_cast<int>(geometry().barToX(chart()->span().last - 30));
    const auto rows = rowsOfColour(canvasPicture(), x, chart()->theme().line);
    ASSERT_FALSE(rows.empty());
    EXPECT_NEAR(rows.front(), geometry().priceToY(cost), 1.5);
}

TEST_F(AdjustedPrices, AreRefusedWithTheReasonWhenTheFileIsWrong)
{
    const QString file = writeActions("exdate,bonus\n20211008,many\n");
    open();
    pressItsKey();
    EXPECT_EQ(chart()->data().view, PriceView::Raw);
    EXPECT_FALSE(action("Adjusted prices")->isChecked());
    const auto labels = m_window->findChildren<QLabel *>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&file](const QLabel *label) {
        return label->isVisible() && label->text().contains(file + QStringLiteral(":2: "));
    }));
}

TEST_F(AdjustedPrices, FollowAFileThatHasChangedWhenTheChartIsShownAgain)
{
    open({}, PriceView::Adjusted);
    EXPECT_EQ(barOf(onDay(20210930)).close, 915);
    writeActions("exdate,split\n20211008,4\n");
    action("Day")->trigger();
    EXPECT_EQ(barOf(onDay(20210930)).close, 457.5);
}

/// Orders of a replay are dealt at the prices of its day.
TEST_F(AdjustedPrices, AreNotThoseOfAReplay)
{
    writeActions("exdate,bonus\n20200102,1\n", "000001");
    const OpenedChart minutes{QStringLiteral("000001"), ChartPeriod::Minute};
    open({}, PriceView::Adjusted, minutes);
    const double adjusted = chart()->data().bars.front().open;
    ASSERT_EQ(m_window->setReplaying(true), QString());
    EXPECT_EQ(replay()->day().front().open, 2 * adjusted);
    EXPECT_EQ(replay()->previousClose(), 13.30);
    EXPECT_EQ(chart()->data().view, PriceView::Raw);
    m_window->setReplaying(false);
    EXPECT_EQ(chart()->data().view, PriceView::Adjusted);
}

} // namespace
} // namespace Terminal
