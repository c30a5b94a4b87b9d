#include "trading/KeyCheck.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ClockTime.h"
#include "trading/Market.h"
#include "trading/ModuleVocabulary.h"
#include "trading/ReplacementState.h"
#include "trading/ResultColumns.h"
#include "trading/TradingDate.h"

#include <QDateTime>
#include <QString>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Trading {

namespace {

bool isOfType(const QJsonValue &value, JsonType type)
{
    switch (type) {
    case JsonType::Text:
        return value.isString();
    case JsonType::Number:
        return value.isDouble();
    case JsonType::Flag:
        return value.isBool();
    case JsonType::Record:
        return value.isObject();
    case JsonType::Texts:
    case JsonType::Rows:
        return value.isArray();
    }
    return false;
}

bool isWhole(const QString &text, int least)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= least;
}

bool isPrice(const QString &text)
{
    bool isNumber = false;
    const double price = text.toDouble(&isNumber);
    return isNumber && std::isfinite(price) && price >= 0;
}

bool isAmount(const QString &text)
{
    bool isNumber = false;
    const double amount = text.toDouble(&isNumber);
    return isNumber && std::isfinite(amount);
}

bool isCostMethod(const QString &text)
{
    const auto words = {CostWords::AVERAGE, CostWords::DILUTED, CostWords::FIFO};
    return std::any_of(words.begin(), words.end(),
                       [&text](const char *word) { return text == QLatin1String(word); });
}

bool isCost(const QString &text)
{
    bool isNumber = false;
    const double cost = text.toDouble(&isNumber);
    return isNumber && !std::isinf(cost);
}

/// With the hundredths: without them a time of the morning reads as one of the night. The first digit may be
/// missing, as overlays read a number.
bool isTime(const QString &text)
{
    constexpr int leastDigits = 7;
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && text.size() >= leastDigits && ClockTime::ofNumber(number);
}

/// In UTC, so that no reader has to know the zone of a machine.
bool isInstant(const QString &text)
{
    return text.endsWith(u'Z') && QDateTime::fromString(text, Qt::ISODate).isValid();
}

bool isClientNumber(const QString &text)
{
    constexpr int mostCharacters = 64;
    return !text.isEmpty() && text.size() <= mostCharacters &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u' ' && c <= u'~'; });
}

bool allowsText(Form form, const QString &text)
{
    switch (form) {
    case Form::Any:
        return true;
    case Form::Filled:
        return !text.isEmpty();
    case Form::Day:
        return TradingDate::ofText(text).has_value();
    case Form::Time:
        return isTime(text);
    case Form::QuoteTime:
        return ClockTime::ofText(text).has_value();
    case Form::Price:
        return isPrice(text);
    case Form::Cost:
        return isCost(text);
    case Form::Whole:
        return isWhole(text, 0);
    case Form::Positive:
        return isWhole(text, 1);
    case Form::TradeSide:
        return text == QLatin1String(TradeChart::BSFlag::BUY) ||
               text == QLatin1String(TradeChart::BSFlag::SELL);
    case Form::OrderSide:
        return !TradeChart::toBsFlag(text).isEmpty();
    case Form::OrderStatus:
        return TradeChart::OrderStatusTable::find(text) != nullptr;
    case Form::MarketLetters:
        return marketOfLetters(text).has_value();
    case Form::MarketNumber:
        return marketOfNumber(text).has_value();
    case Form::AnyMarket:
        return marketOfLetters(text) || marketOfNumber(text);
    case Form::Command:
        return findMessage(MessageRole::Answer, text) != nullptr;
    case Form::ClientNumber:
        return isClientNumber(text);
    case Form::Amount:
        return isAmount(text);
    case Form::ResultGroup:
        return resultGroupOf(text).has_value();
    case Form::ResultColumn:
        return findResultColumn(text) != nullptr;
    case Form::CostMethod:
        return isCostMethod(text);
    case Form::Replacement:
        return replacementStateOf(text).has_value();
    case Form::Instant:
        return isInstant(text);
    case Form::FailureKind:
        return false;
    }
    return false;
}

/// What of the forms a number can have.
bool allowsNumber(Form form, double number)
{
    const bool isInt = number == std::floor(number) && std::abs(number) <= std::numeric_limits<int>::max();
    switch (form) {
    case Form::Any:
    case Form::Amount:
        return true;
    case Form::Price:
        return number >= 0;
    case Form::Whole:
        return isInt && number >= 0;
    case Form::Positive:
        return isInt && number > 0;
    case Form::Day:
        return isInt && TradingDate::ofNumber(static_cast<int>(number));
    case Form::FailureKind:
        return isInt && number >= 0 && number <= lastFailureKind;
    case Form::Filled:
    case Form::Time:
    case Form::QuoteTime:
    case Form::Cost:
    case Form::TradeSide:
    case Form::OrderSide:
    case Form::OrderStatus:
    case Form::MarketLetters:
    case Form::MarketNumber:
    case Form::AnyMarket:
    case Form::Command:
    case Form::ClientNumber:
    case Form::ResultGroup:
    case Form::ResultColumn:
    case Form::CostMethod:
    case Form::Replacement:
    case Form::Instant:
        return false;
    }
    return false;
}

} // namespace

bool allows(Form form, const QJsonValue &value)
{
    if (value.isString()) {
        return allowsText(form, value.toString());
    }
    return !value.isDouble() || allowsNumber(form, value.toDouble());
}

bool isLeftOut(const MessageKey &key, const QJsonValue &value)
{
    return value.isUndefined() || value.isNull() ||
           (!key.isRequired && value.isString() && value.toString().isEmpty());
}

KeyFault faultOf(const MessageKey &key, const QJsonValue &value)
{
    if (isLeftOut(key, value)) {
        return key.isRequired ? KeyFault::Missing : KeyFault::None;
    }
    if (!isOfType(value, key.type)) {
        return KeyFault::WrongType;
    }
    return allows(key.form, value) ? KeyFault::None : KeyFault::NotAllowed;
}

} // namespace Trading
