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

void takeSide(OrderRow &row, const RowField &directionCode)
{
    const QString side = toBsFlag(directionCode.text().toString());
    row.hasSide = !side.isEmpty();
    row.order.isBuy = side == QLatin1String(BSFlag::BUY);
}

void takeTime(OrderRow &row, const RowField &field)
{
    row.time = toInt(field.text());
    row.order.orderTime = row.time / 100;
}

template <QString EntrustInfo::*member>
void takeText(OrderRow &row, const RowField &field)
{
    row.order.*member = row.knownTexts.keep(field.text());
}

template <std::int64_t EntrustInfo::*member>
void takeInt(OrderRow &row, const RowField &field)
{
    row.order.*member = toInt(field.text());
}

constexpr std::size_t mostKnownTexts = 32;

} // namespace

QString KnownTexts::keep(const FieldText &text)
{
    const auto known = std::find_if(m_texts.begin(), m_texts.end(), [&text](const QString &one) {
        return text.with([&one](const auto &held) { return one == held; });
    });
    if (known != m_texts.end()) {
        return *known;
    }
    QString kept = text.toString();
    if (m_texts.size() < mostKnownTexts) {
        m_texts.push_back(kept);
    }
    return kept;
}

const RowColumn<OrderRow> orderColumns[orderColumnCount] = {
    {TradeKeyFields::MARKET,
     [](OrderRow &row, const RowField &field) { row.market = answerMarketCode(field.text().toString()); }},
    {TradeKeyFields::RTSBSFLAG, takeSide},
    {TradeKeyFields::RTSORDERSTATUS, takeText<&EntrustInfo::orderStatus>},
    {TradeKeyFields::RTSFUNDID, takeText<&EntrustInfo::fundId>},
    {TradeKeyFields::RTSORDERNO, takeInt<&EntrustInfo::orderNo>},
    {TradeKeyFields::RTSENTRUSTDATE, takeInt<&EntrustInfo::orderDate>}, // yyyymmdd
    {TradeKeyFields::RTSENTRUSTTIME, takeTime},                         // hhmmsscc
    {TradeKeyFields::RTSENTRUSTPRICE,
     [](OrderRow &row, const RowField &field) { row.order.orderPrice = toDouble(field.text()); }},
    {TradeKeyFields::RTSENTRUSTQTY, takeInt<&EntrustInfo::orderQty>},
    {TradeKeyFields::RTSMATCHQTY, takeInt<&EntrustInfo::matchQty>},
    {TradeKeyFields::RTSMATCHAMT,
     [](OrderRow &row, const RowField &field) { row.matchAmount = toDouble(field.text()); }},
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
