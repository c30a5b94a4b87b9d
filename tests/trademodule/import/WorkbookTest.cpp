#include "trademodule/import/Workbook.h"
#include "tests/trademodule/import/StatementTest.h"
#include "tests/trademodule/import/WorkbookFile.h"
#include "trademodule/Error.h"

#include <QFile>
#include <QTemporaryDir>

#include <random>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const char *const relations =
    "<Relationships><Relationship Id=\"r1\" Target=\"worksheets/sheet1.xml\"/></Relationships>";
const char *const workbook =
    "<workbook xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets>"
    "<sheet name=\"a\" sheetId=\"1\" r:id=\"r1\"/></sheets></workbook>";
const char *const sharedTexts = "<sst><si><t>成交日期</t></si><si><t>成交时间</t></si><si><t>证券代码</t></"
                                "si><si><r><t>操</t></r><r><t>作</t></r></si>"
                                "<si><t>成交数量</t></si><si><t>成交价格</t></si></sst>";
const char *const headerRow =
    "<row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c><c r=\"C1\" "
    "t=\"s\"><v>2</v></c>"
    "<c r=\"D1\" t=\"s\"><v>3</v></c><c r=\"E1\" t=\"s\"><v>4</v></c><c r=\"F1\" t=\"s\"><v>5</v></c></row>";
const char *const tradeRow = "<row r=\"2\"><c r=\"A2\"><v>45293</v></c><c r=\"B2\"><v>0.4375</v></c>"
                             "<c r=\"C2\"><v>2594</v></c><c r=\"D2\" t=\"inlineStr\"><is><t>买入</t></is></c>"
                             "<c r=\"E2\"><v>100</v></c><c r=\"F2\"><v>9.1</v></c></row>";

class WorkbookTest : public ::testing::Test
{
protected:
    using Parts = WorkbookParts;

    QString path() const { return m_directory.filePath(QStringLiteral("statement.xlsx")); }

    void write(const Parts &parts) { writeWorkbook(path(), parts); }

    void writeSheet(const QByteArray &rows)
    {
        m_parts = {
            {"xl/workbook.xml", workbook},
            {"xl/_rels/workbook.xml.rels", relations},
            {"xl/sharedStrings.xml", sharedTexts},
            {"xl/worksheets/sheet1.xml", "<worksheet><sheetData>" + rows + "</sheetData></worksheet>"}};
        write(m_parts);
    }

    void writeSheets(const QByteArray &first, const QByteArray &second)
    {
        QByteArray twoSheets = workbook;
        twoSheets.replace("</sheets>", "<sheet name=\"b\" sheetId=\"2\" r:id=\"r2\"/></sheets>");
        QByteArray twoRelations = relations;
        twoRelations.replace("</Relationships>",
                             "<Relationship Id=\"r2\" Target=\"worksheets/sheet2.xml\"/></Relationships>");
        write({{"xl/workbook.xml", twoSheets},
               {"xl/_rels/workbook.xml.rels", twoRelations},
               {"xl/sharedStrings.xml", sharedTexts},
               {"xl/worksheets/sheet1.xml", "<worksheet><sheetData>" + first + "</sheetData></worksheet>"},
               {"xl/worksheets/sheet2.xml", "<worksheet><sheetData>" + second + "</sheetData></worksheet>"}});
    }

    std::string refusal()
    {
        try {
            readStatementFile(path(), {});
        } catch (const Error &error) {
            return error.what();
        }
        return "no refusal";
    }

private:
    QTemporaryDir m_directory;
    Parts m_parts;
};

} // namespace

TEST_F(WorkbookTest, IsReadWithSharedTextsDaysAndFractions)
{
    writeSheet(QByteArray(headerRow) + tradeRow);

    EXPECT_THAT(described(readStatementFile(path(), {}).executions),
                ElementsAre("20240102 10300000 buy SZ002594 100 at 9.10 = 910.00 fee 0.00"));
}

TEST_F(WorkbookTest, LeavesEmptyCellsWhereTheyAre)
{
    QByteArray row = tradeRow;
    row.replace("<c r=\"B2\"><v>0.4375</v></c>", "");
    writeSheet(headerRow + row);

    EXPECT_THAT(described(readStatementFile(path(), {}).executions),
                ElementsAre("20240102 00000000 buy SZ002594 100 at 9.10 = 910.00 fee 0.00"));
}

TEST_F(WorkbookTest, NamesTheRowOfItsSheet)
{
    QByteArray row = tradeRow;
    row.replace("<v>100</v>", "<v>1oo</v>");
    writeSheet(headerRow + row);

    EXPECT_THAT(reasons(readStatementFile(path(), {})), ElementsAre(HasSubstr("2: the quantity \"1oo\"")));
}

TEST_F(WorkbookTest, ReadsAllSheetsEachWithItsHeader)
{
    QByteArray later = tradeRow;
    later.replace("<v>45293</v>", "<v>45294</v>");
    writeSheets(QByteArray(headerRow) + tradeRow, headerRow + later);

    EXPECT_THAT(readStatementFile(path(), {}).executions, ::testing::SizeIs(2));
}

TEST_F(WorkbookTest, GoesOnOnASheetWithoutAHeader)
{
    QByteArray later = tradeRow;
    later.replace("<v>45293</v>", "<v>45294</v>");
    writeSheets(QByteArray(headerRow) + tradeRow, later);

    EXPECT_THAT(readStatementFile(path(), {}).executions, ::testing::SizeIs(2));
}

TEST_F(WorkbookTest, NamesASheetThatTellsNoEntries)
{
    writeSheets(QByteArray(headerRow) + tradeRow,
                "<row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>持仓</t></is></c></row>");

    const StatementContents contents = readStatementFile(path(), {});
    EXPECT_THAT(contents.executions, ::testing::SizeIs(1));
    EXPECT_EQ(contents.sheetsLeftOut, QStringList(QStringLiteral("b")));
}

TEST_F(WorkbookTest, NamesTheSheetOfABadRow)
{
    QByteArray bad = tradeRow;
    bad.replace("<v>100</v>", "<v>1oo</v>");
    writeSheets(QByteArray(headerRow) + tradeRow, headerRow + bad);

    EXPECT_THAT(reasons(readStatementFile(path(), {})), ElementsAre(HasSubstr("2: sheet b: the quantity")));
}

TEST_F(WorkbookTest, RefusesAnArchiveOfSomethingElse)
{
    write({{"statement.csv", "a,b"}});

    EXPECT_THAT(refusal(), HasSubstr("a zip archive, not a workbook"));
}

TEST_F(WorkbookTest, RefusesATextThatIsNotThere)
{
    QByteArray row = tradeRow;
    row.replace("t=\"inlineStr\"><is><t>买入</t></is>", "t=\"s\"><v>99</v>");
    writeSheet(headerRow + row);

    EXPECT_THAT(refusal(), HasSubstr("damaged"));
}

TEST_F(WorkbookTest, RefusesATextThatUnpacksToMoreThanAnyStatement)
{
    writeSheet(QByteArray(headerRow) + "<row r=\"2\"><c r=\"A2\" t=\"inlineStr\"><is><t>" +
               QByteArray(1 << 24, 'x') + "</t></is></c></row>");

    EXPECT_THAT(refusal(), HasSubstr("more than any statement"));
}

TEST_F(WorkbookTest, RefusesAColumnThatNoSheetHas)
{
    writeSheet(QByteArray(headerRow) + "<row r=\"2\"><c r=\"ZZZZZZZ2\"><v>1</v></c></row>");

    EXPECT_THAT(refusal(), HasSubstr("more than any statement"));
}

/// Whatever the bytes, the reader ends, with entries or with a reason.
TEST_F(WorkbookTest, SurvivesAnyDamage)
{
    writeSheet(QByteArray(headerRow) + tradeRow);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    file.close();
    std::mt19937 random(20240102);
    for (int round = 0; round < 300; ++round) {
        QByteArray damaged = whole;
        for (int i = 0; i < 1 + round % 8; ++i) {
            damaged[static_cast<int>(random() % static_cast<unsigned>(damaged.size()))] =
                static_cast<char>(random());
        }
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(round % 5 == 0
                       ? damaged.left(static_cast<int>(random() % static_cast<unsigned>(damaged.size())))
                       : damaged);
        file.close();
        EXPECT_NE(refusal(), "");
    }
}

} // namespace TradeModule
