#include "trademodule/check/CheckTable.h"

#include "trademodule/check/BusCases.h"
#include "trademodule/check/ListCases.h"
#include "trademodule/check/OrderCases.h"
#include "trademodule/check/RefusalCases.h"

namespace TradeModule {

const CheckCases &readOnlyCases()
{
    static const CheckCases all = [] {
        CheckCases cases = presenceCases();
        for (const CheckCases &more : {listCases(), refusalCases(), busCases()}) {
            cases.insert(cases.end(), more.begin(), more.end());
        }
        return cases;
    }();
    return all;
}

const CheckCases &orderingCases()
{
    static const CheckCases all = orderCases();
    return all;
}

const CheckCases &allCases()
{
    static const CheckCases all = [] {
        CheckCases cases = readOnlyCases();
        cases.insert(cases.end(), orderingCases().begin(), orderingCases().end());
        return cases;
    }();
    return all;
}

} // namespace TradeModule
