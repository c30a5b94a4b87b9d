#include "tradechartobject/common/TradeLine.h"

#include "tradechartobject/common/PopupLines.h"
#include "tradechartobject/common/Trade.h"

namespace TradeChart {

std::string tradeLine(const char *side, const trade_cj &trade)
{
    const long long time = trade.matchTime;
    return formatText("%s\t%02lld:%02lld:%02lld\t成交价:%.2f\t成交量:%.0f", side, time / 10000 % 100,
                      time / 100 % 100, time % 100, trade.matchPrice, trade.matchQty);
}

} // namespace TradeChart
