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
    const KnownSides::Side &side = row.knownSides.find(directionCode.text());
    row.hasSide = side.isKnown;
    row.order.isBuy = side.isBuy;
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

constexpr std::size_t mostKnown = 32;

/// The one kept whose key is the text, or the end.
template <class Kept, class KeyOf>
auto findText(Kept &kept, const FieldText &text, KeyOf keyOf)
{
    return std::find_if(kept.begin(), kept.end(), [&](const auto &one) {
        return text.with([&](const auto &held) { return keyOf(one) == held; });
    });
}

} // namespace

QString KnownTexts::keep(const FieldText &text)
{
    const auto known = findText(m_texts, text, [](const QString &one) -> const QString & { return one; });
    if (known != m_texts.end()) {
        return *known;
    }
    QString kept = text.toString();
    if (m_texts.size() < mostKnown) {
        m_texts.push_back(kept);
    }
    return kept;
}

const KnownSides::Side &KnownSides::find(const FieldText &code)
{
    const auto known = findText(m_sides, code, [](const Side &one) -> const QString & { return one.code; });
    if (known != m_sides.end()) {
        return *known;
    }
    if (m_sides.size() == mostKnown) {
        m_sides.clear();
    }
    const QString text = code.toString();
    const QString side = toBsFlag(text);
    m_sides.push_back({text, !side.isEmpty(), side == QLatin1String(BSFlag::BUY)});
    return m_sides.back();
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
