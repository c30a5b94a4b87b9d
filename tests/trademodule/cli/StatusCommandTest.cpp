#include "endpoint/Announcement.h"
#include "tests/trademodule/support/ProgramFixture.h"

#include <QElapsedTimer>
#include <QJsonArray>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

/// A visitor from a shell.
class StatusCommandTest : public ProgramOnABus
{
protected:
    Ended status(const QStringList &options = {})
    {
        return run(busOptions() + QStringList{QStringLiteral("status")} + options);
    }

    QJsonObject statusJson()
    {
        return jsonOf(QByteArray::fromStdString(status({QStringLiteral("--json")}).output));
    }
};

} // namespace

TEST_F(StatusCommandTest, TellsWhoServesAndWhatItAnswered)
{
    serve();

    const Ended told = status();

    EXPECT_EQ(told.exitCode, 0) << told.errors;
    EXPECT_THAT(told.output, HasSubstr(": a trading module serves\n"));
    EXPECT_THAT(told.output, HasSubstr("open orders"));
    EXPECT_THAT(told.output, HasSubstr("other")) << "the fixture's question of an unknown command";
}

TEST_F(StatusCommandTest, TellsProgramsTheSameInJson)
{
    serve();
    chart().sendMessage(
        "Market", "Quote",
        R"({"stkcode":"000001","market":"SZ","date":"20261120","time":"1001","open":"9.90","high":"10.10","low":"9.80","close":"10.00","volume":"100"})");
    ask(R"({"cmd":"OpenOrders"})"); // the quote came before

    const QJsonObject told = statusJson();

    EXPECT_EQ(told[QStringLiteral("standing")].toString(), QStringLiteral("serving"));
    const QJsonObject module = told[QStringLiteral("status")].toObject();
    EXPECT_EQ(module[QStringLiteral("module")].toObject()[QStringLiteral("process")].toInt(),
              static_cast<int>(this->module().processId()));
    EXPECT_EQ(module[QStringLiteral("quotes")].toInt(), 1);
    EXPECT_EQ(module[QStringLiteral("lastquote")].toObject()[QStringLiteral("stkcode")].toString(),
              QStringLiteral("000001"));
    EXPECT_FALSE(module[QStringLiteral("answers")].toArray().isEmpty());
}

TEST_F(StatusCommandTest, WritesMetrics)
{
    serve();
    const QString path = writeFile(QStringLiteral("a.prom"), "old");

    const Ended told = status({QStringLiteral("--metrics"), path});

    EXPECT_EQ(told.exitCode, 0) << told.errors;
    EXPECT_EQ(told.output, "");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_THAT(file.readAll().toStdString(), HasSubstr("trademodule_up{"));
}

TEST_F(StatusCommandTest, TellsThatNobodyServes)
{
    const Ended told = status();

    EXPECT_EQ(told.exitCode, 5);
    EXPECT_THAT(told.output, HasSubstr("no trading module serves on this bus"));
}

TEST_F(StatusCommandTest, TellsThatTheBusIsAway)
{
    broker().kill();
    QElapsedTimer taken;
    taken.start();

    const Ended told = status();

    EXPECT_EQ(told.exitCode, 6);
    EXPECT_THAT(told.output, HasSubstr("the bus cannot be joined"));
    EXPECT_LT(taken.elapsed(), 10000) << "seven seconds are promised; a busy machine starts a program late";
}

TEST_F(StatusCommandTest, TellsOfAModuleThatDoesNotAnswer)
{
    ASSERT_TRUE(chart().join(broker().address()));
    LocalCommunication::Announcement hanging;
    hanging.start(broker().address(),
                  {"Global", "TradePresence", R"({"instance":"one","online":true,"fence":1,"host":"desk"})",
                   R"({"instance":"one","online":false,"fence":1})"});
    ASSERT_TRUE(chart().listen("Global", "TradePresence"));
    ASSERT_TRUE(chart().waitForMessages(1));

    const Ended told = status();

    EXPECT_EQ(told.exitCode, 4);
    EXPECT_THAT(told.output, HasSubstr("does not answer"));
    EXPECT_THAT(told.output, HasSubstr("desk"));
}

TEST_F(StatusCommandTest, TellsThatTheLedgerCannotBeUsed)
{
    serve();
    Database(location()).run(QStringLiteral("ALTER TABLE trade_order RENAME TO lost"));

    const Ended told = status();
    Database(location()).run(QStringLiteral("ALTER TABLE lost RENAME TO trade_order"));

    EXPECT_EQ(told.exitCode, 3);
    EXPECT_THAT(told.output, HasSubstr("open orders"));
    EXPECT_THAT(told.output, HasSubstr("not known: "));
}

TEST_F(StatusCommandTest, TellsOfAModuleThatDoesNotKnowTheQuestion)
{
    const BusThread other(broker().address(), "TradeQuery",
                          [](BusThread::EndPoint &own, const QByteArray &, const QByteArray &asker) {
                              own.sendMessage(asker, "TradeQuery", R"({"success":false,"errcode":1})");
                          });

    const Ended told = status();

    EXPECT_EQ(told.exitCode, 0) << "it serves";
    EXPECT_THAT(told.output, HasSubstr("not told"));
}

TEST_F(StatusCommandTest, AsksForTheBus)
{
    EXPECT_EQ(run({QStringLiteral("status")}).exitCode, 2);
}

} // namespace TradeModule
