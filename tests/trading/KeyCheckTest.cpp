// Values against their keys, and the schemas that tell others the same.
#include "trading/KeyCheck.h"
#include "tests/trading/MessageSchemas.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include <cmath>

namespace Trading {
namespace {

constexpr MessageKey dayKey(bool isRequired)
{
    return {"day", JsonType::Text, Form::Day, isRequired, WhenWrong::Ignored, "a day"};
}

TEST(KeyCheck, FindsWhatIsMissingOfAnotherTypeOrNotAllowed)
{
    EXPECT_EQ(faultOf(dayKey(true), QJsonValue(QJsonValue::Undefined)), KeyFault::Missing);
    EXPECT_EQ(faultOf(dayKey(true), 20240102), KeyFault::WrongType);
    EXPECT_EQ(faultOf(dayKey(true), QStringLiteral("20240230")), KeyFault::NotAllowed);
    EXPECT_EQ(faultOf(dayKey(true), QStringLiteral("20240229")), KeyFault::None);
}

TEST(KeyCheck, LetsWhatIsNotRequiredBeNullOrEmpty)
{
    EXPECT_EQ(faultOf(dayKey(false), QJsonValue::Null), KeyFault::None);
    EXPECT_EQ(faultOf(dayKey(false), QStringLiteral("")), KeyFault::None);
    EXPECT_EQ(faultOf(dayKey(true), QStringLiteral("")), KeyFault::NotAllowed);
}

TEST(KeyCheck, KnowsTheRangesOfNumbers)
{
    EXPECT_TRUE(allows(Form::FailureKind, 3));
    EXPECT_FALSE(allows(Form::FailureKind, 4));
    EXPECT_FALSE(allows(Form::FailureKind, 0.5));
    EXPECT_FALSE(allows(Form::Price, -0.01));
    EXPECT_TRUE(allows(Form::Day, 20240229));
    EXPECT_FALSE(allows(Form::Day, 20240230));
}

// The schemas. They tell what to send; a reader that is more patient, with "1e3" as a price, breaks no one.

bool schemaAllows(const QJsonObject &schema, const QString &text)
{
    if (schema.contains(QStringLiteral("enum"))) {
        return schema[QStringLiteral("enum")].toArray().contains(text);
    }
    const QString pattern = schema[QStringLiteral("pattern")].toString();
    return text.size() >= schema[QStringLiteral("minLength")].toInt() &&
           QRegularExpression(pattern).match(text).hasMatch();
}

const QStringList &samples()
{
    static const QStringList texts = {
        QStringLiteral(""),
        QStringLiteral("0"),
        QStringLiteral("1"),
        QStringLiteral("-1"),
        QStringLiteral("10.50"),
        QStringLiteral("-10.5"),
        QStringLiteral("nan"),
        QStringLiteral("inf"),
        QStringLiteral("20240229"),
        QStringLiteral("20241301"),
        QStringLiteral("20240132"),
        QStringLiteral("09301500"),
        QStringLiteral("9301500"),
        QStringLiteral("25000000"),
        QStringLiteral("09600000"),
        QStringLiteral("0931"),
        QStringLiteral("093100"),
        QStringLiteral("2460"),
        QStringLiteral("2147483647"),
        QStringLiteral("B"),
        QStringLiteral("S"),
        QStringLiteral("b"),
        QStringLiteral("0B"),
        QStringLiteral("0S"),
        QStringLiteral("0X"),
        QStringLiteral("7"),
        QStringLiteral("A"),
        QStringLiteral("SH"),
        QStringLiteral("SZ"),
        QStringLiteral("HK"),
        QStringLiteral("2"),
        QStringLiteral("3"),
        QStringLiteral("TodayTrade"),
        QStringLiteral("Weather"),
        QStringLiteral("sale"),
        QStringLiteral("profit"),
        QStringLiteral("fifo"),
        QStringLiteral("placed"),
        QStringLiteral("持仓"),
        QStringLiteral("2026-11-22T01:30:00Z"),
        QStringLiteral("2026-11-22T01:30:00"),
        QString(65, QLatin1Char('x')),
    };
    return texts;
}

TEST(KeyCheckSchemas, AllowOfTheseTextsWhatReadersAllow)
{
    for (int place = 0; place <= static_cast<int>(Form::Instant); ++place) {
        const Form form = static_cast<Form>(place);
        const QJsonObject schema = schemaOf(JsonType::Text, form);
        for (const QString &text : samples()) {
            EXPECT_EQ(schemaAllows(schema, text), allows(form, text))
                << place << " (" << wordOf(form) << "): " << text.toStdString();
        }
    }
}

TEST(KeyCheckSchemas, AllowOfTheseNumbersWhatReadersAllow)
{
    for (const Form form :
         {Form::Any, Form::Price, Form::Whole, Form::Positive, Form::FailureKind, Form::Day}) {
        const QJsonObject schema = schemaOf(JsonType::Number, form);
        for (const double number : {-1.0, 0.0, 0.5, 1.0, 3.0, 4.0, 20240229.0, 1e300}) {
            const bool isInRange = number >= schema[QStringLiteral("minimum")].toDouble(-1e301) &&
                                   number <= schema[QStringLiteral("maximum")].toDouble(1e301);
            const bool isOfType = schema[QStringLiteral("type")].toString() == QLatin1String("number") ||
                                  number == std::floor(number);
            EXPECT_EQ(isInRange && isOfType, allows(form, number)) << wordOf(form) << ": " << number;
        }
    }
}

} // namespace
} // namespace Trading
