#include "tradechartobject/common/OrderRow.h"

#include "tradechartobject/common/NumberText.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <climits>
#include <iterator>

namespace TradeChart {

namespace {

/// A span of the day, in hhmmsscc, whose orders are shown at one minute.
struct ShownAt
{
    int from;
    int to;            ///< included
    std::int64_t time; ///< hhmmss
};

constexpr std::int64_t firstMinute = 93100;

// The chart has no bars for these times.
constexpr ShownAt closedHours[] = {
    {INT_MIN, 9300099, firstMinute},
    {11310100, 13009999, 130100},
    {15000100, INT_MAX, 150000},
};

void takeSide(OrderRow &row, const QString &directionCode)
{
    const QString side = toBsFlag(directionCode);
    row.hasSide = !side.isEmpty();
    row.order.isBuy = side == QLatin1String(BSFlag::BUY);
}

void takeTime(OrderRow &row, const QString &text)
{
    row.time = toInt(text);
    row.order.orderTime = row.time / 100;
}

template <QString EntrustInfo::*member>
void takeText(OrderRow &row, const QString &text)
{
    row.order.*member = *row.knownTexts.insert(text);
}

template <std::int64_t EntrustInfo::*member>
void takeInt(OrderRow &row, const QString &text)
{
    row.order.*member = toInt(text);
}

} // namespace

const RowColumn<OrderRow> orderColumns[orderColumnCount] = {
    {TradeKeyFields::MARKET, [](OrderRow &row, const QString &text) { row.market = answerMarketCode(text); }},
    {TradeKeyFields::RTSBSFLAG, takeSide},
    {TradeKeyFields::RTSORDERSTATUS, takeText<&EntrustInfo::orderStatus>},
    {TradeKeyFields::RTSFUNDID, takeText<&EntrustInfo::fundId>},
    {TradeKeyFields::RTSORDERNO, takeInt<&EntrustInfo::orderNo>},
    {TradeKeyFields::RTSENTRUSTDATE, takeInt<&EntrustInfo::orderDate>}, // yyyymmdd
    {TradeKeyFields::RTSENTRUSTTIME, takeTime},                         // hhmmsscc
    {TradeKeyFields::RTSENTRUSTPRICE,
     [](OrderRow &row, const QString &text) { row.order.orderPrice = toDouble(text); }},
    {TradeKeyFields::RTSENTRUSTQTY, takeInt<&EntrustInfo::orderQty>},
    {TradeKeyFields::RTSMATCHQTY, takeInt<&EntrustInfo::matchQty>},
    {TradeKeyFields::RTSMATCHAMT,
     [](OrderRow &row, const QString &text) { row.matchAmount = toDouble(text); }},
    {TradeKeyFields::RTSCANCELQTY, takeInt<&EntrustInfo::cancelQty>},
};

std::int64_t shownMinute(int orderTime, bool isOfEarlierDay)
{
    if (isOfEarlierDay) {
        return firstMinute;
    }
    const auto span =
        std::find_if(std::begin(closedHours), std::end(closedHours), [orderTime](const ShownAt &hours) {
            return hours.from <= orderTime && orderTime <= hours.to;
        });
    const std::int64_t time = span == std::end(closedHours) ? orderTime / 100 : span->time;
    return time / 100 * 100;
}

} // namespace TradeChart
