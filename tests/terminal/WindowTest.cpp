// The terminal's window with overlays on it, driven by mouse and keys.
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/lines/SeriesLabel.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/snapshot/Picture.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/PopupRow.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/OverlayLog.h"
#include "tests/terminal/Pixels.h"
#include "tests/terminal/SomeBars.h"
#include "tests/terminal/WhenOpen.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

#include <optional>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

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
        const Gate open = [](QObject *, const std::function<void()> &proceed) { proceed(); };
        const Gate answered = [this](QObject *, const std::function<void()> &proceed) {
            m_askedForAnswers += 1;
            if (m_moduleAnswers) {
                proceed();
            }
        };
        m_window->startOverlays(library.value(), {open, answered});
        QApplication::processEvents();
    }

    void TearDown() override { m_window.reset(); }

    /// The action of this name; null for none.
    QAction *action(const char *name)
    {
        const auto actions = m_window->findChildren<QAction *>();
        const auto found = std::find_if(actions.begin(), actions.end(), [name](const QAction *candidate) {
            return candidate->text() == QString::fromUtf8(name);
        });
        return found == actions.end() ? nullptr : *found;
    }
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

    bool m_moduleAnswers = true;
    int m_askedForAnswers = 0;
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
    EXPECT_EQ(question,
              QStringLiteral(u"撤单?\n买入[测试]\n状态:未成交\n编号:1\n委托价格:10.000\n委托数量:300"));
    EXPECT_EQ(defaultText, QStringLiteral(u"保留委托"));
    EXPECT_THAT(overlayLog(), HasSubstr("kept"));
}

TEST_F(Window, DressesListsAndQuestionsInItsTheme)
{
    for (const ThemeKind theme : {ThemeKind::Dark, ThemeKind::Light, ThemeKind::Dark}) {
        show({QStringLiteral("orders")}, ChartPeriod::Minute, theme);
        std::vector<QPalette> worn;
        whenOpen<QMenu>([&worn](QMenu *menu) {
            worn.push_back(menu->findChild<PopupRow *>()->palette());
            whenOpen<QMessageBox>([&worn](QMessageBox *box) {
                worn.push_back(box->palette());
                worn.push_back(box->defaultButton()->palette());
                QTest::keyClick(box, Qt::Key_Escape);
            });
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        click(onOrder());
        ASSERT_THAT(worn, ::testing::SizeIs(3));
        for (const QPalette &palette : worn) {
            const int text = palette.color(QPalette::WindowText).lightness();
            const int ground = palette.color(QPalette::Window).lightness();
            EXPECT_GT(theme == ThemeKind::Dark ? text - ground : ground - text, 100);
        }
    }
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

/// The keyboard's way over the marks.
class WindowWithKeys : public Window
{
protected:
    /// Few bars, so that every mark is one of its own.
    void showMarks()
    {
        show({QStringLiteral("trades")});
        QObject::connect(chart(), &ChartView::pointedBarChanged, chart(),
                         [this](int bar) { m_pointed = bar; });
        const auto last = static_cast<double>(chart()->data().bars.size());
        chart()->setSpan({last - 40, last});
        QApplication::processEvents();
    }
    void key(Qt::Key key)
    {
        QTest::keyClick(chart(), key);
        QApplication::processEvents();
    }
    /// Pixels of the ring's colour around the mark of a bar.
    int ringPixels(int bar) { return ringPixels(onMark(bar)); }
    int ringPixels(const QPointF &place)
    {
        const QPoint middle = chart()->canvas()->mapTo(chart(), place.toPoint());
        const QRect around(middle - QPoint(16, 30), QSize(32, 60));
        return pixelsOf(chart()->grab(around).toImage(), chart()->theme().accent);
    }

    int m_pointed = -1;
};

TEST_F(WindowWithKeys, GoesFromMarkToMark)
{
    showMarks();
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar()) << "the last in view is the first";
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 3);
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 6);
    key(Qt::Key_N);
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar());
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar()) << "there is no other";
}

TEST_F(WindowWithKeys, StartsWithTheFirstMarkInViewGoingForward)
{
    showMarks();
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 39) << "at the left edge of the view";
}

TEST_F(WindowWithKeys, MovesTheViewToAMarkBeyondIt)
{
    showMarks();
    key(Qt::Key_N);
    const BarSpan before = chart()->span();
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 42);
    EXPECT_LT(chart()->span().first, before.first - 10);
    EXPECT_DOUBLE_EQ(chart()->span().width(), before.width());
    EXPECT_GT(ringPixels(m_pointed), 30);
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 39);
}

TEST_F(WindowWithKeys, RingsAMergedMark)
{
    showMarks();
    chart()->showAll();
    QApplication::processEvents();
    const auto marks = m_window->overlays()->marks();
    const auto merged =
        std::find_if(marks.begin(), marks.end(), [](const ClickableMark &mark) { return mark.count > 1; });
    ASSERT_NE(merged, marks.end());
    const QPointF place = merged->box.center();
    EXPECT_EQ(ringPixels(place), 0);
    for (auto mark = marks.begin(); mark <= merged; ++mark) {
        key(Qt::Key_N);
    }
    EXPECT_GT(ringPixels(place), 30);
}

TEST_F(WindowWithKeys, FindsAMarkSeveralViewsAway)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    const double firstOrder = static_cast<int>(chart()->data().bars.size()) / 2 - 45;
    chart()->setSpan({0, 15});
    key(Qt::Key_N);
    EXPECT_LT(chart()->span().first, firstOrder);
    EXPECT_GT(chart()->span().last, firstOrder);
    whenOpen<QMenu>([](QMenu *menu) { menu->close(); });
    key(Qt::Key_Return);
    EXPECT_THAT(overlayLog(), HasSubstr("chose -1"));
}

TEST_F(WindowWithKeys, StaysWhereItIsWithoutAnyMark)
{
    show({QStringLiteral("cost")});
    chart()->setSpan({1000, 1100});
    key(Qt::Key_N);
    EXPECT_DOUBLE_EQ(chart()->span().first, 1000);
    key(Qt::Key_P);
    EXPECT_DOUBLE_EQ(chart()->span().first, 1000);
}

TEST_F(WindowWithKeys, DrawsARingAroundTheMark)
{
    showMarks();
    EXPECT_EQ(ringPixels(lastMarkedBar()), 0);
    key(Qt::Key_P);
    EXPECT_GT(ringPixels(lastMarkedBar()), 30);
    key(Qt::Key_P);
    EXPECT_EQ(ringPixels(lastMarkedBar()), 0);
    EXPECT_GT(ringPixels(lastMarkedBar() - 3), 30);
    key(Qt::Key_Escape);
    EXPECT_EQ(ringPixels(lastMarkedBar() - 3), 0);
    EXPECT_EQ(m_pointed, -1);
}

TEST_F(WindowWithKeys, OpensTheListAtTheMarkAndNotAtThePointer)
{
    showMarks();
    QCursor::setPos(chart()->mapToGlobal(QPoint(5, 5)));
    for (int i = 0; i < 4; ++i) {
        key(Qt::Key_N);
    }
    const int bar = lastMarkedBar() - 30;
    QRect place;
    whenOpen<QMenu>([&place](QMenu *menu) {
        place = menu->frameGeometry();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    key(Qt::Key_Return);
    const QPoint mark = chart()->canvas()->mapToGlobal(onMark(bar).toPoint());
    EXPECT_TRUE(place.adjusted(-30, -40, 30, 40).contains(mark))
        << place.x() << "," << place.y() << " for " << mark.x() << "," << mark.y();
    const std::string log = overlayLog();
    EXPECT_THAT(log, HasSubstr("press on bar " + std::to_string(bar)));
    EXPECT_THAT(log, HasSubstr("chose 0"));
}

TEST_F(WindowWithKeys, StaysWithItsMarkWhenTheViewMoves)
{
    showMarks();
    key(Qt::Key_N);
    key(Qt::Key_N);
    const int bar = m_pointed;
    key(Qt::Key_Minus);
    key(Qt::Key_Left);
    EXPECT_EQ(m_pointed, bar);
    whenOpen<QMenu>([](QMenu *menu) { menu->close(); });
    key(Qt::Key_Return);
    EXPECT_THAT(overlayLog(), HasSubstr("press on bar " + std::to_string(bar) + "\n"));
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, bar + 3);
}

TEST_F(WindowWithKeys, PressesNothingWithoutAMark)
{
    showMarks();
    key(Qt::Key_Return);
    key(Qt::Key_P);
    key(Qt::Key_Escape);
    key(Qt::Key_Return);
    EXPECT_THAT(overlayLog(), ::testing::Not(HasSubstr("press on")));
}

TEST_F(WindowWithKeys, LeavesTheMarkAtAClickOfTheMouse)
{
    showMarks();
    key(Qt::Key_P);
    click({300, 400});
    EXPECT_EQ(ringPixels(lastMarkedBar()), 0);
}

TEST_F(WindowWithKeys, HasNoMarkToGoToWithoutOverlays)
{
    show({});
    key(Qt::Key_N);
    key(Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(WindowWithKeys, ReachesTheQuestionForAnOrder)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    QString question;
    whenOpen<QMenu>([&question](QMenu *menu) {
        whenOpen<QMessageBox>([&question](QMessageBox *box) {
            question = box->informativeText();
            QTest::keyClick(box, Qt::Key_Tab);
            QTest::keyClick(box->focusWidget(), Qt::Key_Space);
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    key(Qt::Key_N);
    key(Qt::Key_Return);
    for (const QString &named : {QStringLiteral(u"买入"), QStringLiteral(u"测试"),
                                 QStringLiteral(u"委托价格:10.000"), QStringLiteral(u"委托数量:300")}) {
        EXPECT_TRUE(question.contains(named)) << qPrintable(named);
    }
    EXPECT_THAT(overlayLog(), HasSubstr("confirmed"));
}

/// The window in the language of a test's texts.
class WindowWithWords : public WindowWithKeys
{
protected:
    void speakEnglish()
    {
        action("English")->trigger();
        QApplication::processEvents();
    }
};

/// What a screen reader reads of the chart.
class SpokenChart : public WindowWithWords
{
protected:
    QString spoken(QAccessible::Text kind)
    {
        return QAccessible::queryAccessibleInterface(chart())->text(kind);
    }
};

TEST_F(SpokenChart, NamesTheSecurityTheRangeAndTheLastBar)
{
    showMarks();
    speakEnglish();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(chart())->role(), QAccessible::Chart);
    EXPECT_EQ(spoken(QAccessible::Name).toStdString(), "贵州茅台 600519, Day");
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::StartsWith("贵州茅台 600519, Day; 2021-10-11 to 2021-12-03, 40 bars; "
                                      "last 2021-12-03: close 1971.88, change +1.96%; "));
}

TEST_F(SpokenChart, CountsTheMarksInView)
{
    showMarks();
    chart()->grab();
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::EndsWith("; 买入 5, 卖出 4, 买卖 5"));
    speakEnglish();
    chart()->grab();
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::EndsWith("; buys 5, sells 4, both 5"));
    chart()->setSpan({lastMarkedBar() - 12.5, lastMarkedBar() + 0.5});
    chart()->grab();
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::EndsWith("; buys 2, sells 1, both 2"));
}

TEST_F(SpokenChart, ReadsTheCostUnlessAmountsAreHidden)
{
    show({QStringLiteral("cost")});
    chart()->grab();
    EXPECT_TRUE(spoken(QAccessible::Description).contains(QStringLiteral(u"; 持仓成本:1")));
    m_window->overlays()->setAmountsHidden(true);
    chart()->grab();
    EXPECT_TRUE(spoken(QAccessible::Description).endsWith(QStringLiteral(u"; 持仓成本:***")));
}

TEST_F(SpokenChart, ReadsTheMarkThatTheKeyboardIsOn)
{
    showMarks();
    speakEnglish();
    key(Qt::Key_P);
    const int kind = lastMarkedBar() / 3 % 3;
    const char *const names[] = {"buys", "sells", "both"};
    EXPECT_EQ(spoken(QAccessible::Value).toStdString(), std::string(names[kind]) + " 1, 2021-12-03");
    key(Qt::Key_Escape);
    EXPECT_EQ(spoken(QAccessible::Value), QString());
}

TEST_F(SpokenChart, SaysNothingWithoutBars)
{
    ChartView empty;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&empty)->text(QAccessible::Description), QString());
}

TEST_F(SpokenChart, ReadsWhereACostLiesThatTheScaleDoesNotShow)
{
    show({QStringLiteral("cost")});
    chart()->setSpan({-0.5, 50});
    chart()->grab();
    EXPECT_TRUE(spoken(QAccessible::Description).endsWith(QStringLiteral(u" ↑"))) << "as its label says";
}

TEST_F(Window, OffersToExportTheChartAtItsKey)
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

TEST_F(Window, ExportsTheChartWithoutTheAccount)
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

TEST_F(Window, LooksAsIfItHadBeenOpenedInTheThemeThatItIsChangedTo)
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

TEST_F(WindowWithWords, HasRoomForItsToolBarInBothLanguages)
{
    show({});
    ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Minute, 0));
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

/// The picture of the cost's label, as it stands at the right edge.
TEST_F(Window, HidesTheFiguresOfTheCostLabel)
{
    show({QStringLiteral("cost")});
    const QImage shown = canvasPicture();
    m_window->overlays()->setAmountsHidden(true);
    QApplication::processEvents();
    const QImage hidden = canvasPicture();
    const QRect label = seriesLabelBox(geometry(), costPrice(), QStringLiteral(u"持仓成本:***")).toRect();
    EXPECT_NE(shown.copy(label), hidden.copy(label));
    EXPECT_EQ(hidden.pixelColor(label.left() - 3, label.center().y() - 3), chart()->theme().background)
        << "no longer than its text";
    m_window->overlays()->setAmountsHidden(false);
    QApplication::processEvents();
    EXPECT_EQ(canvasPicture(), shown);
}

TEST_F(Window, HidesAmountsInTheListOfTrades)
{
    show({QStringLiteral("trades")});
    m_window->overlays()->setAmountsHidden(true);
    QApplication::processEvents();
    QString row;
    whenOpen<QMenu>([&row](QMenu *menu) {
        row = menu->actions().constFirst()->text();
        menu->close();
    });
    click(onMark(lastMarkedBar()));
    EXPECT_EQ(row, QStringLiteral(u"买入\t09:30:15\t成交价:10.50\t成交量:***"));
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

TEST_F(Window, ListsTheTradesOfTheCombinedOverlay)
{
    show({QStringLiteral("combined-trades")});
    QStringList rows;
    whenOpen<QMenu>([&rows](QMenu *menu) {
        for (const QAction *const action : menu->actions()) {
            rows.append(action->text());
        }
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click({300, 300});
    EXPECT_EQ(rows, QStringList({QStringLiteral(u"买入\t00:00:00\t成交价:10.50\t成交量:300"),
                                 QStringLiteral(u"卖出\t00:00:00\t成交价:11.50\t成交量:100")}));
    EXPECT_THAT(overlayLog(), HasSubstr("chose 1"));
}

TEST_F(Window, EndsCombinedOverlays)
{
    show({QStringLiteral("combined-cost")});
    EXPECT_THAT(overlayLog(), ::testing::StartsWith("made\ncombined {\"auto_refresh_time\":3,\"type\":0}\n"));
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("combined-cost")), false);
    EXPECT_EQ(overlayLog(), "ended\ndestroyed\n");
}

TEST_F(Window, CalculatesCombinedOverlaysOnlyWhenATradingModuleAnswers)
{
    m_moduleAnswers = false;
    show({QStringLiteral("cost"), QStringLiteral("combined-cost")});
    EXPECT_EQ(countOf(overlayLog(), "calc"), 2) << "those of the cost line alone";
    EXPECT_EQ(m_askedForAnswers, 1);
    m_window->overlays()->showHeard(QStringLiteral("600519"));
    EXPECT_EQ(m_askedForAnswers, 1) << "still waiting";

    m_moduleAnswers = true;
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("combined-trades")), true);
    EXPECT_EQ(countOf(overlayLog(), "calc 600519"), 1);
}

TEST_F(Window, ShowsWhatCombinedOverlaysOfItsSecurityHaveHeard)
{
    show({QStringLiteral("combined-cost"), QStringLiteral("combined-trades")});
    overlayLog();
    m_window->overlays()->showHeard(QStringLiteral("000001"));
    EXPECT_EQ(overlayLog(), "");
    m_window->overlays()->showHeard(QStringLiteral("600519"));
    EXPECT_EQ(countOf(overlayLog(), "calc 600519"), 2);
}

TEST_F(Window, MakesCombinedTradesAnewThatWereLost)
{
    show({QStringLiteral("combined-cost"), QStringLiteral("combined-trades"), QStringLiteral("trades")});
    overlayLog();
    m_window->overlays()->renewCombined(QStringLiteral("600519"));
    const std::string log = overlayLog();
    EXPECT_EQ(countOf(log, "ended\ndestroyed\n"), 1);
    EXPECT_EQ(countOf(log, "combined {\"auto_refresh_time\":3,\"type\":1}"), 1);
    EXPECT_EQ(countOf(log, "calc 600519"), 1);
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

struct ChartShape
{
    int bars; ///< in view
    int height;
};

/// A chart of two thousand bars, the last ones in view.
class MarksOnAChart : public ::testing::TestWithParam<ChartShape>
{
protected:
    static constexpr int barCount = 2000;

    MarksOnAChart()
    {
        m_chart.resize(1000, GetParam().height);
        m_chart.setData(dailyChart(barCount));
        m_chart.show();
        m_chart.setSpan({barCount - GetParam().bars - 0.5, barCount - 0.5});
        m_chart.grab();
        m_sprites.setLook(m_chart.theme(), 1);
        m_painter.emplace(m_chart.chartGeometry(), m_chart.visibleBars(), &m_sprites, &m_marks);
    }

    static int firstInView() { return barCount - GetParam().bars; }
    const Bar &bar(int number) const { return m_chart.data().bars[static_cast<size_t>(number)]; }

    void paint()
    {
        QImage image(m_chart.canvas()->size(), QImage::Format_RGB32);
        QPainter canvas(&image);
        m_painter->paint(&canvas);
    }

    ChartView m_chart;
    GlyphSprites m_sprites;
    DrawnMarks m_marks;
    std::optional<MarkPainter> m_painter; ///< of one repaint
};

TEST_P(MarksOnAChart, NeverHideAWick)
{
    for (int number = firstInView(); number < barCount; number += 2) {
        m_painter->addSeriesMark(number, bar(number).high, number % 3 * 2);
        m_painter->addSeriesMark(number, bar(number).low, number % 3 * 2 + 1);
    }
    paint();
    ASSERT_FALSE(m_marks.all().empty());
    const ChartGeometry &geometry = m_chart.chartGeometry();
    for (const DrawnMark &mark : m_marks.all()) {
        for (const BarColumn &column : m_chart.visibleBars().columns()) {
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
    int added = 0;
    for (int number = firstInView(); number < barCount; number += 2, ++added) {
        m_painter->addSeriesMark(number, bar(number).high, 0);
    }
    paint();
    int counted = 0;
    for (const DrawnMark &mark : m_marks.all()) {
        counted += mark.count;
        EXPECT_TRUE(m_marks.targetAt(mark.box.center()));
    }
    EXPECT_EQ(counted, added);
    EXPECT_FALSE(m_marks.targetAt({-50, -50}));
}

INSTANTIATE_TEST_SUITE_P(Shapes, MarksOnAChart,
                         ::testing::Values(ChartShape{20, 600}, ChartShape{100, 600}, ChartShape{400, 600},
                                           ChartShape{1999, 600}, ChartShape{20, 200},
                                           ChartShape{1999, 150}));

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
