// The import of bars, as a program speaks with it.
#include "tests/terminal/data/ManyForms.h"
#include "tests/terminal/support/DataFiles.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace Terminal {
namespace {

class BarsTalkWithAProgram : public DataFiles
{
protected:
    void SetUp() override
    {
        m_bars.start(QStringLiteral(TRADETERMINAL),
                     QStringList{QStringLiteral("bars"), QStringLiteral("import"), QStringLiteral("--json"),
                                 QStringLiteral("--data"), target(), QStringLiteral("--lang"),
                                 QStringLiteral("en")} +
                         moreWords());
    }
    virtual QStringList moreWords() { return {}; }
    ~BarsTalkWithAProgram() override
    {
        m_bars.closeWriteChannel();
        EXPECT_TRUE(m_bars.waitForFinished(20000)) << "it ends with its input";
        EXPECT_EQ(m_bars.exitCode(), 0);
    }

    QString target() const { return folder() + QStringLiteral("/data"); }
    QString bars(const Bars &bars)
    {
        return write(QStringLiteral("in.csv"), FormOfDays("ts_code,trade_date,open,high,low,close,vol,amount",
                                                          "000001.SZ,{d},{o},{h},{l},{c},{lots},{thousands}")
                                                   .of(bars));
    }
    QByteArray written(const char *name) const
    {
        QFile file(target() + QLatin1Char('/') + QLatin1String(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void say(const QJsonObject &request)
    {
        m_bars.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    }
    /// The next object that is no progress.
    QJsonObject answer()
    {
        while (m_bars.canReadLine() || m_bars.waitForReadyRead(20000)) {
            while (m_bars.canReadLine()) {
                const QJsonObject object = QJsonDocument::fromJson(m_bars.readLine()).object();
                if (!object.contains(QStringLiteral("progress"))) {
                    return object;
                }
            }
        }
        return {};
    }
    /// True when progress of this step is told.
    bool tellsOfStep(const char *step)
    {
        while (m_bars.canReadLine() || m_bars.waitForReadyRead(20000)) {
            const QJsonObject word = QJsonDocument::fromJson(m_bars.readLine()).object();
            const QJsonValue progress = word[QStringLiteral("progress")];
            if (progress.toObject()[QStringLiteral("step")].toString() == QLatin1String(step)) {
                return true;
            }
        }
        return false;
    }
    QJsonObject ask(const QJsonObject &request)
    {
        say(request);
        return answer();
    }
    QJsonObject plan(const QJsonObject &file)
    {
        const QJsonObject plan = ask({{QStringLiteral("plan"), QJsonArray{file}}});
        EXPECT_EQ(answer()[QStringLiteral("planned")].toInt(), 1);
        return plan[QStringLiteral("plan")].toObject();
    }
    QJsonObject plan(const QString &file) { return plan(QJsonObject{{QStringLiteral("file"), file}}); }
    QJsonObject command(const char *word) { return ask({{QLatin1String(word), true}}); }

    QProcess m_bars;
};

TEST_F(BarsTalkWithAProgram, WritesWhatWasPlannedWhenItIsToldTo)
{
    const QJsonObject planned = plan(bars(someDays()));
    EXPECT_EQ(planned[QStringLiteral("bars")].toInt(), 60);
    EXPECT_EQ(planned[QStringLiteral("security")].toString(), QStringLiteral("000001.SZ"));
    EXPECT_TRUE(written("daily/000001.csv").isEmpty());
    EXPECT_TRUE(command("write").contains(QStringLiteral("written")));
    EXPECT_FALSE(written("daily/000001.csv").isEmpty());
}

TEST_F(BarsTalkWithAProgram, PutsBackWhatItReplacedAndTakesAwayWhatItAdded)
{
    const Bars all = someDays();
    plan(bars(Bars(all.begin(), all.begin() + 30)));
    EXPECT_TRUE(command("write").contains(QStringLiteral("written")));
    const QByteArray before = written("daily/000001.csv");
    plan(bars(all));
    EXPECT_TRUE(command("write").contains(QStringLiteral("written")));
    EXPECT_NE(written("daily/000001.csv"), before);
    EXPECT_TRUE(command("undo").contains(QStringLiteral("undone")));
    EXPECT_EQ(written("daily/000001.csv"), before);
    EXPECT_FALSE(written("securities.csv").isEmpty());
}

TEST_F(BarsTalkWithAProgram, AsksForDayAndSecurityOfMinutesThatNameNeither)
{
    const QJsonObject planned =
        plan(write(QStringLiteral("600519_20260327.csv"),
                   "time,open,high,low,close,volume\n930,9,9,9,9,1\n931,9,9,9,9,1\n"));
    EXPECT_EQ(planned[QStringLiteral("asks")].toArray(),
              (QJsonArray{QStringLiteral("day"), QStringLiteral("code")}));
}

TEST_F(BarsTalkWithAProgram, SaysWhatARefusedFileAsksFor)
{
    const QString file = write(QStringLiteral("in.csv"), FormOfDays("Date,Open,High,Low,Close,Volume,Amount",
                                                                    "{iso},{o},{h},{l},{c},{v},{yuan}")
                                                             .of(someDays()));
    const QJsonObject planned = plan(file);
    EXPECT_EQ(planned[QStringLiteral("asks")].toArray(), QJsonArray{QStringLiteral("code")});
    const QJsonObject again =
        plan(QJsonObject{{QStringLiteral("file"), file}, {QStringLiteral("code"), QStringLiteral("x")}});
    EXPECT_THAT(again[QStringLiteral("refused")].toString().toStdString(),
                ::testing::HasSubstr("must be six digits"));
}

TEST_F(BarsTalkWithAProgram, WritesNothingWhenItIsCancelledMeanwhile)
{
    plan(bars(someDays()));
    m_bars.write("{\"write\":true}\n{\"cancel\":true}\n");
    EXPECT_TRUE(answer().contains(QStringLiteral("cancelled")));
    EXPECT_TRUE(written("daily/000001.csv").isEmpty());
    EXPECT_TRUE(QDir(target() + QStringLiteral("/daily")).isEmpty()) << "nor anything beside its place";
}

TEST_F(BarsTalkWithAProgram, UndoesNothingTwice)
{
    plan(bars(someDays()));
    command("write");
    EXPECT_TRUE(command("undo").contains(QStringLiteral("undone")));
    EXPECT_TRUE(command("undo").contains(QStringLiteral("undone")));
    EXPECT_TRUE(written("daily/000001.csv").isEmpty());
}

/// The account's trades, which take the module long.
class BarsTalkBesideALargeLedger : public BarsTalkWithAProgram
{
protected:
    QStringList moreWords() override
    {
        const QString module = write(QStringLiteral("module.sh"), "#!/bin/sh\nexec sleep 600\n");
        QFile::setPermissions(module, QFile::permissions(module) | QFile::ExeOwner);
        return {QStringLiteral("--module"), module, QStringLiteral("--ledger"),
                write(QStringLiteral("a.db"), "")};
    }
};

TEST_F(BarsTalkBesideALargeLedger, IsCancelledWhileItReadsTheTrades)
{
    const QJsonObject file{{QStringLiteral("file"), bars(someDays())}};
    say({{QStringLiteral("plan"), QJsonArray{file, file}}});
    ASSERT_TRUE(tellsOfStep("trades"));
    QElapsedTimer sinceCancel;
    sinceCancel.start();
    EXPECT_TRUE(command("cancel").contains(QStringLiteral("cancelled")));
    EXPECT_LT(sinceCancel.elapsed(), 3000) << "and not the ten minutes of the module";
}

} // namespace
} // namespace Terminal
