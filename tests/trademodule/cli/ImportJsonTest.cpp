// What other programs read from imports: see docs/trading-module.md.
#include "tests/trademodule/support/ProgramFixture.h"

#include <QJsonArray>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class ImportJsonTest : public Program
{
protected:
    /// What the last line of the output says.
    static QJsonObject lastLine(const Ended &ended)
    {
        const QByteArray output = QByteArray::fromStdString(ended.output).trimmed();
        return jsonOf(output.mid(output.lastIndexOf('\n') + 1));
    }

    Ended importJson(const QString &file, const QStringList &options = {})
    {
        return import(file, QStringList{QStringLiteral("--json")} + options);
    }

    QJsonObject resultOf(const QString &file, const QStringList &options = {})
    {
        return lastLine(importJson(file, options))[QLatin1String("result")].toObject();
    }

    QJsonObject refusalOf(const QString &file, const QStringList &options = {})
    {
        const Ended ended = importJson(file, options);
        EXPECT_NE(ended.exitCode, 0);
        return lastLine(ended)[QLatin1String("refused")].toObject();
    }
};

std::string text(const QJsonObject &object, const char *key)
{
    return object[QLatin1String(key)].toString().toStdString();
}

int number(const QJsonObject &object, const char *key)
{
    return object[QLatin1String(key)].toInt(-1);
}

QJsonObject first(const QJsonObject &object, const char *key)
{
    return object[QLatin1String(key)].toArray().at(0).toObject();
}

} // namespace

TEST_F(ImportJsonTest, NamesAllSecuritiesThoseWithMostEntriesFirst)
{
    QByteArray rows = oneRow;
    for (int i = 0; i < 30; ++i) {
        rows +=
            "20210812,11:03:51,000001,平安银行,买入,10.00,100,1000.00," + QByteArray::number(100 + i) + "\n";
    }
    const QJsonArray securities = resultOf(write(
        rows + "20210813,11:03:51,300750,宁德时代,买入,500.00,100,50000.00,7\n"))[QLatin1String("securities")]
                                      .toArray();

    ASSERT_EQ(securities.size(), 3);
    EXPECT_EQ(text(securities.at(0).toObject(), "code"), "000001");
    EXPECT_EQ(number(securities.at(0).toObject(), "entries"), 30);
    EXPECT_EQ(text(securities.at(1).toObject(), "code"), "300750");
    EXPECT_EQ(text(securities.at(2).toObject(), "security"), "贵州茅台");
}

TEST_F(ImportJsonTest, FindsTheImportByTheMarkOfWhoeverAsked)
{
    const QString file = write(oneRow);
    importJson(file, {QStringLiteral("--mark"), QStringLiteral("m1")});
    const auto found = [this](const char *mark) {
        return lastLine(runOnLedger({QStringLiteral("imports"), QStringLiteral("--mark"), QLatin1String(mark),
                                     QStringLiteral("--json")}))[QLatin1String("result")]
            .toObject();
    };

    EXPECT_EQ(number(found("m1"), "import"), 1);
    EXPECT_EQ(number(found("m2"), "import"), -1);
}

TEST_F(ImportJsonTest, TellsWhatAnImportDidAndItsNumberForUndo)
{
    const QJsonObject result = resultOf(write(oneRow));

    EXPECT_EQ(number(result, "import"), 1);
    EXPECT_EQ(number(result, "rows"), 1);
    EXPECT_EQ(number(result, "added"), 1);
    EXPECT_EQ(text(result, "from"), "2021-08-11");
    EXPECT_EQ(text(result, "to"), "2021-08-11");
    EXPECT_EQ(text(first(result, "kinds"), "kind"), "purchases");
    EXPECT_EQ(text(first(result, "kinds"), "effect"), "trade");
    EXPECT_EQ(tradeCount(), 1);
}

TEST_F(ImportJsonTest, ShowsInADryRunTheFirstRowsAsTheyAreUnderstood)
{
    const QJsonObject result = resultOf(write(oneRow), {QStringLiteral("--dry-run")});

    const QJsonObject row = first(result, "firstrows");
    EXPECT_EQ(number(row, "line"), 2);
    EXPECT_EQ(text(row, "date"), "2021-08-11");
    EXPECT_EQ(text(row, "code"), "600519");
    EXPECT_EQ(text(row, "market"), "SH");
    EXPECT_EQ(text(row, "security"), "贵州茅台");
    EXPECT_EQ(text(row, "side"), "buy");
    EXPECT_EQ(text(row, "quantity"), "100");
    EXPECT_EQ(text(row, "price"), "1700.00");
    EXPECT_TRUE(result[QLatin1String("dryrun")].toBool());
    EXPECT_FALSE(result.contains(QLatin1String("import")));
    EXPECT_EQ(tradeCount(), 0);
}

TEST_F(ImportJsonTest, TellsNoMoreThanTwentyFirstRows)
{
    const QJsonObject result = resultOf(writeManyRows(25));

    EXPECT_EQ(result[QLatin1String("firstrows")].toArray().size(), 20);
    EXPECT_EQ(number(result, "rows"), 25);
}

TEST_F(ImportJsonTest, NamesFileLineAndColumnOfABadRowAndShowsTheOthers)
{
    const QString file = write(oneRow + badRow);

    const Ended ended = importJson(file, {QStringLiteral("--dry-run")});

    EXPECT_EQ(ended.exitCode, 1);
    const QJsonObject refused = lastLine(ended)[QLatin1String("refused")].toObject();
    EXPECT_EQ(text(refused, "file"), file.toStdString());
    EXPECT_EQ(number(refused, "line"), 3);
    EXPECT_EQ(text(refused, "column"), "成交日期");
    EXPECT_THAT(text(refused, "reason"), HasSubstr("2021-02-31"));
    const QJsonObject result = lastLine(ended)[QLatin1String("result")].toObject();
    EXPECT_EQ(number(result, "refusalcount"), 1);
    EXPECT_EQ(first(result, "refusals"), refused);
    EXPECT_EQ(number(result, "rows"), 2);
}

TEST_F(ImportJsonTest, RefusesAFileThatIsNotThere)
{
    const QJsonObject refused = refusalOf(QStringLiteral("/nowhere/statement.csv"));

    EXPECT_EQ(text(refused, "file"), "/nowhere/statement.csv");
    EXPECT_THAT(text(refused, "reason"), HasSubstr("cannot be read"));
}

TEST_F(ImportJsonTest, SuggestsAProfileForAHeaderThatItDoesNotKnow)
{
    const QString file = writeFile(QStringLiteral("own.csv"), "日子,证券代码,证券名称,买卖标志,价位,张数\n"
                                                              "20210811,600519,贵州茅台,买入,1700,100\n");

    const QJsonObject refused = refusalOf(file);

    EXPECT_THAT(text(refused, "profile"), HasSubstr("column 价位 = "));
    EXPECT_THAT(text(refused, "profile"), HasSubstr("column 张数 = "));
}

TEST_F(ImportJsonTest, NamesTheAccountsOfAStatementOfSeveral)
{
    const QString file =
        writeFile(QStringLiteral("two.csv"), "成交日期,证券代码,买卖标志,成交价格,成交数量,资金帐号\n"
                                             "20210811,600519,买入,1700,100,11\n"
                                             "20210811,600519,买入,1700,200,22\n");

    EXPECT_EQ(refusalOf(file)[QLatin1String("accounts")].toArray().size(), 2);

    const QJsonObject result = resultOf(file, {QStringLiteral("--account"), QStringLiteral("22")});
    EXPECT_EQ(text(result, "account"), "22");
    EXPECT_EQ(result[QLatin1String("accounts")].toArray().size(), 2);
    EXPECT_EQ(number(result, "added"), 1);
}

TEST_F(ImportJsonTest, RefusesAnAccountThatTheStatementDoesNotName)
{
    const QString file =
        writeFile(QStringLiteral("one.csv"), "成交日期,证券代码,买卖标志,成交价格,成交数量,资金帐号\n"
                                             "20210811,600519,买入,1700,100,11\n");

    EXPECT_THAT(text(refusalOf(file, {QStringLiteral("--account"), QStringLiteral("12")}), "reason"),
                HasSubstr("no entries of the account 12, only of 11"));
}

TEST_F(ImportJsonTest, WritesProgressBeforeTheResult)
{
    const Ended ended = import(writeManyRows(5000), {QStringLiteral("--progress"), QStringLiteral("json")});

    const QList<QByteArray> lines = QByteArray::fromStdString(ended.output).trimmed().split('\n');
    ASSERT_GE(lines.size(), 3);
    const QJsonObject reading = jsonOf(lines.first())[QLatin1String("progress")].toObject();
    EXPECT_EQ(text(reading, "step"), "reading");
    EXPECT_GT(number(reading, "rows"), 0);
    EXPECT_NEAR(number(reading, "of"), 5000, 600);
    const QJsonObject booking = jsonOf(lines[lines.size() - 2])[QLatin1String("progress")].toObject();
    EXPECT_EQ(text(booking, "step"), "booking");
    EXPECT_EQ(number(booking, "rows"), 5000);
    EXPECT_EQ(number(booking, "of"), 5000);
    EXPECT_TRUE(jsonOf(lines.last()).contains(QLatin1String("result")));
}

TEST_F(ImportJsonTest, SaysTheSameKeysAndKindsInChinese)
{
    const Ended ended =
        run(ledgerOptions() + QStringList{QStringLiteral("--lang"), QStringLiteral("zh"),
                                          QStringLiteral("import"), write(oneRow), QStringLiteral("--json")});

    const QJsonObject kind = first(lastLine(ended)[QLatin1String("result")].toObject(), "kinds");
    EXPECT_EQ(text(kind, "kind"), "purchases");
    EXPECT_EQ(text(kind, "name"), "买入");
}

TEST_F(ImportJsonTest, TellsWhatAnUndoTookBack)
{
    const QString file = write(oneRow);
    importJson(file);

    const QStringList undo{QStringLiteral("undo"), QStringLiteral("1"), QStringLiteral("--json")};
    const QJsonObject result = lastLine(runOnLedger(undo))[QLatin1String("result")].toObject();

    EXPECT_EQ(number(result, "import"), 1);
    EXPECT_EQ(text(result, "file"), file.toStdString());
    EXPECT_EQ(number(result, "entries"), 1);
    const Ended again = runOnLedger(undo);
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_THAT(text(lastLine(again)[QLatin1String("refused")].toObject(), "reason"),
                HasSubstr("there is no import 1"));
}

TEST_F(ImportJsonTest, ListsImportsAsAnArray)
{
    importJson(write(oneRow));

    const Ended ended = runOnLedger({QStringLiteral("imports"), QStringLiteral("--json")});

    const QJsonArray imports = QJsonDocument::fromJson(QByteArray::fromStdString(ended.output)).array();
    ASSERT_EQ(imports.size(), 1);
    EXPECT_EQ(text(imports[0].toObject(), "import"), "1");
    EXPECT_EQ(text(imports[0].toObject(), "added"), "1");
}

TEST_F(ImportJsonTest, RefusesAProgressThatIsNotJson)
{
    const Ended ended = importJson(write(oneRow), {QStringLiteral("--progress"), QStringLiteral("xml")});

    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_THAT(ended.errors, HasSubstr("must be json"));
}

} // namespace TradeModule
