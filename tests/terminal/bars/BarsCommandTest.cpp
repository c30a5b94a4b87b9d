// The built program, as its user brings his bars.
#include "terminal/data/DataFolder.h"
#include "tests/terminal/data/ManyForms.h"
#include "tests/terminal/support/DataFiles.h"

#include <gmock/gmock.h>

#include <QProcess>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct Ended
{
    int exitCode = -1;
    std::string out;
    std::string err;
};

Ended run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

class BarsCommand : public DataFiles
{
protected:
    static Ended bars(const QStringList &arguments, const char *language = "en")
    {
        return run(QStringLiteral(TRADETERMINAL),
                   QStringList({QStringLiteral("bars")}) + arguments +
                       QStringList({QStringLiteral("--lang"), QLatin1String(language)}));
    }
    static Ended import(const QStringList &arguments)
    {
        return bars(QStringList(QStringLiteral("import")) + arguments);
    }
    QString foreignFile()
    {
        FormOfDays form("ts_code,trade_date,open,high,low,close,vol,amount,turn",
                        "000001.SZ,{d},{o},{h},{l},{c},{lots},{thousands},1");
        return write(QStringLiteral("in.csv"), form.newestFirst().of(someDays()));
    }
    QString target() const { return folder() + QStringLiteral("/data"); }
};

TEST_F(BarsCommand, ShowsWhatItUnderstoodAndWritesNothing)
{
    const Ended shown = import({foreignFile(), QStringLiteral("--data"), target()});
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("000001.SZ"));
    EXPECT_THAT(shown.out, HasSubstr("60 bars of days, 2024-01-02 to 2024-03-25"));
    EXPECT_THAT(shown.out, HasSubstr("volume in lots, as amount ÷ price says"));
    EXPECT_THAT(shown.out, HasSubstr("    date,open,high,low,close,volume\n    20240102,10.00,"));
    EXPECT_THAT(shown.out, HasSubstr("not used: turn"));
    EXPECT_THAT(shown.out, HasSubstr("-> daily/000001.csv: new"));
    EXPECT_THAT(shown.out, HasSubstr("Nothing is written: --yes writes"));
    EXPECT_FALSE(QFileInfo::exists(target()));
}

TEST_F(BarsCommand, WritesNothingOfAFileThatATerminalWouldObey)
{
    FormOfDays form("ts_code,trade_date,open,high,low,close,vol,amount,\x1b[2Jturn",
                    "000001.SZ,{d},{o},{h},{l},{c},{lots},{thousands},1");
    const QString file = write(QStringLiteral("\x1b[31m.csv"), form.of(someDays()));
    const QString bad = write(QStringLiteral("bad\x1b[31m.csv"), "date,close\n20240102,1\n");

    const Ended shown = import({file, bad});

    EXPECT_THAT(shown.out, HasSubstr("[2Jturn"));
    EXPECT_EQ(shown.out.find('\x1b'), std::string::npos) << shown.out;
    EXPECT_EQ(shown.err.find('\x1b'), std::string::npos) << shown.err;
}

TEST_F(BarsCommand, WritesWhenItIsToldTo)
{
    const Ended written =
        import({foreignFile(), QStringLiteral("--data"), target(), QStringLiteral("--yes")});
    EXPECT_EQ(written.exitCode, 0) << written.err;
    const auto opened = DataFolder::open(target());
    ASSERT_TRUE(opened) << qPrintable(opened.error());
    expectSame(opened.value().load(QStringLiteral("000001"), ChartPeriod::Day).value().bars, someDays());
}

TEST_F(BarsCommand, WritesNoFileWhenOneIsRefused)
{
    const QString bad = write(QStringLiteral("bad.csv"), "date,close\n20240102,1\n");
    const Ended refused =
        import({foreignFile(), bad, QStringLiteral("--data"), target(), QStringLiteral("--yes")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("bad.csv:1: "));
    EXPECT_THAT(refused.err, HasSubstr("Nothing is written: 1 of 2 files are refused"));
    EXPECT_FALSE(QFileInfo::exists(target()));
}

TEST_F(BarsCommand, RefusesAWrongCommandLine)
{
    EXPECT_EQ(bars({}).exitCode, 2);
    EXPECT_EQ(bars({QStringLiteral("export"), QStringLiteral("a.csv")}).exitCode, 2);
    EXPECT_THAT(import({foreignFile(), QStringLiteral("--volume"), QStringLiteral("tons")}).err,
                HasSubstr("--volume must be shares or lots"));
    EXPECT_THAT(import({foreignFile(), QStringLiteral("--code"), QStringLiteral("1")}).err,
                HasSubstr("--code must be six digits"));
    EXPECT_EQ(import({foreignFile(), QStringLiteral("--nonsense")}).exitCode, 2);
}

TEST_F(BarsCommand, SpeaksChinese)
{
    EXPECT_THAT(bars({QStringLiteral("--help")}, "zh").out, HasSubstr("不询问，直接写入。"));
    EXPECT_THAT(bars({QStringLiteral("--help")}).out, HasSubstr("Writes without asking."));
}

#ifdef TRADEMODULE

class BarsCommandBesideALedger : public BarsCommand
{
protected:
    void SetUp() override
    {
        const Ended imported =
            run(QStringLiteral(TRADEMODULE), {QStringLiteral("--ledger"), ledger(), QStringLiteral("import"),
                                              QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")});
        ASSERT_EQ(imported.exitCode, 0) << imported.err;
    }
    QString ledger() const { return folder() + QStringLiteral("/account.db"); }
    Ended compared(const QString &file, const QString &code = QStringLiteral("600519.SH"))
    {
        return import({file, QStringLiteral("--code"), code, QStringLiteral("--ledger"), ledger(),
                       QStringLiteral("--module"), QStringLiteral(TRADEMODULE)});
    }
};

TEST_F(BarsCommandBesideALedger, SaysHowManyTradesLieOnTheBars)
{
    const Ended shown = compared(QStringLiteral(TRADECHART_EXAMPLES "/daily/600519.csv"));
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr(" trades compared, all within their bars."));
    EXPECT_THAT(shown.out, Not(HasSubstr(" trades lie ")));
}

TEST_F(BarsCommandBesideALedger, SaysThatTheLedgerHasNoTradesOfTheSecurity)
{
    const Ended shown =
        compared(QStringLiteral(TRADECHART_EXAMPLES "/daily/600519.csv"), QStringLiteral("601398.SH"));
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("The ledger has no trades of this security."));
}

TEST_F(BarsCommandBesideALedger, WarnsOfBarsOfAnotherSecurity)
{
    const Ended shown = compared(QStringLiteral(TRADECHART_EXAMPLES "/daily/600536.csv"));
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("trades lie outside of their day's prices"));
    EXPECT_THAT(shown.out, Not(HasSubstr(" trades compared")));
}

TEST_F(BarsCommandBesideALedger, ComparesMinutesByTheirDays)
{
    const Ended shown = import(
        {QStringLiteral(TRADECHART_EXAMPLES "/minute/000001_20180104.csv"), QStringLiteral("--code"),
         QStringLiteral("000001.SZ"), QStringLiteral("--day"), QStringLiteral("20180104"),
         QStringLiteral("--ledger"), ledger(), QStringLiteral("--module"), QStringLiteral(TRADEMODULE)});
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("1 trades compared, all within their bars."));
}

TEST_F(BarsCommandBesideALedger, RefusesToCompareWithALedgerThatIsNotThere)
{
    const QString missing = folder() + QStringLiteral("/nosuch.db");
    const Ended refused = import({foreignFile(), QStringLiteral("--ledger"), missing,
                                  QStringLiteral("--module"), QStringLiteral(TRADEMODULE)});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_THAT(refused.err, HasSubstr(missing.toStdString() + " could not be read: there is no such file"));
    EXPECT_FALSE(QFileInfo::exists(missing));
}

#endif

} // namespace
} // namespace Terminal
