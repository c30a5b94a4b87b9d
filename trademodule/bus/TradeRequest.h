#pragma once

#include "trademodule/ledger/Ledger.h"
#include "trademodule/report/KeptResults.h"
#include "trading/Question.h"

#include <QJsonObject>

#include <optional>

namespace TradeModule {

/// A question from the bus, field by field. Each function throws an Error that names the field when it
/// does not hold what it must.
class TradeRequest
{
public:
    explicit TradeRequest(const QJsonObject &object) : m_question(object) {}

    QString command() const;
    SecurityId security() const;
    /// "start" and "end".
    DateRange days() const;

    /// "date", a number.
    TradingDate day() const;
    /// "orderdate" and "ordersno" as text.
    TradingDate orderDate() const;
    qint64 orderNumber() const;
    /// "bsflag2": a direction code of orders, or "B" or "S".
    Direction direction() const;
    /// "orderprice" and "orderqty" as text.
    Money orderPrice() const;
    qint64 orderQuantity() const;
    /// "clientno" as text; empty when the question has none.
    QString clientNumber() const;
    /// The same, which the question must have.
    QString neededClientNumber() const;

    /// "lang" as text; empty when the question has none.
    QString language() const;

    /// Which list of results is asked for, of all securities or of "stkcode" alone; its order must be a
    /// column of the list.
    KeptResults::Wish results() const;
    /// The first of the rows that are asked for, and how many of them at most.
    qint64 firstRow() const;
    int mostRows() const;
    CostMethod costMethod() const;

    /// A field as it came, for the echo in the answer.
    QJsonValue field(const char *key) const { return m_question.field(key); }

private:
    void needText(const char *key) const;
    template <typename Value>
    Value needed(const char *key, const std::optional<Value> &value, const QString &expected) const;
    bool has(const char *key) const;
    std::optional<ResultField> listOrder(ResultGroup group) const;
    [[noreturn]] void refuse(const char *key, const QString &expected) const;

    const Trading::Question m_question;
};

} // namespace TradeModule
