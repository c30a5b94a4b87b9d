#include "trading/DecodedText.h"

#include <gmock/gmock.h>

#include <QTextCodec>

namespace Trading {
namespace {

const QString table = QStringLiteral(u"日期,收盘\n20240102,9.21\n");

TEST(DecodedText, IsTheSameFromEveryEncoding)
{
    for (const char *const encoding : {"UTF-8", "UTF-16", "GB18030", "GBK"}) {
        EXPECT_EQ(decodedText(QTextCodec::codecForName(encoding)->fromUnicode(table)), table) << encoding;
    }
}

TEST(DecodedText, HasNoByteOrderMark)
{
    EXPECT_EQ(decodedText("\xEF\xBB\xBF" + table.toUtf8()), table);
}

TEST(DecodedText, IsNothingForBytesThatAreNoText)
{
    EXPECT_EQ(decodedText(QByteArray("PK\x03\x04\0\0\xFF", 7)), std::nullopt);
    EXPECT_EQ(decodedText(QByteArray("date\0close", 10)), std::nullopt);
}

} // namespace
} // namespace Trading
