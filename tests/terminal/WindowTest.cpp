// The terminal's window with overlays on it, driven by mouse and keys.
#include "terminal/chart/ChartView.h"
#include "terminal/chart/SeriesLabel.h"
#include "terminal/chart/VisibleBars.h"
#include "terminal/snapshot/Picture.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/PopupRow.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/SomeBars.h"
#include "tests/terminal/WhenOpen.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QLibrary>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// What happened to the overlays since the last call.
std::string overlayLog()
{
    using TakeLog = const char *(*)();
    const auto take =
        reinterpret_cast<TakeLog>(QLibrary::resolve(QStringLiteral(TEST_OVERLAYS), "takeOverlayLog"));
    return take();
}

int countOf(const std::string &text, const std::string &part)
{
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

class Window : public ::testing::Test
{
protected:
    void show(const QStringList &overlays, ChartPeriod period = ChartPeriod::Day,
              ThemeKind theme = ThemeKind::Dark)
    {
        TerminalOptions options;
        options.overlays = overlays;
        options.theme = theme;
        options.size = QSize(1280, 720);
        overlayLog();
        m_window = std::make_unique<MainWindow>(DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value(),
                                                options);
        ASSERT_TRUE(m_window->load(QStringLiteral("600519"), period, 0)) << qPrintable(m_window->loadError());
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        const auto library = OverlayLibrary::open(QStringLiteral(TEST_OVERLAYS));
        ASSERT_TRUE(library) << qPrintable(library.error());
        m_window->startOverlays(library.value(),
                                [](QObject *, const std::function<void()> &proceed) { proceed(); });
        QApplication::processEvents();
    }

    void TearDown() override { m_window.reset(); }

    ChartView *chart() { return m_window->chart(); }
    const ChartGeometry &geometry() { return chart()->chartGeometry(); }
    QImage canvasPicture() { return chart()->canvas()->grab().toImage(); }

    void moveTo(const QPointF &position)
    {
        // From elsewhere: where the pointer is already, nothing would be told.
        QTest::mouseMove(chart()->canvas(), position.toPoint() + QPoint(40, 0));
        QApplication::processEvents();
        QTest::mouseMove(chart()->canvas(), position.toPoint());
        QApplication::processEvents();
    }
    void click(const QPointF &position, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(chart()->canvas(), button, Qt::NoModifier, position.toPoint());
    }
    Qt::CursorShape cursor() { return chart()->canvas()->cursor().shape(); }

    double costPrice()
    {
        const Bars &bars = chart()->data().bars;
        return bars[bars.size() - 10].close;
    }

    /// The glyph of the last visible bar with a mark of the test's mark overlay.
    int lastMarkedBar()
    {
        const int last = static_cast<int>(chart()->data().bars.size()) - 1;
        return last - last % 3;
    }
    QPointF onMark(int bar)
    {
        const double high = chart()->data().bars[static_cast<size_t>(bar)].high;
        return {geometry().barToX(bar), geometry().priceToY(high) - 10};
    }
    QPointF onOrder()
    {
        const int bar = static_cast<int>(chart()->data().bars.size()) / 2 - 45;
        return {geometry().barToX(bar),
                geometry().priceToY((geometry().lowPrice + geometry().highPrice) / 2) + 8};
    }

    std::unique_ptr<MainWindow> m_window;
};

TEST_F(Window, LetsTheCursorPointWithinFivePixelsOfTheCostLine)
{
    show({QStringLiteral("cost")});
    const double y = geometry().priceToY(costPrice());
    for (const double offset : {-4.0, 0.0, 4.0}) {
        moveTo({300, y + offset});
        EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::PointingHandCursor; })) << offset;
    }
    for (const double offset : {-8.0, 8.0}) {
        moveTo({300, y + offset});
        EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::CrossCursor; })) << offset;
    }
}

TEST_F(Window, ListsADaysTradesAndClosesOnEscape)
{
    show({QStringLiteral("trades")});
    QStringList rows;
    whenOpen<QMenu>([&rows](QMenu *menu) {
        for (const QAction *const action : menu->actions()) {
            rows.append(action->text());
        }
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    click(onMark(lastMarkedBar()));
    EXPECT_EQ(rows, QStringList({QStringLiteral(u"买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                 QStringLiteral(u"卖出\t14:55:01\t成交价:1810.50\t成交量:1200"),
                                 QStringLiteral(u"卖出\t14:56:00\t成交价:9.10\t成交量:100")}));
    const std::string log = overlayLog();
    EXPECT_THAT(log, HasSubstr("press on bar " + std::to_string(lastMarkedBar())));
    EXPECT_THAT(log, HasSubstr("chose -1"));
}

TEST_F(Window, ShowsAMarkAsClickable)
{
    show({QStringLiteral("trades")});
    moveTo(onMark(lastMarkedBar()));
    EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::PointingHandCursor; }));
}

TEST_F(Window, ChoosesARowWithTheKeyboard)
{
    show({QStringLiteral("trades")});
    whenOpen<QMenu>([](QMenu *menu) {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onMark(lastMarkedBar()));
    EXPECT_THAT(overlayLog(), HasSubstr("chose 1"));
}

TEST_F(Window, ChoosesARowWithTheMouse)
{
    show({QStringLiteral("trades")});
    whenOpen<QMenu>([](QMenu *menu) {
        const QPoint row = menu->actionGeometry(menu->actions().at(2)).center();
        QTest::mouseMove(menu, row);
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, row);
    });
    click(onMark(lastMarkedBar()));
    EXPECT_THAT(overlayLog(), HasSubstr("chose 2"));
}

TEST_F(Window, OpensTheListAtTheCursor)
{
    show({QStringLiteral("trades")});
    const QPoint position = chart()->canvas()->mapToGlobal(onMark(lastMarkedBar() - 120).toPoint());
    QCursor::setPos(position);
    QRect place;
    whenOpen<QMenu>([&place](QMenu *menu) {
        place = menu->frameGeometry();
        menu->close();
    });
    click(onMark(lastMarkedBar() - 120));
    EXPECT_TRUE(place.adjusted(-8, -8, 8, 8).contains(position))
        << place.x() << "," << place.y() << " for " << position.x() << "," << position.y();
}

TEST(PopupColumns, AreAsWideAsTheirWidestText)
{
    const QFontMetrics metrics{QFont()};
    const QVector<int> widths =
        columnWidths({QStringLiteral("a\tlonger text"), QStringLiteral("wide\tb\tc")}, metrics);
    EXPECT_EQ(widths, QVector<int>({metrics.horizontalAdvance(QStringLiteral("wide")),
                                    metrics.horizontalAdvance(QStringLiteral("longer text")),
                                    metrics.horizontalAdvance(QStringLiteral("c"))}));
}

TEST_F(Window, KeepsTheOrderByDefault)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    QString question;
    QString defaultText;
    whenOpen<QMenu>([&](QMenu *menu) {
        whenOpen<QMessageBox>([&](QMessageBox *box) {
            question = box->text() + QLatin1Char('\n') + box->informativeText();
            defaultText = box->defaultButton()->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onOrder());
    EXPECT_EQ(question, QStringLiteral(u"撤单?\n买入[测试]\n状态:未成交\n编号:1\n委托价格:10.000"));
    EXPECT_EQ(defaultText, QStringLiteral(u"保留委托"));
    EXPECT_THAT(overlayLog(), HasSubstr("kept"));
}

TEST_F(Window, KeepsTheOrderOnEscape)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    whenOpen<QMenu>([](QMenu *menu) {
        whenOpen<QMessageBox>([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onOrder());
    EXPECT_THAT(overlayLog(), HasSubstr("kept"));
}

TEST_F(Window, CancelsAnOrderWhenToldAndTellsTheOutcomeWithoutBlocking)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    whenOpen<QMenu>([](QMenu *menu) {
        whenOpen<QMessageBox>([](QMessageBox *box) {
            for (QAbstractButton *const button : box->buttons()) {
                if (button != box->defaultButton()) {
                    QTest::mouseClick(button, Qt::LeftButton);
                    return;
                }
            }
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onOrder());
    EXPECT_THAT(overlayLog(), HasSubstr("confirmed"));
    const auto *const message = m_window->findChild<QLabel *>(QStringLiteral("messageBar"));
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->isVisible());
    EXPECT_EQ(message->text(), QStringLiteral(u"撤单成功"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Window, PassesTheRightButtonOn)
{
    show({QStringLiteral("cost")});
    click({300, geometry().priceToY(costPrice())}, Qt::RightButton);
    EXPECT_THAT(overlayLog(), HasSubstr("right press"));
}

TEST_F(Window, EndsAnOverlayUnderItsOwnOpenListOnlyAfterTheListIsClosed)
{
    show({QStringLiteral("trades")});
    std::string whileOpen;
    whenOpen<QMenu>([&](QMenu *menu) {
        overlayLog();
        m_window->load(QStringLiteral("000001"), ChartPeriod::Day, 0);
        whileOpen = overlayLog();
        menu->close();
    });
    click(onMark(lastMarkedBar()));
    EXPECT_THAT(whileOpen, HasSubstr("ended"));
    EXPECT_THAT(whileOpen, ::testing::Not(HasSubstr("destroyed")));
    EXPECT_THAT(overlayLog(), ::testing::StartsWith("chose -1\ndestroyed\n"));
}

TEST_F(Window, HandsOverTheWholeLoadedRangeAndNotWhatIsInView)
{
    show({QStringLiteral("cost")});
    EXPECT_THAT(overlayLog(), HasSubstr("calc 600519 2890 4"));
    chart()->setSpan({100, 200});
    QApplication::processEvents();
    EXPECT_EQ(overlayLog(), "");
}

TEST_F(Window, MakesTradesAnewForOtherBarsAndKeepsTheCostLine)
{
    show({QStringLiteral("cost"), QStringLiteral("trades")});
    overlayLog();
    m_window->load(QStringLiteral("600519"), ChartPeriod::Week, 0);
    const std::string log = overlayLog();
    EXPECT_EQ(countOf(log, "ended\ndestroyed\n"), 1);
    EXPECT_EQ(countOf(log, "made\n"), 1);
    EXPECT_THAT(log, HasSubstr(" 5\n"));
}

TEST_F(Window, AnswersARequestForARepaintWithOneCalculation)
{
    show({QStringLiteral("cost")});
    QApplication::processEvents();
    EXPECT_EQ(countOf(overlayLog(), "calc"), 2); // when it was made, and for its own request
}

TEST_F(Window, EndsOverlaysThatAreSwitchedOff)
{
    show({QStringLiteral("cost")});
    overlayLog();
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("cost")), false);
    EXPECT_EQ(overlayLog(), "ended\ndestroyed\n");
}

TEST_F(Window, ZoomsAtThePointerWithTheWheel)
{
    show({});
    const double x = 400;
    const double bar = geometry().xToBar(x);
    const double width = chart()->span().width();
    QWheelEvent wheel({x, 200}, chart()->canvas()->mapToGlobal(QPoint(400, 200)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(chart()->canvas(), &wheel);
    EXPECT_LT(chart()->span().width(), width * 0.9);
    EXPECT_NEAR(geometry().xToBar(x), bar, 0.01);
}

TEST_F(Window, ReadsOutTheBarUnderThePointerAlsoAfterAZoom)
{
    show({});
    int pointed = -1;
    QObject::connect(chart(), &ChartView::pointedBarChanged, chart(), [&pointed](int bar) { pointed = bar; });
    moveTo({400, 200});
    EXPECT_TRUE(waitUntil([&] { return pointed == chart()->barAt(400); }));
    chart()->zoom(0.3, 900);
    EXPECT_EQ(pointed, chart()->barAt(400));
    chart()->setCrosshair({});
    EXPECT_EQ(pointed, -1);
}

TEST_F(Window, PansWithTheMouse)
{
    show({});
    const BarSpan before = chart()->span();
    const double barWidth = geometry().barWidth();
    QTest::mousePress(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, {300, 300});
    QMouseEvent drag(QEvent::MouseMove, QPointF(500, 300), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(chart()->canvas(), &drag);
    QTest::mouseRelease(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, {500, 300});
    EXPECT_NEAR(chart()->span().first, before.first - 200 / barWidth, 0.1);
    EXPECT_NEAR(chart()->span().width(), before.width(), 1e-6);
}

TEST_F(Window, StaysInsideTheLoadedBars)
{
    show({});
    chart()->pan(1e9);
    EXPECT_GE(chart()->barAt(geometry().right), static_cast<int>(chart()->data().bars.size()) - 1);
    chart()->pan(-1e9);
    EXPECT_DOUBLE_EQ(chart()->span().first, -0.5);
    chart()->zoom(1e9, 10);
    EXPECT_DOUBLE_EQ(chart()->span().first, -0.5);
    chart()->zoom(1e-9, 10);
    EXPECT_NEAR(chart()->span().width(), 10, 1e-6);
}

TEST_F(Window, MovesAndZoomsWithKeys)
{
    show({});
    const BarSpan before = chart()->span();
    QTest::keyClick(chart(), Qt::Key_Left);
    EXPECT_LT(chart()->span().first, before.first);
    QTest::keyClick(chart(), Qt::Key_Home);
    EXPECT_DOUBLE_EQ(chart()->span().first, -0.5);
    QTest::keyClick(chart(), Qt::Key_End);
    EXPECT_NEAR(chart()->span().last, before.last, 1e-6);
    QTest::keyClick(chart(), Qt::Key_Plus);
    EXPECT_LT(chart()->span().width(), before.width());
}

TEST_F(Window, KeepsTheChartWhenOtherBarsCannotBeLoaded)
{
    show({});
    EXPECT_FALSE(m_window->load(QStringLiteral("600519"), ChartPeriod::Minute, 20000101));
    EXPECT_TRUE(m_window->loadError().contains(QStringLiteral("600519_20000101.csv")));
    EXPECT_EQ(chart()->data().period, ChartPeriod::Day);
}

/// The rows of pixels in column x that have exactly this colour.
std::vector<int> rowsOfColour(const QImage &image, int x, const QColor &colour)
{
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(x, y) == colour) {
            rows.push_back(y);
        }
    }
    return rows;
}

class WindowInTheme : public Window, public ::testing::WithParamInterface<ThemeKind>
{
};

TEST_P(WindowInTheme, DrawsTheCostLineAtItsPrice)
{
    show({QStringLiteral("cost")}, ChartPeriod::Day, GetParam());
    const QImage picture = canvasPicture();
    const int y = static_cast<int>(std::round(geometry().priceToY(costPrice())));
    int found = 0;
    for (const int x : {50, 200, 400, 700}) {
        const std::vector<int> rows = rowsOfColour(picture, x, chart()->theme().line);
        ASSERT_EQ(rows.size(), 1U) << "at x " << x;
        EXPECT_NEAR(rows.front(), y, 1);
        ++found;
    }
    EXPECT_EQ(found, 4);
}

TEST_P(WindowInTheme, WritesTheCostInATagAtTheRightEdge)
{
    show({QStringLiteral("cost")}, ChartPeriod::Day, GetParam());
    const QString text = QStringLiteral(u"持仓成本:%1").arg(costPrice(), 0, 'f', 3);
    const QRect box = seriesLabelBox(geometry(), costPrice(), text).toRect();
    EXPECT_NEAR(box.right(), geometry().right, 2);
    EXPECT_NEAR(box.center().y(), geometry().priceToY(costPrice()), 2);

    // The letters inside the tag, rendered once more; the corners show the chart behind them.
    QImage expected = canvasPicture();
    QPainter painter(&expected);
    painter.fillRect(box.adjusted(3, 0, -3, 0), chart()->theme().line);
    painter.setPen(chart()->theme().lineText);
    QFont font;
    font.setPixelSize(12);
    painter.setFont(font);
    painter.drawText(QRectF(box), Qt::AlignCenter | Qt::TextDontClip, text);
    painter.end();
    const QRect inside = box.adjusted(4, 1, -4, -1);
    EXPECT_EQ(canvasPicture().copy(inside), expected.copy(inside));
    EXPECT_GT(rowsOfColour(canvasPicture(), box.left() + 4, chart()->theme().line).size(), 10U);
}

TEST_P(WindowInTheme, DrawsCandlesInBothColours)
{
    show({}, ChartPeriod::Day, GetParam());
    const QImage picture = canvasPicture();
    int rising = 0;
    int falling = 0;
    for (int x = 0; x < picture.width(); ++x) {
        rising += rowsOfColour(picture, x, chart()->theme().rise).empty() ? 0 : 1;
        falling += rowsOfColour(picture, x, chart()->theme().fall).empty() ? 0 : 1;
    }
    EXPECT_GT(rising, 100);
    EXPECT_GT(falling, 100);
}

INSTANTIATE_TEST_SUITE_P(Themes, WindowInTheme, ::testing::Values(ThemeKind::Dark, ThemeKind::Light));

/// True where every opaque pixel of the sprite is in the picture at `position`.
::testing::AssertionResult shows(const QImage &picture, const QPixmap &sprite, const QPoint &position)
{
    const QImage pixels = sprite.toImage().convertToFormat(QImage::Format_ARGB32);
    int compared = 0;
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x) {
            const QColor wanted = pixels.pixelColor(x, y);
            if (wanted.alpha() != 255) {
                continue;
            }
            ++compared;
            if (picture.pixelColor(position + QPoint(x, y)) != wanted) {
                return ::testing::AssertionFailure()
                       << "another pixel at " << x << "," << y << " of the glyph";
            }
        }
    }
    return compared > 40 ? ::testing::AssertionSuccess()
                         : ::testing::AssertionFailure() << "hardly any pixels";
}

TEST_F(Window, DrawsBuySellAndBothAboveTheirBars)
{
    show({QStringLiteral("trades")});
    const auto last = static_cast<double>(chart()->data().bars.size());
    chart()->setSpan({last - 40, last});
    const QImage picture = canvasPicture();
    GlyphSprites sprites;
    sprites.setLook(chart()->theme(), 1);
    int seen[3] = {0, 0, 0};
    for (int bar = lastMarkedBar() - 27; bar <= lastMarkedBar(); bar += 3) {
        const int kind = bar / 3 % 3;
        const QSizeF size = sprites.size(kind * 2, 1);
        const QPointF anchor = onMark(bar) + QPointF(0, 10);
        // A glyph may stand higher where a neighbour's wick reaches into it.
        bool found = false;
        for (int lift = 0; lift < 300 && !found; ++lift) {
            const QPoint place(static_cast<int>(std::round(anchor.x() - size.width() / 2)),
                               static_cast<int>(std::floor(anchor.y()) - size.height()) - lift);
            found = place.y() >= 0 && shows(picture, sprites.sprite(kind * 2, 1), place);
        }
        EXPECT_TRUE(found) << "bar " << bar << ", kind " << kind;
        seen[kind] += found ? 1 : 0;
    }
    EXPECT_GE(std::min({seen[0], seen[1], seen[2]}), 3);
}

TEST_F(Window, DrawsOrdersAtTheirPriceInEveryState)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    const QImage picture = canvasPicture();
    GlyphSprites sprites;
    sprites.setLook(chart()->theme(), 1);
    const double middle = (geometry().lowPrice + geometry().highPrice) / 2;
    const int centre = static_cast<int>(chart()->data().bars.size()) / 2;
    for (int kind = 20; kind <= 25; ++kind) {
        const QPointF place(geometry().barToX(centre + (kind - 23) * 15) - 8, geometry().priceToY(middle));
        EXPECT_TRUE(shows(picture, sprites.sprite(orderGlyph(kind, EdgeClamp::None), 1), place.toPoint()))
            << kind;
    }
}

TEST_F(Window, ShowsWhichEdgeAnOrderIsBeyond)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    const QImage picture = canvasPicture();
    GlyphSprites sprites;
    sprites.setLook(chart()->theme(), 1);
    const int centre = static_cast<int>(chart()->data().bars.size()) / 2;
    const QPointF low(geometry().barToX(centre + 45) - 8, geometry().bottom - 16);
    const QPointF high(geometry().barToX(centre + 60) - 8, geometry().top);
    EXPECT_TRUE(shows(picture, sprites.sprite(orderGlyph(20, EdgeClamp::AtBottom), 1), low.toPoint()));
    EXPECT_TRUE(shows(picture, sprites.sprite(orderGlyph(23, EdgeClamp::AtTop), 1), high.toPoint()));
}

TEST(Glyphs, AllLookDifferent)
{
    GlyphSprites sprites;
    sprites.setLook(makeTheme(ThemeKind::Dark, RiseColour::Red), 1);
    std::vector<QImage> pictures;
    for (int style = 0; style < seriesStyles; ++style) {
        pictures.push_back(sprites.sprite(seriesGlyph(style), 1).toImage());
    }
    for (const EdgeClamp clamp : {EdgeClamp::None, EdgeClamp::AtTop, EdgeClamp::AtBottom}) {
        for (int kind = firstOrderKind; kind < firstOrderKind + orderKinds; ++kind) {
            pictures.push_back(sprites.sprite(orderGlyph(kind, clamp), 1).toImage());
        }
    }
    for (size_t i = 0; i < pictures.size(); ++i) {
        for (size_t j = 0; j < i; ++j) {
            EXPECT_NE(pictures[i], pictures[j]) << i << " and " << j;
        }
    }
}

TEST(Glyphs, DifferInMoreThanColour)
{
    const auto shape = [](int number) {
        GlyphSprites sprites;
        sprites.setLook(makeTheme(ThemeKind::Dark, RiseColour::Red), 1);
        return sprites.sprite(number, 1).toImage().convertToFormat(QImage::Format_Alpha8);
    };
    EXPECT_NE(shape(seriesGlyph(0)), shape(seriesGlyph(2)));
    EXPECT_NE(shape(seriesGlyph(0)), shape(seriesGlyph(4)));
    EXPECT_NE(shape(seriesGlyph(2)), shape(seriesGlyph(4)));
    EXPECT_NE(shape(orderGlyph(20, EdgeClamp::None)), shape(orderGlyph(23, EdgeClamp::None)));
}

class MarksOnAChart : public ::testing::TestWithParam<double>
{
};

TEST_P(MarksOnAChart, NeverHideAWick)
{
    ChartView chart;
    chart.resize(1000, 600);
    chart.setData(dailyChart(2000));
    chart.show();
    chart.setSpan({2000 - GetParam() - 0.5, 1999.5});
    chart.grab();
    GlyphSprites sprites;
    sprites.setLook(chart.theme(), 1);
    DrawnMarks marks;
    MarkPainter painter(chart, &sprites, &marks);
    const Bars &bars = chart.data().bars;
    for (int bar = 2000 - static_cast<int>(GetParam()); bar < 2000; bar += 2) {
        painter.addSeriesMark(bar, bars[static_cast<size_t>(bar)].high, bar % 3 * 2);
        painter.addSeriesMark(bar, bars[static_cast<size_t>(bar)].low, bar % 3 * 2 + 1);
    }
    QImage image(chart.canvas()->size(), QImage::Format_RGB32);
    QPainter canvas(&image);
    painter.paint(&canvas);
    ASSERT_FALSE(marks.all().empty());
    const ChartGeometry &geometry = chart.chartGeometry();
    for (const DrawnMark &mark : marks.all()) {
        for (const BarColumn &column : chart.visibleBars().columns()) {
            const double x = geometry.barToX(column.position);
            if (x < mark.box.left() || x > mark.box.right()) {
                continue;
            }
            const bool above = mark.glyph % 2 == 0;
            EXPECT_TRUE(above ? mark.box.bottom() <= geometry.priceToY(column.high) + 1
                              : mark.box.top() >= geometry.priceToY(column.low) - 1);
        }
    }
}

TEST_P(MarksOnAChart, AreAllCountedAndAllHit)
{
    ChartView chart;
    chart.resize(1000, 600);
    chart.setData(dailyChart(2000));
    chart.show();
    chart.setSpan({2000 - GetParam() - 0.5, 1999.5});
    chart.grab();
    GlyphSprites sprites;
    sprites.setLook(chart.theme(), 1);
    DrawnMarks marks;
    MarkPainter painter(chart, &sprites, &marks);
    int added = 0;
    for (int bar = 2000 - static_cast<int>(GetParam()); bar < 2000; bar += 2, ++added) {
        painter.addSeriesMark(bar, chart.data().bars[static_cast<size_t>(bar)].high, 0);
    }
    QImage image(chart.canvas()->size(), QImage::Format_RGB32);
    QPainter canvas(&image);
    painter.paint(&canvas);
    int counted = 0;
    for (const DrawnMark &mark : marks.all()) {
        counted += mark.count;
        EXPECT_TRUE(marks.targetAt(mark.box.center()));
    }
    EXPECT_EQ(counted, added);
    EXPECT_FALSE(marks.targetAt({-50, -50}));
}

INSTANTIATE_TEST_SUITE_P(BarsInView, MarksOnAChart, ::testing::Values(20.0, 100.0, 400.0, 1999.0));

TEST(Fonts, HaveTheCharactersOfTheTexts)
{
    const QFontMetrics metrics(QApplication::font());
    const auto picture = [](QChar character) {
        QImage image(24, 24, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QFont font = QApplication::font();
        font.setPixelSize(18);
        painter.setFont(font);
        painter.drawText(image.rect(), Qt::AlignCenter, character);
        return image;
    };
    const QString text = QStringLiteral(u"持仓成本买入卖出撤单贵州茅台");
    for (int i = 0; i < text.size(); ++i) {
        EXPECT_TRUE(metrics.inFont(text.at(i))) << text.at(i).unicode();
        EXPECT_NE(picture(text.at(i)), picture(QChar(0xFFFE))); // no box in its place
        for (int j = 0; j < i; ++j) {
            EXPECT_TRUE(text.at(i) == text.at(j) || picture(text.at(i)) != picture(text.at(j)));
        }
    }
}

TEST_F(Window, SpeaksChineseAndEnglish)
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

TEST_F(Window, WritesItsPictureInTheSizeItHas)
{
    show({QStringLiteral("cost")});
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.png"));
    EXPECT_EQ(writePicture(m_window.get(), path), QString());
    EXPECT_EQ(QImage(path).size(), QSize(1280, 720));
}

TEST_F(Window, SaysWhyAPictureCannotBeWritten)
{
    show({});
    const QString path = QStringLiteral("/nowhere/at/all/a.png");
    EXPECT_TRUE(writePicture(m_window.get(), path).startsWith(path));
}

} // namespace
} // namespace Terminal
