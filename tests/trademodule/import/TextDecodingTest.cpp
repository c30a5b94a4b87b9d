#include "trademodule/import/TextDecoding.h"
#include "tests/support/ByName.h"
#include "trademodule/Error.h"

#include <gmock/gmock.h>

#include <QTextCodec>

namespace TradeModule {

namespace {

struct Encoded
{
    std::string name;
    QByteArray bytes;
};

class TextDecodingOfBytes : public ::testing::TestWithParam<Encoded>
{
};

} // namespace

TEST_P(TextDecodingOfBytes, IsRecognised)
{
    EXPECT_EQ(decodeStatement(GetParam().bytes), QStringLiteral("证券代码,万科Ａ\n"));
}

QByteArray encodedAs(const char *codec)
{
    return QTextCodec::codecForName(codec)->fromUnicode(QStringLiteral("证券代码,万科Ａ\n"));
}

INSTANTIATE_TEST_SUITE_P(
    In, TextDecodingOfBytes,
    ::testing::Values(Encoded{"Utf8", QStringLiteral("证券代码,万科Ａ\n").toUtf8()},
                      Encoded{"Utf8WithMark", "\xEF\xBB\xBF" + QStringLiteral("证券代码,万科Ａ\n").toUtf8()},
                      Encoded{"Gbk", encodedAs("GBK")}, Encoded{"Gb18030", encodedAs("GB18030")},
                      Encoded{"Utf16", encodedAs("UTF-16")},
                      Encoded{"Utf16BigEndian", "\xFE\xFF" + encodedAs("UTF-16BE")}),
    ByName());

TEST(TextDecoding, RefusesAWorkbookWithAdvice)
{
    try {
        decodeStatement(QByteArray("PK\x03\x04rest", 8));
        FAIL() << "no refusal";
    } catch (const Error &error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("save it as .xlsx or CSV"));
    }
}

TEST(TextDecoding, SaysWhatAFileIsThatHoldsNoTable)
{
    const auto reason = [](const QByteArray &bytes) {
        try {
            decodeStatement(bytes);
        } catch (const Error &error) {
            return std::string(error.what());
        }
        return std::string("read");
    };
    EXPECT_EQ(reason("\x89PNG\r\n"), "this is no text, but a picture");
    EXPECT_EQ(reason("SQLite format 3"), "this is no text, but a ledger or another database");
}

} // namespace TradeModule
