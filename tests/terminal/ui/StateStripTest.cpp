// What the window says of its overlays and of the trading module.
#include "terminal/ui/StateStrip.h"
#include "terminal/ui/MessageBar.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QTextDocument>
#include <QToolButton>

namespace Terminal {
namespace {

using ::testing::ElementsAre;

class StateStripTest : public OverlayWindow
{
protected:
    void open(const QStringList &overlays)
    {
        show(overlays);
        speakEnglish();
    }

    /// Has the window's overlays answered.
    void answer(const char *json) { m_window->answers()->take("TradeQuery", json, m_window->screenId()); }
    QStringList texts() const { return m_window->findChild<StateStrip *>()->texts(); }
    bool isSaid(const QString &text) const
    {
        return waitUntil([=] { return texts().contains(text); });
    }
    /// The test's overlay draws its line without asking anybody.
    QString costDrawn(const char16_t *title)
    {
        return QString::fromUtf16(title) + QString::number(costPrice(), 'f', 3);
    }
    QLabel *state(const char *word) const
    {
        return m_window->findChild<QLabel *>(QStringLiteral("state-") + QLatin1String(word));
    }
    QString message() const
    {
        auto *const bar = m_window->findChild<MessageBar *>();
        return bar->isVisible() ? bar->text() : QString();
    }

    /// A tip whose markup begins only after its first line is shown as it is.
    static QString asTipShows(const QString &tip)
    {
        QTextDocument shown;
        Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
        return shown.toPlainText();
    }

    static constexpr auto refused =
        R"({"cmd":"HolderCostPrice","stkcode":"600519","success":false,"msg":"the ledger is busy"})";
};

TEST_F(StateStripTest, AreThoseOfTheOverlaysOnTheChart)
{
    open({QStringLiteral("cost"), QStringLiteral("orders")});
    EXPECT_TRUE(isSaid(costDrawn(u"Cost: ")));
    EXPECT_THAT(texts(), ElementsAre(costDrawn(u"Cost: "), QStringLiteral("Orders: not on this chart"),
                                     QStringLiteral("Trading module: not asked")));
}

TEST_F(StateStripTest, GoWithTheirOverlay)
{
    open({QStringLiteral("cost")});
    ASSERT_TRUE(isSaid(costDrawn(u"Cost: ")));
    action("Cost")->trigger();
    EXPECT_TRUE(waitUntil([this] { return texts().size() == 1; }));
}

TEST_F(StateStripTest, SayThatThereIsNothing)
{
    open({QStringLiteral("cost")});
    answer(R"({"cmd":"HolderCostPrice","stkcode":"600519","data":{"stkcode":"600519","market":"1"}})");
    EXPECT_TRUE(isSaid(QStringLiteral("Cost: nothing there")));
}

TEST_F(StateStripTest, CountMarksAndSayWhenTheyAreOutOfView)
{
    open({QStringLiteral("trades")});
    answer(R"({"cmd":"HistoryTrade","stkcode":"600519","data":[{"bizdate":"20240102","matchtime":"09300000",
        "bsflag2":"B","matchprice":"10","matchqty":"100"}]})");
    const auto last = static_cast<double>(chart()->data().bars.size());
    chart()->setSpan({last - 40, last});
    EXPECT_TRUE(waitUntil([this] { return texts().front().startsWith(QLatin1String("Trades: in view: ")); }));
}

TEST_F(StateStripTest, TellARefusalInMessageStripAndTip)
{
    open({QStringLiteral("cost")});
    answer(refused);
    EXPECT_EQ(message(), QStringLiteral("HolderCostPrice: refused: the ledger is busy"));
    EXPECT_TRUE(isSaid(QStringLiteral("Cost: refused")));
    EXPECT_EQ(state("cost")->toolTip(), QStringLiteral("HolderCostPrice: refused: the ledger is busy"));
    EXPECT_EQ(state("cost")->accessibleName(), QStringLiteral("Cost: refused"));
    EXPECT_TRUE(action("Cost")->toolTip().contains(QStringLiteral("the ledger is busy")));
}

TEST_F(StateStripTest, ShowMarkupOfARefusalAsItIsWritten)
{
    open({QStringLiteral("cost")});
    const QString msg = QStringLiteral("<b>all is well</b><!--");
    answer(R"({"cmd":"HolderCostPrice","stkcode":"600519","success":false,"msg":"<b>all is well</b><!--"})");
    ASSERT_TRUE(isSaid(QStringLiteral("Cost: refused")));
    for (const QString &tip : {state("cost")->toolTip(), action("Cost")->toolTip()}) {
        EXPECT_TRUE(asTipShows(tip).contains(msg)) << qPrintable(tip);
    }
}

TEST_F(StateStripTest, TellTheFaultsOfSeveralAnswersTogether)
{
    open({QStringLiteral("cost"), QStringLiteral("trades")});
    answer(refused);
    answer(R"({"cmd":"TodayTrade","stkcode":"600519","success":false,"msg":"closed"})");
    EXPECT_EQ(message(),
              QStringLiteral("HolderCostPrice: refused: the ledger is busy\nTodayTrade: refused: closed"));
}

TEST_F(StateStripTest, TellARefusalOnce)
{
    open({QStringLiteral("cost")});
    answer(refused);
    m_window->findChild<MessageBar *>()->hide();
    answer(refused);
    EXPECT_EQ(message(), QString());
}

TEST_F(StateStripTest, HaveTheToggleSayHowItStands)
{
    open({QStringLiteral("cost")});
    ASSERT_TRUE(isSaid(costDrawn(u"Cost: ")));
    EXPECT_EQ(action("Cost")->toolTip(), costDrawn(u"Cost: "));
    EXPECT_EQ(action("Trades")->toolTip(), QStringLiteral("Trades"));
}

TEST_F(StateStripTest, SpeakTheLanguageOfTheWindow)
{
    open({QStringLiteral("cost")});
    ASSERT_TRUE(isSaid(costDrawn(u"Cost: ")));
    action("中文")->trigger();
    EXPECT_TRUE(isSaid(costDrawn(u"持仓成本：")));
}

TEST_F(StateStripTest, SayWhyThereIsNoTradingModule)
{
    open({});
    m_window->services()->noteModuleFailure(QStringLiteral("the ledger is corrupt"));
    EXPECT_THAT(texts(), ElementsAre(QStringLiteral("Trading module: does not run")));
    EXPECT_EQ(state("module")->toolTip(), QStringLiteral("the ledger is corrupt"));
}

TEST_F(StateStripTest, AreMadeAnewWithTheOverlaysWhosePastTradesChanged)
{
    open({QStringLiteral("trades"), QStringLiteral("cost")});
    overlayLog();
    m_window->answers()->take("TradeNotify", R"({"stkcode":"600519","market":"1","bizdate":"20240102"})",
                              "Global");
    EXPECT_EQ(countOf(overlayLog(), "made"), 1) << "the trades";
}

TEST_F(StateStripTest, LeaveTheOverlaysAloneWhenAnOrderChanged)
{
    open({QStringLiteral("trades"), QStringLiteral("cost")});
    overlayLog();
    m_window->answers()->take("TradeNotify", R"({"stkcode":"600519","market":"1","ordersno":"7"})", "Global");
    m_window->answers()->take("TradeNotify", R"({"stkcode":"000001","market":"2","bizdate":"20240102"})",
                              "Global");
    EXPECT_EQ(countOf(overlayLog(), "made"), 0);
}

TEST(StateStripOfLongStates, NeedsNoWideWindow)
{
    StateStrip strip;
    for (const OverlayKind &kind : overlayKinds()) {
        strip.showOverlay(kind, QStringLiteral("in view: 35; no answer since 10:15:03"), {}, true);
    }
    strip.showBus({BusState::Lost});
    strip.showModule({ModuleState::Silent});
    EXPECT_LT(strip.minimumSizeHint().width(), 640);
    auto *const module = strip.findChild<QLabel *>(QStringLiteral("state-module"));
    EXPECT_EQ(module->minimumSizeHint().width(), module->sizeHint().width())
        << "the module's is told in full";
}

class StateStripOfAModule : public ::testing::TestWithParam<std::pair<ModuleState::Kind, const char *>>
{
};

TEST_P(StateStripOfAModule, IsShort)
{
    EXPECT_EQ(moduleStateText({GetParam().first}), QLatin1String(GetParam().second));
}

TEST(StateStripOfVersions, TellsWhenTheModuleIsOfAnother)
{
    Trading::TradePresence module;
    module.version = QStringLiteral("0.2.0");
    const QString other = QStringLiteral("This terminal has version 0.1.0");

    EXPECT_TRUE(introductionOf(module, QStringLiteral("0.1.0")).contains(other));
    EXPECT_FALSE(introductionOf(module, QStringLiteral("0.2.0")).contains(QLatin1String("This terminal")));
    module.version.clear();
    EXPECT_FALSE(introductionOf(module, QStringLiteral("0.1.0")).contains(other)) << "it does not say";
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, StateStripOfAModule,
    ::testing::Values(std::pair(ModuleState::Awaited, "Trading module: waiting for it"),
                      std::pair(ModuleState::NoBus, "Trading module: no bus"),
                      std::pair(ModuleState::Absent, "Trading module: none answers"),
                      std::pair(ModuleState::Refusing, "Trading module: refuses"),
                      std::pair(ModuleState::Silent, "Trading module: does not answer any more"),
                      std::pair(ModuleState::Answering, "Trading module: answers"),
                      std::pair(ModuleState::Starting, "Trading module: starting"),
                      std::pair(ModuleState::OtherVersion, "Trading module: answers, of another version"),
                      std::pair(ModuleState::Foreign, "Trading module: of another ledger"),
                      std::pair(ModuleState::ReadOnly, "Trading module: answers, takes no orders")));

} // namespace
} // namespace Terminal
