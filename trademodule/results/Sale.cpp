#include "trademodule/results/Sale.h"

namespace TradeModule {

Figures figuresOf(const Sale &sale)
{
    Figures figures;
    figures.sales = 1;
    figures.sold = sale.amount;
    figures.fees = sale.fee;
    figures.stampDuty = sale.stampDuty;
    figures.cost = sale.cost;
    figures.profit = sale.profit;
    return figures;
}

} // namespace TradeModule
