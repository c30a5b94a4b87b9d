#pragma once

#include "trading/Direction.h"
#include "trading/Money.h"
#include "trading/ResultColumns.h"
#include "trading/SecurityId.h"
#include "trading/TradingDate.h"

#include <QJsonObject>

#include <optional>
#include <utility>

namespace Trading {

/// A question to the trading module, as it travels on channel "Global", topic "TradeQuery": one JSON object
/// whose keys are words of the vocabulary. Who asks makes it of a command and adds what the command needs,
/// see docs/trading-module.md:
///
///     Question question(CmdType::ENTRUSTCANCEL);
///     question.answerOn(channel, id);
///     question.setSecurity({"600519", Market::Shanghai});
///     question.setOrder(day, number);
///     endPoint.sendMessage("Global", "TradeQuery", question.toJson());
///
/// Who is asked makes it of the object that came. Each reading function gives nothing when the field is
/// missing or does not hold what it must; field() tells what came.
class Question
{
public:
    explicit Question(const char *command);
    explicit Question(QJsonObject received) : m_object(std::move(received)) {}

    /// The channel that the answer is to come on, and an id that the answer brings back.
    void answerOn(const QString &channel, const QString &id = {});
    void setSecurity(const SecurityId &security);
    /// The one day that is asked about.
    void setDay(TradingDate day);
    /// The days that are asked about, both included.
    void setDays(TradingDate first, TradingDate last);
    /// The order that is meant.
    void setOrder(TradingDate day, const QString &number);
    /// The order that is to be placed.
    void setNewOrder(Direction direction, Money price, qint64 quantity);
    /// What the asker calls the new order: the same number asked again places no second one. 1 to 64
    /// characters, of printable ASCII. Only for a module whose presence says that it knows such numbers.
    void setClientNumber(const QString &number);

    /// The language of who asks, "zh" or "en".
    void setLanguage(const QString &word);
    /// The price at which what is left of the order that is meant is to be placed.
    void setNewPrice(Money price);

    /// The list of results that is asked for, and the part of it.
    void setList(ResultGroup group, qint64 first, int most);
    /// The column that the list is ordered by.
    void setListOrder(ResultField field, bool isDescending);
    /// How costs are to be reckoned: one of CostWords.
    void setCostMethod(const QString &word);

    QByteArray toJson() const;

    std::optional<QString> command() const;
    std::optional<QString> answerChannel() const;
    std::optional<QString> securityCode() const;
    std::optional<Market> market() const;
    std::optional<TradingDate> day() const;
    std::optional<TradingDate> firstDay() const;
    std::optional<TradingDate> lastDay() const;
    std::optional<TradingDate> orderDay() const;
    /// A number greater than 0, and so is a quantity.
    std::optional<qint64> orderNumber() const;
    std::optional<Direction> direction() const;
    std::optional<Money> orderPrice() const;
    std::optional<qint64> orderQuantity() const;
    std::optional<QString> clientNumber() const;
    std::optional<QString> language() const;
    std::optional<ResultGroup> listGroup() const;
    /// Not below 0.
    std::optional<qint64> firstRow() const;
    /// From 1 to mostResultRows.
    std::optional<int> mostRows() const;
    std::optional<ResultField> listOrder() const;
    bool isDescending() const;
    std::optional<QString> costMethod() const;

    /// A field as it came; undefined when it did not.
    QJsonValue field(const char *key) const { return m_object.value(QLatin1String(key)); }

private:
    void set(const char *key, const QString &value) { m_object.insert(QLatin1String(key), value); }
    std::optional<QString> text(const char *key) const;
    std::optional<TradingDate> date(const char *key) const;
    std::optional<qint64> positiveNumber(const char *key) const;

    QJsonObject m_object;
};

} // namespace Trading
