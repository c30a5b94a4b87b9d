// The program trademodule-check, on a real bus: our module over each database, a wrong one, and none.
#include "tests/support/BusThread.h"
#include "tests/trademodule/support/ProgramFixture.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class CheckProgram : public ProgramOnABus
{
protected:
    static Ended check(const QStringList &options, const QString &locale = QStringLiteral("C.UTF-8"))
    {
        QProcess program;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), locale);
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TRADEMODULE_CHECK), options);
        EXPECT_TRUE(program.waitForFinished(60000));
        return {program.exitCode(), program.readAllStandardOutput().toStdString(),
                program.readAllStandardError().toStdString()};
    }

    /// Of the security and the days that import() has put into the ledger.
    QStringList ofTheStatement() const
    {
        return busOptions() + QStringList{QStringLiteral("--security"), QStringLiteral("000001.SZ"),
                                          QStringLiteral("--from"),     QStringLiteral("20240101"),
                                          QStringLiteral("--to"),       QStringLiteral("20240131")};
    }

    void importTrades()
    {
        import(write("20240102,10:00:00,000001,平安银行,买入,10.00,300,3000.00,1\n"
                     "20240119,10:00:00,000001,平安银行,卖出,11.00,100,1100.00,2\n"));
    }
};

TEST_F(CheckProgram, FindsNothingInOurServingModule)
{
    importTrades();
    serve();
    const QString transcript = writeFile(QStringLiteral("transcript"), "");
    const Ended ended =
        check(ofTheStatement() + QStringList{QStringLiteral("--orders"), QStringLiteral("1.00"),
                                             QStringLiteral("--transcript"), transcript});
    EXPECT_EQ(ended.exitCode, 0) << ended.output << ended.errors;
    EXPECT_THAT(ended.output, HasSubstr(" 0 wrong"));
#ifdef SCHEMA_PYTHON
    QProcess schemas;
    schemas.start(QStringLiteral(SCHEMA_PYTHON),
                  {QStringLiteral(TRADECHART_TREE "/tests/docs/check_messages.py"),
                   QStringLiteral(TRADECHART_TREE), transcript});
    ASSERT_TRUE(schemas.waitForFinished());
    EXPECT_EQ(schemas.exitCode(), 0) << schemas.readAll().toStdString();
#endif
}

TEST_F(CheckProgram, TellsWhatIsWrongAndWhereTheGuideSaysSo)
{
    const BusThread wrong(broker().address(), "TradeQuery",
                          [](auto &own, const QByteArray &question, const QByteArray &sender) {
                              const QString screen = jsonOf(question)[QStringLiteral("screenId")].toString();
                              own.sendMessage(screen.isEmpty() ? sender : screen.toUtf8(), "TradeQuery",
                                              R"({"cmd":"TodayTrade","stkcode":600000,"data":[]})");
                          });
    const Ended ended =
        check(busOptions() + QStringList{QStringLiteral("--only"), QStringLiteral("today.asked")});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_THAT(ended.output, HasSubstr("WRONG today.asked\n    \"stkcode\" is 600000, but must be text"));
    EXPECT_THAT(ended.output, HasSubstr("docs/messages.md#a-trade-of-today"));
    EXPECT_THAT(ended.output, HasSubstr("1 cases: 1 wrong"));
}

TEST_F(CheckProgram, SaysSoWhenNobodyAnswers)
{
    const Ended ended = check(busOptions());
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_THAT(ended.errors, HasSubstr("no trading module answers"));
}

TEST_F(CheckProgram, RefusesACommandLineThatMakesNoSense)
{
    for (const char *const options : {"", "--security 600000", "--from tomorrow", "--orders free",
                                      "--only nothing", "--colour", "serve", "--lang fr"}) {
        const Ended ended = check(QString::fromLatin1(options).split(u' ', Qt::SkipEmptyParts));
        EXPECT_EQ(ended.exitCode, 2) << options;
        EXPECT_THAT(ended.errors, HasSubstr("trademodule-check: ")) << options;
    }
}

TEST_F(CheckProgram, SpeaksChinese)
{
    const QString chinese = QStringLiteral("zh_CN.UTF-8");
    EXPECT_THAT(check({QStringLiteral("--help")}, chinese).output, HasSubstr("交易模块"));
    const std::string cases = check({QStringLiteral("--list")}, chinese).output;
    EXPECT_THAT(cases, HasSubstr("应得：各键符合指南的应答"));
    EXPECT_THAT(cases, Not(HasSubstr("must come")));
}

} // namespace

} // namespace TradeModule
