#include "terminal/session/StatementActions.h"
#include "terminal/live/ChartSource.h"
#include "terminal/live/Today.h"
#include "terminal/replay/Replay.h"
#include "tests/support/TestBroker.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ScriptedModule.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const Trading::SecurityId liquor{QStringLiteral("600519"), Trading::Market::Shanghai};

QJsonObject row(const char *day, const char *held, const char *cash, const char *bonus)
{
    return {{QStringLiteral("date"), QLatin1String(day)},
            {QStringLiteral("held"), QLatin1String(held)},
            {QStringLiteral("cash"), QLatin1String(cash)},
            {QStringLiteral("bonus"), QLatin1String(bonus)}};
}

QJsonObject withRows(const QJsonArray &rows)
{
    return {{QStringLiteral("data"), rows}};
}

TEST(StatementActions, LeaveOutRowsThatLackWhatIsNeeded)
{
    const QJsonArray rows{row("20130620", "1000", "170.00", "600"),
                          row("20130631", "1000", "170.00", "600"),
                          row("20130621", "many", "170.00", "600"),
                          row("20130621", "1000", "much", "600"),
                          row("20130621", "1000", "170.00", "0.5"),
                          row("20130621", "9223372036854775807", "170.00", "600"),
                          row("20130621", "1000", "170.00", "9223372036854775807"),
                          row("20130621", "1000", "170.00", "-9223372036854775807"),
                          QJsonObject(),
                          QStringLiteral("text")};
    EXPECT_EQ(bookedActionsOf(withRows(rows)),
              BookedActions({{onDay(20130620), 1000, Trading::Money::ofCents(17000), 600}}));
}

/// Asks a module on a real bus for the charts of the sample data.
class StatementActionsOnABus : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_actions.setIsKnown([this] { return m_isKnown; });
        QObject::connect(&m_actions, &StatementActions::changed, &m_actions,
                         [this](const QString &code) { m_changed.append(code); });
        QObject::connect(&m_actions, &StatementActions::answered, &m_actions, [this] { ++m_answers; });
        ASSERT_TRUE(waitUntil([this] { return m_module.isReady(); }));
        m_actions.start(m_broker.address());
    }

    bool hasAnswers(int count)
    {
        return waitUntil([=] { return m_answers == count; });
    }

    double factorOn(int day)
    {
        return m_source.load(liquor.code, ChartPeriod::Day).value().adjustment.factorOn(onDay(day));
    }

    TestBroker m_broker;
    ScriptedModule m_module{m_broker.address()};
    Replay m_replay{nullptr};
    Today m_today{&m_replay};
    ChartSource m_source{DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value(), &m_today};
    StatementActions m_actions{&m_source};
    bool m_isKnown = true;
    QStringList m_changed;
    int m_answers = 0;
};

/// One share became two on 20211008, says the statement.
TEST_F(StatementActionsOnABus, BringWhatStatementsTellToTheCharts)
{
    m_module.setAnswer(QStringLiteral("CorporateActions"), withRows({row("20211008", "200", "0.00", "200")}));
    m_actions.show(liquor);
    ASSERT_TRUE(hasAnswers(1));
    EXPECT_EQ(m_changed, QStringList(liquor.code));
    EXPECT_EQ(factorOn(20210930), 0.5);
    EXPECT_TRUE(m_actions.isUpToDate());
}

TEST_F(StatementActionsOnABus, TellOfAChangeOnlyWhereThereIsOne)
{
    m_module.setAnswer(QStringLiteral("CorporateActions"), withRows({}));
    m_actions.show(liquor);
    ASSERT_TRUE(hasAnswers(1));
    EXPECT_EQ(m_changed, QStringList());
}

TEST_F(StatementActionsOnABus, AskAgainWhenTheModuleTellsOfPastTrades)
{
    m_module.setAnswer(QStringLiteral("CorporateActions"), withRows({}));
    m_actions.show(liquor);
    ASSERT_TRUE(hasAnswers(1));
    m_module.setAnswer(QStringLiteral("CorporateActions"), withRows({row("20211008", "200", "0.00", "200")}));
    m_module.notify(liquor.code); // of an order: nothing of the past has changed
    m_module.notify(liquor.code, QStringLiteral("20211008"));
    ASSERT_TRUE(hasAnswers(2));
    EXPECT_EQ(m_changed, QStringList(liquor.code));
    EXPECT_EQ(m_module.asked(QStringLiteral("CorporateActions")).size(), 2U);
}

TEST_F(StatementActionsOnABus, KeepWhatIsKnownWhenTheModuleRefuses)
{
    m_module.setAnswer(QStringLiteral("CorporateActions"), withRows({row("20211008", "200", "0.00", "200")}));
    m_actions.show(liquor);
    ASSERT_TRUE(hasAnswers(1));
    m_module.setAnswer(QStringLiteral("CorporateActions"), {{QStringLiteral("success"), false}});
    m_module.notify(liquor.code, QStringLiteral("20211008"));
    ASSERT_TRUE(hasAnswers(2));
    EXPECT_EQ(factorOn(20210930), 0.5);
}

TEST_F(StatementActionsOnABus, AskNobodyWhoDoesNotKnowTheQuestion)
{
    m_isKnown = false;
    m_actions.show(liquor);
    EXPECT_TRUE(m_actions.isUpToDate());
    m_isKnown = true;
    m_module.setAnswer(QStringLiteral("CorporateActions"), withRows({}));
    EXPECT_FALSE(m_actions.isUpToDate());
    m_actions.noteModule(); // it has come, and says that it knows it
    ASSERT_TRUE(hasAnswers(1));
    EXPECT_EQ(m_module.asked(QStringLiteral("CorporateActions")).size(), 1U);
}

} // namespace
} // namespace Terminal
