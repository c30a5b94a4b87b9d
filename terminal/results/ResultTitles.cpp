#include "terminal/results/ResultTitles.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

using Trading::ResultField;
using Trading::ResultGroup;
using Trading::ResultKind;

QString text(const char *source)
{
    return QCoreApplication::translate("ResultTitles", source);
}

template <typename Value>
struct Title
{
    Value value;
    const char *title;
};

constexpr Title<ResultField> fields[] = {
    {ResultField::Date, QT_TRANSLATE_NOOP("ResultTitles", "Day")},
    {ResultField::Time, QT_TRANSLATE_NOOP("ResultTitles", "Time")},
    {ResultField::Month, QT_TRANSLATE_NOOP("ResultTitles", "Month")},
    {ResultField::Year, QT_TRANSLATE_NOOP("ResultTitles", "Year")},
    {ResultField::Code, QT_TRANSLATE_NOOP("ResultTitles", "Code")},
    {ResultField::Market, QT_TRANSLATE_NOOP("ResultTitles", "Market")},
    {ResultField::Name, QT_TRANSLATE_NOOP("ResultTitles", "Name")},
    {ResultField::Opened, QT_TRANSLATE_NOOP("ResultTitles", "Opened")},
    {ResultField::Closed, QT_TRANSLATE_NOOP("ResultTitles", "Closed")},
    {ResultField::Price, QT_TRANSLATE_NOOP("ResultTitles", "Price")},
    {ResultField::Quantity, QT_TRANSLATE_NOOP("ResultTitles", "Quantity")},
    {ResultField::SharesIn, QT_TRANSLATE_NOOP("ResultTitles", "Shares in")},
    {ResultField::SharesOut, QT_TRANSLATE_NOOP("ResultTitles", "Shares out")},
    {ResultField::Sales, QT_TRANSLATE_NOOP("ResultTitles", "Sales")},
    {ResultField::Amount, QT_TRANSLATE_NOOP("ResultTitles", "Amount")},
    {ResultField::Fee, QT_TRANSLATE_NOOP("ResultTitles", "Fees")},
    {ResultField::Bought, QT_TRANSLATE_NOOP("ResultTitles", "Bought for")},
    {ResultField::Sold, QT_TRANSLATE_NOOP("ResultTitles", "Sold for")},
    {ResultField::Fees, QT_TRANSLATE_NOOP("ResultTitles", "Fees")},
    {ResultField::StampDuty, QT_TRANSLATE_NOOP("ResultTitles", "Stamp duty")},
    {ResultField::SoldCost, QT_TRANSLATE_NOOP("ResultTitles", "Cost of sold")},
    {ResultField::Profit, QT_TRANSLATE_NOOP("ResultTitles", "Profit")},
    {ResultField::Percent, QT_TRANSLATE_NOOP("ResultTitles", "Profit %")},
    {ResultField::Dividends, QT_TRANSLATE_NOOP("ResultTitles", "Dividends")},
    {ResultField::Taxes, QT_TRANSLATE_NOOP("ResultTitles", "Dividend tax")},
    {ResultField::Interest, QT_TRANSLATE_NOOP("ResultTitles", "Interest")},
    {ResultField::Total, QT_TRANSLATE_NOOP("ResultTitles", "Total")},
    {ResultField::Held, QT_TRANSLATE_NOOP("ResultTitles", "Held")},
    {ResultField::HeldCost, QT_TRANSLATE_NOOP("ResultTitles", "Cost of held")},
    {ResultField::CostPrice, QT_TRANSLATE_NOOP("ResultTitles", "Cost per share")},
    {ResultField::Method, QT_TRANSLATE_NOOP("ResultTitles", "Cost")},
};

constexpr Title<ResultGroup> groups[] = {
    {ResultGroup::Security, QT_TRANSLATE_NOOP("ResultTitles", "By security")},
    {ResultGroup::Month, QT_TRANSLATE_NOOP("ResultTitles", "By month")},
    {ResultGroup::Year, QT_TRANSLATE_NOOP("ResultTitles", "By year")},
    {ResultGroup::Sale, QT_TRANSLATE_NOOP("ResultTitles", "By sale")},
    {ResultGroup::Trip, QT_TRANSLATE_NOOP("ResultTitles", "By round trip")},
};

template <typename Value, size_t count>
QString titleIn(const Title<Value> (&titles)[count], Value value)
{
    const auto *const found = std::find_if(std::begin(titles), std::end(titles),
                                           [value](const Title<Value> &row) { return row.value == value; });
    return found == std::end(titles) ? QString() : text(found->title);
}

bool isNumber(ResultKind kind)
{
    return kind != ResultKind::Text && kind != ResultKind::Price;
}

/// "1234567.50" as "1,234,567.50"; digits beyond the point stay.
QString withCommas(QString number)
{
    constexpr int digitsOfGroup = 3;
    const int point = number.indexOf(QLatin1Char('.'));
    const int firstDigit = number.startsWith(QLatin1Char('-')) ? 1 : 0;
    for (int place = (point < 0 ? number.size() : point) - digitsOfGroup; place > firstDigit;
         place -= digitsOfGroup) {
        number.insert(place, QLatin1Char(','));
    }
    return number;
}

bool isMoreThanNothing(const QString &number)
{
    return !number.startsWith(QLatin1Char('-')) &&
           std::any_of(number.begin(), number.end(), [](QChar c) { return c >= u'1' && c <= u'9'; });
}

} // namespace

QString titleOf(ResultField field)
{
    return titleIn(fields, field);
}

QString titleOf(ResultGroup group)
{
    return titleIn(groups, group);
}

QString shownCell(ResultField field, const QString &text)
{
    const ResultKind kind = Trading::columnOf(field).kind;
    if (!isNumber(kind) || text.isEmpty()) {
        return text;
    }
    const bool isPlus = (kind == ResultKind::Gain || kind == ResultKind::Percent) && isMoreThanNothing(text);
    return (isPlus ? QStringLiteral("+") : QString()) + withCommas(text);
}

bool isAmount(ResultKind kind)
{
    switch (kind) {
    case ResultKind::Text:
    case ResultKind::Count:
    case ResultKind::Price:
        return false;
    case ResultKind::Shares:
    case ResultKind::Money:
    case ResultKind::Gain:
    case ResultKind::Percent:
    case ResultKind::Cost:
        return true;
    }
    return true;
}

} // namespace Terminal
