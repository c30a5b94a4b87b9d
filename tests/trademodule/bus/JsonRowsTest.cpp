#include "trademodule/bus/JsonRows.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

namespace {

QJsonArray read(JsonRows rows)
{
    QJsonParseError error{};
    const QByteArray json = rows.toJson();
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << json.constData();
    return document.array();
}

/// What a reader of JSON makes of a text.
QString readBack(const QString &text)
{
    JsonRows rows;
    rows.begin();
    rows.addText("key", text);
    return read(rows).at(0).toObject()[QStringLiteral("key")].toString();
}

} // namespace

TEST(JsonRows, AreAnEmptyArrayWithoutRows)
{
    EXPECT_EQ(JsonRows().toJson(), "[]");
}

TEST(JsonRows, HoldTextsNumbersAndFlags)
{
    JsonRows rows;
    rows.begin();
    rows.addText("text", QStringLiteral("300"));
    rows.addPlainText("plain", "10");
    rows.addNumber("number", "10.50");
    rows.addFlag("yes", true);
    rows.addFlag("no", false);

    EXPECT_EQ(rows.toJson(), R"([{"text":"300","plain":"10","number":10.50,"yes":true,"no":false}])");
}

TEST(JsonRows, StandOneAfterTheOther)
{
    JsonRows rows;
    for (const char *code : {"1", "2", "3"}) {
        rows.begin();
        rows.addPlainText("a", code);
        rows.addText("b", QString());
    }

    EXPECT_EQ(rows.toJson(), R"([{"a":"1","b":""},{"a":"2","b":""},{"a":"3","b":""}])");
}

TEST(JsonRows, KeepEveryCharacterOfATextAsItIs)
{
    for (uint code = 0; code <= 0xffff; ++code) {
        if (!QChar::isSurrogate(code)) {
            const QString text = QStringLiteral("a%1b").arg(QChar(code));
            ASSERT_EQ(readBack(text), text) << code;
        }
    }
    const QString astral = QString::fromUtf8("\U0001f600 \U00020000");
    EXPECT_EQ(readBack(astral), astral);
}

TEST(JsonRows, AreValidWhenATextHoldsHalfACharacter)
{
    EXPECT_EQ(readBack(QString(QChar(0xd83d))).size(), 1);
}

} // namespace TradeModule
