#include "tradechartobject/common/FlatMessage.h"
#include "tests/fuzz/TwoWays.h"
#include "tests/support/ByName.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <random>
#include <vector>

using ::testing::Gt;
using ::testing::SizeIs;
using TradeChart::FlatMessage;

namespace {

struct Text
{
    const char *name;
    QByteArray json;
};

// In place

class FlatMessageInPlace : public ::testing::TestWithParam<Text>
{
};

TEST_P(FlatMessageInPlace, ReadsWhatTradingModulesSend)
{
    EXPECT_TRUE(isReadInPlace(GetParam().json));
    EXPECT_EQ(differenceOfWays(GetParam().json), "");
}

QByteArray withRows(const QByteArray &rows)
{
    return "{\"cmd\":\"x\",\"data\":[" + rows + "]}";
}

INSTANTIATE_TEST_SUITE_P(
    Texts, FlatMessageInPlace,
    ::testing::Values(Text{"ANotification", R"({"stkcode":"600536"})"}, Text{"NoRows", withRows("")},
                      Text{"Rows", withRows(R"({"price":"1"},{"price":"2"})")},
                      Text{"RowsOfOtherForms", withRows(R"({"price":"1"},{"qty":"2","price":"3"},{})")},
                      Text{"WhiteSpace", "\r\n{ \"cmd\" :\t\"x\" } "},
                      Text{"ChineseNames", withRows(R"({"stkname":"江山科技"})")},
                      Text{"EscapedNames", withRows(R"({"stkname":"\u6c5f\u5c71","x":"\ud83d"})")},
                      Text{"PlainNumbers", withRows(R"({"vol":300,"price":-10.25,"x":0})")},
                      Text{"Words", withRows(R"({"buy":true,"x":false,"y":null})")}),
    ByName());

// Left to Qt

class FlatMessageLeavesToQt : public ::testing::TestWithParam<Text>
{
};

TEST_P(FlatMessageLeavesToQt, WhatItMayReadDifferently)
{
    EXPECT_FALSE(isReadInPlace(GetParam().json));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, FlatMessageLeavesToQt,
    ::testing::Values(Text{"NoObject", "[]"}, Text{"NoField", "{}"}, Text{"Nothing", ""},
                      Text{"AnObjectInside", R"({"data":{"costprice":"1"}})"},
                      Text{"OtherRows", R"({"rows":[{}]})"}, Text{"ARowThatIsNone", withRows("5")},
                      Text{"AValueWithValues", withRows(R"({"x":[1]})")},
                      Text{"ARepeatedKey", R"({"cmd":"a","cmd":"b"})"},
                      Text{"ARepeatedKeyInARow", withRows(R"({"x":"1","x":"2"})")},
                      Text{"ARepeatedKeyInARowLikeTwoBefore",
                           withRows(R"({"a":1,"b":2},{"b":3},{"b":4,"b":5})")},
                      Text{"AnEscapedKey", R"({"c\u006dd":"x"})"}, Text{"AChineseKey", R"({"名":"x"})"},
                      Text{"AnUnknownEscape", R"({"cmd":"\x"})"}, Text{"ACutEscape", R"({"cmd":"\u12"})"},
                      Text{"AControlCharacter", "{\"cmd\":\"a\x01\"}"},
                      Text{"AnEndMark", QByteArray("{\"cmd\":\"a\0\"}", 12)},
                      Text{"AByteOrderMark", "\xEF\xBB\xBF{\"cmd\":\"x\"}"},
                      Text{"AByteOrderMarkInAText", "{\"cmd\":\"\xEF\xBB\xBFx\"}"},
                      Text{"AnOverlongCharacter", "{\"cmd\":\"\xC0\xAF\"}"},
                      Text{"ASurrogateInUtf8", "{\"cmd\":\"\xED\xA0\x80\"}"},
                      Text{"ACharacterTooHigh", "{\"cmd\":\"\xF4\x90\x80\x80\"}"},
                      Text{"ACutCharacter", "{\"cmd\":\"\xE6\xB1\"}"}, Text{"AnExponent", R"({"x":1e3})"},
                      Text{"ALeadingZero", R"({"x":01})"}, Text{"ABarePoint", R"({"x":1.})"},
                      Text{"SixteenDigits", R"({"x":1234567890123456})"}, Text{"AnotherWord", R"({"x":nan})"},
                      Text{"ATrailingComma", R"({"x":1,})"}, Text{"TrailingText", R"({"x":1} x)"},
                      Text{"AMessageCutOff", R"({"x":1)"}, Text{"RowsCutOff", R"({"data":[{"x":"1"},)"},
                      Text{"SixtyFiveFields",
                           [] {
                               QByteArray fields;
                               for (int i = 0; i < 65; ++i) {
                                   fields += (i == 0 ? "{\"" : ",\"") + QByteArray::number(i) + "\":1";
                               }
                               return fields + "}";
                           }()},
                      Text{"AFieldFarFromTheBeginOfItsRow",
                           withRows("{\"x\":\"" + QByteArray(1 << 16, 'x') + "\",\"price\":\"1\"}")}),
    ByName());

// Either way

/// The documents of tests/fuzz/corpus/answers.
std::vector<QByteArray> corpus()
{
    std::vector<QByteArray> documents;
    const QDir folder(QStringLiteral(TRADECHART_SOURCE_DIR "/tests/fuzz/corpus/answers"));
    for (const QString &name : folder.entryList(QDir::Files)) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        documents.push_back(file.readAll());
    }
    return documents;
}

TEST(FlatMessage, ReadsTheKeptDocumentsAsQtDoes)
{
    const auto documents = corpus();
    ASSERT_THAT(documents, SizeIs(Gt(40U)));
    for (const QByteArray &document : documents) {
        EXPECT_EQ(differenceOfWays(document), "") << document.constData();
    }
}

/// Copies, drops and changes pieces of documents.
class Mutator
{
public:
    QByteArray mutated(QByteArray text, const QByteArray &other)
    {
        for (int change = upTo(3); change >= 0; --change) {
            const int place = upTo(text.size());
            switch (upTo(3)) {
            case 0:
                text.remove(place, 1 + upTo(4));
                break;
            case 1:
                text.insert(place, other.mid(upTo(other.size()), 1 + upTo(30)));
                break;
            case 2:
                text.insert(place, m_odd[static_cast<std::size_t>(upTo(static_cast<int>(m_odd.size()) - 1))]);
                break;
            default:
                text.replace(place, 1, QByteArray(1, static_cast<char>(upTo(255))));
            }
        }
        return text;
    }

    /// From 0 to `most`.
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }

private:
    const std::vector<QByteArray> m_odd = {"\"", "\\", "{",  "}",   "[",     "]",    ",",
                                           ":",  "0",  "-0", "1e1", "\\u00", "null", "\xEF\xBB\xBF"};
    std::mt19937 m_random{20240102};
};

TEST(FlatMessage, ReadsChangedDocumentsAsQtDoes)
{
    const auto documents = corpus();
    Mutator mutator;
    int inPlace = 0;
    for (int round = 0; round < 20000; ++round) {
        const auto any = [&] {
            return documents[static_cast<std::size_t>(mutator.upTo(static_cast<int>(documents.size()) - 1))];
        };
        const QByteArray document = mutator.mutated(any(), any());
        ASSERT_EQ(differenceOfWays(document), "") << document.constData();
        inPlace += isReadInPlace(document) ? 1 : 0;
    }
    EXPECT_GT(inPlace, 500) << "too few to say anything";
}

TEST(FlatMessage, KeepsItsTextWhileRowsAreHeld)
{
    auto message = FlatMessage::read(QByteArray(R"({"data":[{"price":"1"}]})"));
    ASSERT_TRUE(message);
    const TradeChart::FlatRows rows = message->rows();
    message.reset();
    TradeChart::FlatPlace place("price");
    EXPECT_TRUE(rows.at(0).read(place));
    EXPECT_EQ(place.value.toString(), QStringLiteral("1"));
}

} // namespace
