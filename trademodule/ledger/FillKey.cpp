#include "trademodule/ledger/FillKey.h"

namespace TradeModule {

FillKey::FillKey(const Execution &execution)
    : m_security(execution.security),
      m_side(execution.side),
      m_date(execution.date),
      m_time(execution.dealNo.isEmpty() ? execution.time : ClockTime()),
      m_price(execution.price.steps()),
      m_quantity(execution.quantity),
      m_orderNo(execution.dealNo.isEmpty() ? execution.orderNo : QString()),
      m_dealNo(execution.dealNo)
{
}

bool operator==(const FillKey &a, const FillKey &b)
{
    return a.m_date == b.m_date && a.m_time == b.m_time && a.m_price == b.m_price &&
           a.m_quantity == b.m_quantity && a.m_side == b.m_side && a.m_security == b.m_security &&
           a.m_dealNo == b.m_dealNo && a.m_orderNo == b.m_orderNo;
}

uint qHash(const FillKey &key, uint seed)
{
    QtPrivate::QHashCombine combine;
    seed = combine(seed, key.m_security);
    seed = combine(seed, key.m_date);
    seed = combine(seed, key.m_time);
    seed = combine(seed, key.m_price);
    seed = combine(seed, key.m_quantity);
    seed = combine(seed, key.m_dealNo);
    return combine(seed, key.m_orderNo);
}

} // namespace TradeModule
