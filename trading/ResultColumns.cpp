#include "trading/ResultColumns.h"

#include <QtGlobal>

#include <algorithm>
#include <iterator>

namespace Trading {

namespace {

using F = ResultField;
using Fields = std::vector<ResultField>;

constexpr bool summed = true;
constexpr bool single = false;

/// The trading module shows the keys to people, in their language.
constexpr ResultColumn columns[] = {
    {F::Date, QT_TRANSLATE_NOOP("TradeModule", "date"), ResultKind::Text, single},
    {F::Time, QT_TRANSLATE_NOOP("TradeModule", "time"), ResultKind::Text, single},
    {F::Month, QT_TRANSLATE_NOOP("TradeModule", "month"), ResultKind::Text, single},
    {F::Year, QT_TRANSLATE_NOOP("TradeModule", "year"), ResultKind::Text, single},
    {F::Code, QT_TRANSLATE_NOOP("TradeModule", "code"), ResultKind::Text, single},
    {F::Market, QT_TRANSLATE_NOOP("TradeModule", "market"), ResultKind::Text, single},
    {F::Name, QT_TRANSLATE_NOOP("TradeModule", "name"), ResultKind::Text, single},
    {F::Opened, QT_TRANSLATE_NOOP("TradeModule", "opened"), ResultKind::Text, single},
    {F::Closed, QT_TRANSLATE_NOOP("TradeModule", "closed"), ResultKind::Text, single},
    {F::Price, QT_TRANSLATE_NOOP("TradeModule", "price"), ResultKind::Price, single},
    {F::Quantity, QT_TRANSLATE_NOOP("TradeModule", "quantity"), ResultKind::Shares, single},
    {F::SharesIn, QT_TRANSLATE_NOOP("TradeModule", "sharesin"), ResultKind::Shares, single},
    {F::SharesOut, QT_TRANSLATE_NOOP("TradeModule", "sharesout"), ResultKind::Shares, single},
    {F::Sales, QT_TRANSLATE_NOOP("TradeModule", "sales"), ResultKind::Count, summed},
    {F::Amount, QT_TRANSLATE_NOOP("TradeModule", "amount"), ResultKind::Money, summed},
    {F::Fee, QT_TRANSLATE_NOOP("TradeModule", "fee"), ResultKind::Money, summed},
    {F::Bought, QT_TRANSLATE_NOOP("TradeModule", "bought"), ResultKind::Money, summed},
    {F::Sold, QT_TRANSLATE_NOOP("TradeModule", "sold"), ResultKind::Money, summed},
    {F::Fees, QT_TRANSLATE_NOOP("TradeModule", "fees"), ResultKind::Money, summed},
    {F::StampDuty, QT_TRANSLATE_NOOP("TradeModule", "stampduty"), ResultKind::Money, summed},
    {F::SoldCost, QT_TRANSLATE_NOOP("TradeModule", "soldcost"), ResultKind::Money, summed},
    {F::Profit, QT_TRANSLATE_NOOP("TradeModule", "profit"), ResultKind::Gain, summed},
    {F::Percent, QT_TRANSLATE_NOOP("TradeModule", "percent"), ResultKind::Percent, summed},
    {F::Dividends, QT_TRANSLATE_NOOP("TradeModule", "dividends"), ResultKind::Money, summed},
    {F::Taxes, QT_TRANSLATE_NOOP("TradeModule", "taxes"), ResultKind::Money, summed},
    {F::Interest, QT_TRANSLATE_NOOP("TradeModule", "interest"), ResultKind::Money, summed},
    {F::Total, QT_TRANSLATE_NOOP("TradeModule", "total"), ResultKind::Gain, summed},
    {F::Held, QT_TRANSLATE_NOOP("TradeModule", "held"), ResultKind::Shares, single},
    {F::HeldCost, QT_TRANSLATE_NOOP("TradeModule", "heldcost"), ResultKind::Money, single},
    {F::CostPrice, QT_TRANSLATE_NOOP("TradeModule", "costprice"), ResultKind::Cost, single},
    {F::Method, QT_TRANSLATE_NOOP("TradeModule", "method"), ResultKind::Text, single},
};

/// The table is in the order of the enumerators, so that a field is found by its place.
constexpr bool isInOrder()
{
    for (size_t place = 0; place < std::size(columns); ++place) {
        if (columns[place].field != static_cast<F>(place)) {
            return false;
        }
    }
    return std::size(columns) == static_cast<size_t>(F::Method) + 1;
}
static_assert(isInOrder());

Fields operator+(Fields first, const Fields &more)
{
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

const Fields &securityFields()
{
    static const Fields fields{F::Code, F::Market, F::Name};
    return fields;
}

const Fields &figureFields()
{
    static const Fields fields{F::Sales,  F::Bought,  F::Sold,      F::Fees,  F::StampDuty, F::SoldCost,
                               F::Profit, F::Percent, F::Dividends, F::Taxes, F::Interest,  F::Total};
    return fields;
}

struct GroupRow
{
    ResultGroup group;
    const char *word;
    Fields fields;
};

const std::vector<GroupRow> &groupTable()
{
    static const std::vector<GroupRow> table{
        {ResultGroup::Sale, "sale",
         Fields{F::Date, F::Time} + securityFields() +
             Fields{F::Price, F::Quantity, F::Amount, F::Fee, F::StampDuty, F::SoldCost, F::Profit,
                    F::Percent}},
        {ResultGroup::Trip, "trip",
         securityFields() + Fields{F::Opened, F::Closed, F::SharesIn, F::SharesOut} + figureFields()},
        {ResultGroup::Security, "security",
         securityFields() + figureFields() + Fields{F::Held, F::HeldCost, F::CostPrice}},
        {ResultGroup::Month, "month", Fields{F::Month} + figureFields()},
        {ResultGroup::Year, "year", Fields{F::Year} + figureFields()},
    };
    return table;
}

const GroupRow &rowOf(ResultGroup group)
{
    return *std::find_if(groupTable().begin(), groupTable().end(),
                         [group](const GroupRow &row) { return row.group == group; });
}

} // namespace

const std::vector<ResultGroup> &resultGroups()
{
    static const std::vector<ResultGroup> groups = [] {
        std::vector<ResultGroup> all;
        std::transform(groupTable().begin(), groupTable().end(), std::back_inserter(all),
                       [](const GroupRow &row) { return row.group; });
        return all;
    }();
    return groups;
}

QString wordOf(ResultGroup group)
{
    return QLatin1String(rowOf(group).word);
}

std::optional<ResultGroup> resultGroupOf(const QString &word)
{
    const auto row = std::find_if(groupTable().begin(), groupTable().end(),
                                  [&word](const GroupRow &each) { return word == QLatin1String(each.word); });
    return row == groupTable().end() ? std::nullopt : std::optional(row->group);
}

const ResultColumn &columnOf(ResultField field)
{
    return columns[static_cast<size_t>(field)];
}

const ResultColumn *findResultColumn(const QString &key)
{
    const auto *const found =
        std::find_if(std::begin(columns), std::end(columns),
                     [&key](const ResultColumn &column) { return key == QLatin1String(column.key); });
    return found == std::end(columns) ? nullptr : found;
}

const std::vector<ResultField> &fieldsOf(ResultGroup group)
{
    return rowOf(group).fields;
}

} // namespace Trading
