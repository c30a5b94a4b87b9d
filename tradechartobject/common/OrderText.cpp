#include "tradechartobject/common/OrderText.h"

#include "tradechartobject/common/EntrustInfo.h"
#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/TradeLine.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <iterator>

namespace TradeChart {

namespace {

/// Quantity of an order that is dealt in part: what can still be cancelled, or what was.
using RestOf = long long (*)(const EntrustInfo &);

long long cancellableQty(const EntrustInfo &order)
{
    return order.orderQty - order.matchQty;
}

long long cancelledQty(const EntrustInfo &order)
{
    return order.cancelQty;
}

struct StateText
{
    const char *status;
    const char *state;
    const char *restLabel; ///< null when the deals are not listed
    RestOf rest;
};

const StateText stateTexts[] = {
    {OrderStatus::Dealed, "已成交", nullptr, nullptr},
    {OrderStatus::PartDeal, "部成(未成可撤)", "可撤数量", &cancellableQty},
    {OrderStatus::PartDealWaittingCancel, "部成(未成可撤)", "可撤数量", &cancellableQty},
    {OrderStatus::PartCanceled, "部成(未成已撤)", "已撤数量", &cancelledQty},
};

const StateText notDealt = {nullptr, "未成交", nullptr, nullptr};

const StateText &stateOf(const QString &status)
{
    const auto row = std::find_if(std::begin(stateTexts), std::end(stateTexts), [&](const StateText &text) {
        return status == QLatin1String(text.status);
    });
    return row == std::end(stateTexts) ? notDealt : *row;
}

} // namespace

std::string orderText(const EntrustInfo &order, const std::string &name)
{
    const StateText &state = stateOf(order.orderStatus);
    const long long time = order.orderTime;
    std::string text = formatText(
        "%s[%s]\n状态:%s\n编号:%lld\n委托时间:%02lld:%02lld:%02lld\n委托价格:%.3f\n委托数量:%lld",
        sideText(order.isBuy), name.c_str(), state.state, static_cast<long long>(order.orderNo), time / 10000,
        time / 100 % 100, time % 100, order.orderPrice, static_cast<long long>(order.orderQty));
    if (state.restLabel != nullptr) {
        text += formatText("\n成交均价:%.3f\n成交数量:%lld\n%s:%lld", order.matchPrice,
                           static_cast<long long>(order.matchQty), state.restLabel, state.rest(order));
    }
    return text + formatText("\n委托日期:%06lld", static_cast<long long>(order.orderDate));
}

} // namespace TradeChart
