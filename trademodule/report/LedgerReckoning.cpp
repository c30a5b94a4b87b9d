#include "trademodule/report/LedgerReckoning.h"

#include "trademodule/results/SecurityReckoning.h"

namespace TradeModule {

HeldShares reckon(AccountHistory *history, const KnownSecurity &security, CostMethod method, TradingDate last,
                  ResultsVisitor *visitor)
{
    SecurityReckoning reckoning(method, visitor);
    history->visit(security, [&](const AccountEvent &event) {
        if (event.date <= last) {
            reckoning.add(event);
        }
    });
    reckoning.finish();
    return reckoning.shares();
}

void reckonOtherMoney(AccountHistory *history, TradingDate last, ResultsVisitor *visitor)
{
    SecurityReckoning reckoning(CostMethod::Average, visitor);
    history->visitOtherMoney([&](const AccountEvent &event) {
        if (event.date <= last) {
            reckoning.add(event);
        }
    });
}

} // namespace TradeModule
