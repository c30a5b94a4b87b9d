// What a file is, by what it holds.
#include "terminal/intake/IntakeFile.h"
#include "tests/terminal/support/IntakeFiles.h"

#include <gmock/gmock.h>

#include <QTextCodec>

namespace Terminal {
namespace {

class IntakeFileKind : public IntakeFiles
{
};

TEST_F(IntakeFileKind, IsBarsWhereALineNamesTheColumnsOfPrices)
{
    EXPECT_EQ(kindOfFile(barsWithCode()), FileKind::BarTable);
    EXPECT_EQ(kindOfFile(barsWithoutCode("statement.csv")), FileKind::BarTable) << "whatever it is called";
}

TEST_F(IntakeFileKind, IsAStatementElse)
{
    EXPECT_EQ(kindOfFile(statement()), FileKind::Statement);
    EXPECT_EQ(kindOfFile(somethingElse()), FileKind::Statement);
    EXPECT_EQ(kindOfFile(write(QStringLiteral("a.png"), QByteArray(1000, '\x89'))), FileKind::Statement);
    EXPECT_EQ(kindOfFile(write(QStringLiteral("empty.csv"), {})), FileKind::Statement);
    EXPECT_EQ(kindOfFile(folder() + QStringLiteral("/gone.csv")), FileKind::Statement);
}

TEST_F(IntakeFileKind, IsKnownInEveryEncodingAlsoWhereTheBeginningEndsInsideOfACharacter)
{
    QString text = QStringLiteral(u"贵州茅台 日线\n日期,开盘,最高,最低,收盘,成交量\n");
    while (text.size() < 80000) {
        text += QStringLiteral(u"20240102,10.00,10.50,9.90,10.20,1000,备注\n");
    }
    for (const char *const encoding : {"UTF-8", "GB18030", "UTF-16LE", "UTF-16BE"}) {
        const QByteArray mark = QByteArray(encoding).startsWith("UTF-16")
                                    ? QTextCodec::codecForName(encoding)->fromUnicode(QString(QChar(0xFEFF)))
                                    : QByteArray();
        const QByteArray body = QTextCodec::codecForName(encoding)->fromUnicode(text);
        const QString file =
            write(QStringLiteral("bars.csv"), body.startsWith(mark) ? body : QByteArray(mark + body));
        EXPECT_EQ(kindOfFile(file), FileKind::BarTable) << encoding;
    }
}

} // namespace
} // namespace Terminal
