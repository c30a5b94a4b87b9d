#include "trademodule/ledger/FillKey.h"

namespace TradeModule {

namespace {

/// A spreadsheet drops the zeros that a number starts with.
QString withoutLeadingZeros(const QString &number)
{
    int zeros = 0;
    while (zeros < number.size() && number[zeros] == QLatin1Char('0')) {
        ++zeros;
    }
    return zeros == 0 ? number : number.mid(zeros);
}

} // namespace

FillKey::FillKey(const Execution &execution)
    : m_security(execution.security),
      m_side(execution.side),
      m_date(execution.date),
      m_time(execution.dealNo.isEmpty() ? execution.time : ClockTime()),
      m_price(execution.price.steps()),
      m_quantity(execution.quantity),
      m_orderNo(execution.dealNo.isEmpty() ? withoutLeadingZeros(execution.orderNo) : QString()),
      m_dealNo(withoutLeadingZeros(execution.dealNo))
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
