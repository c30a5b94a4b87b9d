// Trades and working orders on the chart of a window, against a module that says what the test wants.
#include "terminal/trades/ChartTrades.h"

#include "terminal/trade/ElidedLabel.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/PriceBox.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trades/PriceDialog.h"
#include "terminal/trades/TradesPanel.h"
#include "tests/support/TestBroker.h"
#include "tests/terminal/support/Controls.h"
#include "tests/terminal/support/ModuleAnswers.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "tests/terminal/support/WhenOpen.h"
#include "tests/terminal/support/WindowFixture.h"
#include "tests/terminal/trades/SomeTrades.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

namespace Terminal {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ChartTradesTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray()));
        m_module.setAnswer(QStringLiteral("EntrustHistoryTrade"), withData(QJsonArray()));
        m_module.setAnswer(QStringLiteral("AccountInfo"), withData(QJsonObject()));
        m_module.setAnswer(QStringLiteral("HistoryTrade"), withData(QJsonArray()));
        m_module.setAnswer(QStringLiteral("TodayTrade"), withData(QJsonArray()));
        ASSERT_TRUE(waitUntil([this] { return m_module.isReady(); }));
    }

    void open(const OpenedChart &chart)
    {
        TerminalOptions options;
        options.size = QSize(1280, 720);
        openWindow(chart, options);
        speakEnglish();
        desk()->start(m_broker.address());
        desk()->setModule([] { return DeskModule{true, QStringLiteral("a"), {}, true}; });
        m_window->trades()->start(m_broker.address());
        ASSERT_TRUE(waitUntil([this] { return desk()->isUpToDate() && trades()->desk()->isUpToDate(); }));
    }

    /// A working sell of 300 shares of today at a price near the last.
    void openWithAnOrder()
    {
        open({QStringLiteral("600519"), ChartPeriod::Day});
        QJsonObject row = orderRow("5", "2");
        row[QStringLiteral("orderdate")] = Trading::TradingDate::today().text();
        row[QStringLiteral("orderprice")] = QString::number(lastClose(), 'f', 2);
        row[QStringLiteral("matchqty")] = QStringLiteral("0");
        row[QStringLiteral("matchamt")] = QStringLiteral("0.00");
        m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray{row}));
        desk()->refresh();
        ASSERT_TRUE(waitUntil([this] { return trades()->lines()->orders().size() == 1; }));
    }

    double lastClose() { return std::round(chart()->data().bars.back().close * 100) / 100; }
    ChartTrades *trades() { return m_window->trades(); }
    QPoint tagPlace()
    {
        return {static_cast<int>(geometry().right) - 20, static_cast<int>(geometry().priceToY(lastClose()))};
    }

    void mouse(QEvent::Type type, const QPoint &place)
    {
        QMouseEvent event(type, place, chart()->canvas()->mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(chart()->canvas(), &event);
    }

    void dragBy(int pixels)
    {
        const QPoint start = tagPlace();
        mouse(QEvent::MouseButtonPress, start);
        mouse(QEvent::MouseMove, start + QPoint(0, pixels));
    }

    void release(int pixels) { mouse(QEvent::MouseButtonRelease, tagPlace() + QPoint(0, pixels)); }

    /// Answers the question that opens.
    void answerQuestion(bool yes)
    {
        whenOpen<QMessageBox>([this, yes](QMessageBox *box) {
            m_question = box->text();
            const auto buttons = box->buttons();
            QAbstractButton *const no = box->defaultButton();
            (yes ? (buttons.front() == no ? buttons.back() : buttons.front()) : no)->click();
        });
    }

    std::vector<QJsonObject> replacements() { return m_module.asked(QStringLiteral("Replace")); }

    QJsonObject replacement(const char *state, const char *newNumber = "")
    {
        return withData(QJsonObject{{QStringLiteral("ordersno"), QStringLiteral("5")},
                                    {QStringLiteral("replacement"), QLatin1String(state)},
                                    {QStringLiteral("newordersno"), QLatin1String(newNumber)},
                                    {QStringLiteral("reason"), QStringLiteral("no cash")}});
    }

    TestBroker m_broker;
    ScriptedModule m_module{m_broker.address()};
    QString m_question;
};

TEST_F(ChartTradesTest, MarksTradesOnWeeksAndLeadsToThemAndBack)
{
    m_module.setAnswer(QStringLiteral("HistoryTrade"),
                       withData(QJsonArray{tradeRow("20200611", "10000000", "B", "1400", "100"),
                                           tradeRow("20210311", "10000000", "S", "1400", "100")}));
    open({QStringLiteral("600519"), ChartPeriod::Week});
    ASSERT_THAT(trades()->desk()->trades(), SizeIs(2));

    Q_EMIT trades()->panel()->placeAsked(0);
    const auto marks = trades()->layer()->marks();
    const auto shown = std::find_if(marks.begin(), marks.end(), [](const TradeMark &mark) {
        return mark.trades == std::vector<size_t>{0};
    });
    ASSERT_NE(shown, marks.end());
    EXPECT_NEAR(shown->place.x(), (geometry().left + geometry().right) / 2, geometry().barWidth());

    QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, shown->place.toPoint());
    EXPECT_THAT(trades()->panel()->selected(), ElementsAre(0U));
}

TEST_F(ChartTradesTest, AreReachedByTheKeyboard)
{
    m_module.setAnswer(QStringLiteral("HistoryTrade"),
                       withData(QJsonArray{tradeRow("20200611", "10000000", "B", "1400", "100"),
                                           tradeRow("20210311", "10000000", "S", "1400", "100")}));
    open({QStringLiteral("600519"), ChartPeriod::Week});
    m_window->show();
    QTest::keyClick(chart(), Qt::Key_P);
    EXPECT_THAT(chart()->announcement().toStdString(), ::testing::HasSubstr("sells 1"));
    QTest::keyClick(chart(), Qt::Key_P);
    EXPECT_THAT(chart()->announcement().toStdString(), ::testing::HasSubstr("buys 1"));
    QTest::keyClick(chart(), Qt::Key_Return);
    EXPECT_THAT(trades()->panel()->selected(), ElementsAre(0U));
}

TEST_F(ChartTradesTest, GoesFromTheMinutesOfOneDayToThoseOfTheTrade)
{
    m_module.setAnswer(QStringLiteral("HistoryTrade"),
                       withData(QJsonArray{tradeRow("20200611", "10000000", "B", "1400", "100")}));
    open({QStringLiteral("600519"), ChartPeriod::Minute});
    EXPECT_THAT(trades()->layer()->marks(), IsEmpty());

    Q_EMIT trades()->panel()->placeAsked(0);

    EXPECT_EQ(chart()->data().period, ChartPeriod::Day) << "its minutes are not recorded";
    EXPECT_THAT(trades()->layer()->marks(), SizeIs(1));
}

TEST_F(ChartTradesTest, LeadFromAPositionToItsTradesAndBack)
{
    m_module.setAnswer(QStringLiteral("HistoryTrade"),
                       withData(QJsonArray{tradeRow("20200611", "10000000", "B", "14", "100"),
                                           tradeRow("20210311", "10000000", "S", "14", "100")}));
    open({QStringLiteral("600519"), ChartPeriod::Day});
    activateWindow();
    QTest::keyClick(chart(), Qt::Key_F3);
    const BarSpan before = chart()->span();
    auto *const list = QApplication::focusWidget();

    Q_EMIT m_window->trade()->panel()->tradesAsked({QStringLiteral("000001"), Market::Shenzhen, {}});
    ASSERT_TRUE(waitUntil([this] { return !trades()->panel()->selected().empty(); }));
    EXPECT_EQ(chart()->data().security.code, QStringLiteral("000001"));
    EXPECT_THAT(trades()->panel()->selected(), ElementsAre(1U)) << "the newest";
    EXPECT_LT(chart()->span().last, static_cast<double>(chart()->data().bars.size())) << "it is in view";

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(chart()->data().security.code, QStringLiteral("600519"));
    EXPECT_DOUBLE_EQ(chart()->span().first, before.first);
    EXPECT_EQ(QApplication::focusWidget(), list);
    EXPECT_TRUE(list->isVisible());
}

TEST_F(ChartTradesTest, AreNotToldAsNoneOfANewSecurityBeforeTheModuleAnswers)
{
    open({QStringLiteral("600519"), ChartPeriod::Day});
    const auto *const caption = trades()->panel()->findChild<ElidedLabel *>();
    ASSERT_TRUE(waitUntil([=] { return caption->text().endsWith(QLatin1String(": 0")); }));
    m_module.setSilent(QStringLiteral("HistoryTrade"));

    ASSERT_TRUE(m_window->load(QStringLiteral("000001"), ChartPeriod::Day));
    EXPECT_THAT(caption->text().toStdString(), ::testing::HasSubstr("no answer from the trading module"));
}

TEST_F(ChartTradesTest, LeadBackToThePositionsWhereTheChartStayedAsItWas)
{
    open({QStringLiteral("600519"), ChartPeriod::Day});
    activateWindow();
    QTest::keyClick(chart(), Qt::Key_F3);
    auto *const list = QApplication::focusWidget();
    Q_EMIT m_window->trade()->panel()->tradesAsked(chart()->data().security);
    EXPECT_NE(QApplication::focusWidget(), list);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), list);
}

TEST_F(ChartTradesTest, LeadsFromAnOrderToTheChartOfItsSecurity)
{
    open({QStringLiteral("600519"), ChartPeriod::Day});
    OrderRecord order;
    order.security = {QStringLiteral("600536"), Market::Shanghai, {}};
    Q_EMIT m_window->trade()->panel()->placeAsked(order);
    EXPECT_EQ(chart()->data().security.code, QStringLiteral("600536"));
}

TEST_F(ChartTradesTest, DrawsNothingWhenItIsSwitchedOff)
{
    openWithAnOrder();
    trades()->layerAction()->setChecked(false);
    EXPECT_EQ(trades()->lines()->orderAt(tagPlace()), nullptr);
    EXPECT_FALSE(trades()->desk()->isWatching());
    EXPECT_FALSE(m_window->shownOptions().showsTrades);
}

TEST_F(ChartTradesTest, AsksToReplaceAnOrderThatWasDragged)
{
    openWithAnOrder();
    answerQuestion(true);
    dragBy(-40);
    release(-40);

    ASSERT_TRUE(m_module.wasAsked("Replace", 1));
    EXPECT_TRUE(m_question.startsWith(
        QStringLiteral("Replace order 5 from %1 to ").arg(QString::number(lastClose(), 'f', 2))))
        << qPrintable(m_question);
    const QJsonObject asked = replacements().front();
    EXPECT_EQ(asked[QStringLiteral("ordersno")], QJsonValue(QStringLiteral("5")));
    EXPECT_FALSE(asked[QStringLiteral("clientno")].toString().isEmpty());
    const double price = asked[QStringLiteral("orderprice")].toString().toDouble();
    EXPECT_GT(price, lastClose());
    EXPECT_NEAR(price * 100, std::round(price * 100), 1e-6) << "whole steps";
}

TEST_F(ChartTradesTest, SendsNothingWhenTheUserSaysNo)
{
    openWithAnOrder();
    answerQuestion(false);
    dragBy(-40);
    release(-40);
    EXPECT_FALSE(m_question.isEmpty());
    EXPECT_THAT(replacements(), IsEmpty());
}

TEST_F(ChartTradesTest, TakesADragBackAtEscape)
{
    openWithAnOrder();
    dragBy(-40);
    QTest::keyClick(chart(), Qt::Key_Escape);
    mouse(QEvent::MouseMove, tagPlace() + QPoint(0, -60));
    release(-60);
    EXPECT_TRUE(m_question.isEmpty());
    EXPECT_NE(trades()->lines()->orderAt(tagPlace()), nullptr) << "the line is where it was";
}

TEST_F(ChartTradesTest, ForgetsADragWhoseButtonWasReleasedElsewhere)
{
    openWithAnOrder();
    dragBy(-40);
    const QPoint place = tagPlace() + QPoint(0, -60);
    QMouseEvent pointing(QEvent::MouseMove, place, chart()->canvas()->mapToGlobal(place), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(chart()->canvas(), &pointing);
    release(-60);
    EXPECT_TRUE(m_question.isEmpty());
    EXPECT_NE(trades()->lines()->orderAt(tagPlace()), nullptr) << "the line is where it was";
}

TEST_F(ChartTradesTest, AsksNothingAboutAnOrderThatWasDealtWhileItWasDragged)
{
    openWithAnOrder();
    dragBy(-40);
    m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray()));
    desk()->refresh();
    ASSERT_TRUE(waitUntil([this] { return trades()->lines()->orders().empty(); }));
    release(-40);
    EXPECT_TRUE(m_question.isEmpty());
    EXPECT_THAT(replacements(), IsEmpty());
}

/// One security that closed at 10.00 on the day before.
class ChartTradesOnTheirDay : public ChartTradesTest
{
protected:
    void open(const QByteArray &code, const QByteArray &market)
    {
        QDir(m_folder.path()).mkdir(QStringLiteral("daily"));
        write("securities.csv", "code,market,name\n" + code + ',' + market + ",Test\n");
        const Trading::TradingDate day =
            m_plan.practised ? m_plan.practised->day : Trading::TradingDate::today();
        const QByteArray dayBefore = day.plusDays(-1).text().toLatin1();
        write("daily/" + code + ".csv",
              "date,open,high,low,close,volume\n" + dayBefore + ",10,10,10,10,1000\n");
        makeWindow(TerminalOptions(), m_folder.path());
        load({QString::fromLatin1(code), ChartPeriod::Day});
    }

    void write(const QByteArray &name, const QByteArray &content)
    {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    const QTemporaryDir m_folder;
};

TEST_F(ChartTradesOnTheirDay, HoldAPriceWithinTheLimitsOfThePractisedDay)
{
    m_plan.practised = PractisedDay{QStringLiteral("300750"), onDay(20200821), {}};
    open("300750", "SZ");
    EXPECT_DOUBLE_EQ(trades()->allowedPrice(99), 11) << "10 % until the reform of the board";
    m_plan.practised = PractisedDay{QStringLiteral("300750"), onDay(20200824), {}};
    open("300750", "SZ");
    EXPECT_DOUBLE_EQ(trades()->allowedPrice(99), 12);
}

TEST_F(ChartTradesOnTheirDay, AskForAnotherPriceByTheTickOfThePractisedDay)
{
    const auto decimals = [this](int day) {
        m_plan.practised = PractisedDay{QStringLiteral("113050"), onDay(day), {}};
        open("113050", "SH");
        desk()->setModule([] { return DeskModule{true, QStringLiteral("a"), {}, true}; });
        int asked = 0;
        whenOpen<PriceDialog>([&asked](PriceDialog *dialog) {
            asked = dialog->findChild<PriceBox *>()->decimals();
            dialog->reject();
        });
        OrderRecord order;
        order.security = chart()->data().security;
        order.price = 10;
        order.quantity = 10;
        Q_EMIT m_window->trade()->panel()->priceAsked(order);
        return asked;
    };
    EXPECT_EQ(decimals(20220729), 2);
    EXPECT_EQ(decimals(20220801), 3);
}

TEST_F(ChartTradesOnTheirDay, HoldAPriceOnTicksAndWithinTheLimitsOfTheDay)
{
    open("600519", "SH");

    EXPECT_DOUBLE_EQ(trades()->allowedPrice(99), 11);
    EXPECT_DOUBLE_EQ(trades()->allowedPrice(1), 9);
    EXPECT_DOUBLE_EQ(trades()->allowedPrice(10.004), 10);
}

TEST_F(ChartTradesTest, ChoosesTheRowOfAnOrderThatIsClicked)
{
    openWithAnOrder();
    QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, tagPlace());
    ASSERT_THAT(m_window->trade()->panel()->selected(), SizeIs(1));
}

TEST_F(ChartTradesTest, DoesNotPanWhileAnOrderIsDragged)
{
    openWithAnOrder();
    const BarSpan before = chart()->span();
    const QPoint start = tagPlace();
    mouse(QEvent::MouseButtonPress, start);
    mouse(QEvent::MouseMove, start + QPoint(-200, -40));
    EXPECT_EQ(chart()->span().first, before.first);
    QTest::keyClick(chart(), Qt::Key_Escape);
    release(-40);
}

TEST_F(ChartTradesTest, LeavesTheOrderAloneThatTheModuleCannotReplace)
{
    openWithAnOrder();
    desk()->setModule([] { return DeskModule{true, QStringLiteral("a"), {}, false}; });
    dragBy(-40);
    release(-40);
    EXPECT_TRUE(m_question.isEmpty());
}

TEST_F(ChartTradesTest, ChangesAPriceByTheKeyboardAlone)
{
    openWithAnOrder();
    whenOpen<PriceDialog>([this](PriceDialog *dialog) {
        answerQuestion(true);
        auto *const box = dialog->findChild<PriceBox *>();
        box->selectAll();
        QTest::keyClicks(box, QString::number(lastClose() + 1, 'f', 2));
        QTest::keyClick(box, Qt::Key_Return);
    });
    Q_EMIT m_window->trade()->panel()->priceAsked(trades()->lines()->orders().front());
    ASSERT_TRUE(m_module.wasAsked("Replace", 1));
    EXPECT_EQ(replacements().front()[QStringLiteral("orderprice")].toString(),
              QString::number(lastClose() + 1, 'f', 2));
}

TEST_F(ChartTradesTest, ShowWhichControlOfTheirQuestionsHasTheKeyboard)
{
    openWithAnOrder();
    std::vector<std::string> unseen;
    std::vector<std::string> nameless;
    const auto look = [&](QDialog *dialog) {
        QApplication::setActiveWindow(dialog); // a bare screen has nobody who does
        for (const auto &[found, all] :
             {std::pair(controlsWithUnseenFocus(dialog, dialog->focusWidget()), &unseen),
              std::pair(namelessControls(*dialog), &nameless)}) {
            all->insert(all->end(), found.begin(), found.end());
        }
    };
    whenOpen<PriceDialog>([&](PriceDialog *dialog) {
        look(dialog);
        whenOpen<QMessageBox>([&](QMessageBox *box) {
            look(box);
            box->reject();
        });
        dialog->findChild<PriceBox *>()->setValue(lastClose() + 1);
        dialog->accept();
    });
    Q_EMIT m_window->trade()->panel()->priceAsked(trades()->lines()->orders().front());
    EXPECT_THAT(unseen, IsEmpty());
    EXPECT_THAT(nameless, IsEmpty());
    EXPECT_THAT(replacements(), IsEmpty());
}

/// A desk that has asked for a replacement.
class ChartTradesReplacing : public ChartTradesTest
{
protected:
    void SetUp() override
    {
        ChartTradesTest::SetUp();
        openWithAnOrder();
        desk()->setTimeout(100ms);
        QObject::connect(
            desk(), &OrderDesk::replaced, desk(),
            [this](const PriceChange &, const DeskOutcome &outcome) { m_outcomes.push_back(outcome); });
    }

    void ask() { desk()->replace({trades()->lines()->orders().front(), lastClose() + 1}); }

    std::vector<DeskOutcome> m_outcomes;
};

TEST_F(ChartTradesReplacing, AsksAgainWhileItWaitsAndTellsTheEnd)
{
    m_module.setAnswer(QStringLiteral("Replace"), replacement("waiting"));
    ask();
    ASSERT_TRUE(waitUntil([this] {
        return replacements().size() > static_cast<size_t>(OpenWishes::mostTries);
    })) << "as long as the module says so";
    EXPECT_THAT(m_outcomes, IsEmpty());
    EXPECT_EQ(replacements().front()[QStringLiteral("clientno")],
              replacements().back()[QStringLiteral("clientno")]);

    m_module.setAnswer(QStringLiteral("Replace"), replacement("placed", "6"));
    ASSERT_TRUE(waitUntil([this] { return !m_outcomes.empty(); }));
    EXPECT_EQ(m_outcomes.front().replacement, Trading::ReplacementState::Placed);
    EXPECT_EQ(m_outcomes.front().text, QStringLiteral("6"));
}

TEST_F(ChartTradesReplacing, IsNotEndedByAModuleThatCannotLookIntoItsLedgerForAWhile)
{
    m_module.setAnswer(QStringLiteral("Replace"), replacement("waiting"));
    ask();
    ASSERT_TRUE(waitUntil([this] { return replacements().size() > 1; }));
    QJsonObject away = refusedWith("the ledger is busy");
    away[QStringLiteral("errcode")] = 2;
    m_module.setAnswer(QStringLiteral("Replace"), away);
    const size_t before = replacements().size();
    ASSERT_TRUE(waitUntil([&] { return replacements().size() > before + 1; }));
    EXPECT_THAT(m_outcomes, IsEmpty()) << "the module goes on with it";

    m_module.setAnswer(QStringLiteral("Replace"), replacement("placed", "6"));
    ASSERT_TRUE(waitUntil([this] { return !m_outcomes.empty(); }));
    EXPECT_EQ(m_outcomes.front().replacement, Trading::ReplacementState::Placed);
}

TEST_F(ChartTradesReplacing, AsksAtOnceWhenTheModuleTellsOfAChange)
{
    m_module.setAnswer(QStringLiteral("Replace"), replacement("waiting"));
    desk()->setTimeout(20s); // no try ends by itself
    ask();
    ASSERT_TRUE(m_module.wasAsked("Replace", 1));
    ASSERT_TRUE(waitUntil([this] {
        m_module.notify(QStringLiteral("600519"));
        return waitUntil([this] { return replacements().size() > 1; }, 100ms);
    }));
    m_module.setAnswer(QStringLiteral("Replace"), replacement("dealt"));
    m_module.notify(QStringLiteral("600519"));
    ASSERT_TRUE(waitUntil([this] { return !m_outcomes.empty(); }));
    EXPECT_EQ(m_outcomes.front().replacement, Trading::ReplacementState::Dealt);
}

TEST_F(ChartTradesReplacing, AsksAgainWithoutAnAnswerAndThenSaysSo)
{
    ask();
    ASSERT_TRUE(waitUntil([this] { return !m_outcomes.empty(); }));
    EXPECT_EQ(m_outcomes.front().kind, DeskOutcome::Kind::NoAnswer);
    EXPECT_THAT(replacements(), SizeIs(OpenWishes::mostTries));
}

TEST_F(ChartTradesReplacing, TellsThatNoOrderStandsInItsPlace)
{
    m_module.setAnswer(QStringLiteral("Replace"), replacement("failed"));
    ask();
    ASSERT_TRUE(waitUntil([this] { return !m_outcomes.empty(); }));
    EXPECT_EQ(m_outcomes.front().replacement, Trading::ReplacementState::Failed);
    EXPECT_EQ(m_outcomes.front().text, QStringLiteral("no cash"));
}

TEST_F(ChartTradesReplacing, TellsWhyItIsRefused)
{
    m_module.setAnswer(QStringLiteral("Replace"), refusedWith("dealt"));
    ask();
    ASSERT_TRUE(waitUntil([this] { return !m_outcomes.empty(); }));
    EXPECT_EQ(m_outcomes.front().kind, DeskOutcome::Kind::Refused);
    EXPECT_EQ(m_outcomes.front().text, QStringLiteral("dealt"));
}

} // namespace
} // namespace Terminal
