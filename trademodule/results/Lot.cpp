#include "trademodule/results/Lot.h"

#include "trademodule/results/CheckedSum.h"

#include <cmath>

namespace TradeModule {

namespace {

constexpr double stepsPerCent = static_cast<double>(Money::stepsPerYuan) / 100;

Money inCents(double steps)
{
    return Money::ofCents(std::llround(steps / stepsPerCent));
}

} // namespace

Lot::Lot(qint64 quantity, Money cost)
    : m_quantity(quantity),
      m_cost(cost),
      m_exactSteps(static_cast<double>(cost.steps()))
{
}

Lot Lot::restored(qint64 quantity, double cost)
{
    Lot lot;
    lot.m_quantity = quantity;
    lot.m_exactSteps = cost * static_cast<double>(Money::stepsPerYuan);
    lot.m_cost = inCents(lot.m_exactSteps);
    return lot;
}

void Lot::add(qint64 quantity, Money cost)
{
    m_quantity += quantity;
    m_cost = checkedSum(m_cost, cost);
    m_exactSteps += static_cast<double>(cost.steps());
}

void Lot::remove(qint64 quantity, Money cost)
{
    add(-quantity, -cost);
}

Money Lot::take(qint64 quantity)
{
    const Money before = m_cost;
    const qint64 left = m_quantity - quantity;
    if (left == 0) {
        *this = Lot();
        return before;
    }
    m_exactSteps = m_exactSteps * static_cast<double>(left) / static_cast<double>(m_quantity);
    m_quantity = left;
    const Money rounded = inCents(m_exactSteps);
    // where what was put in was no whole cents, rounding might leave more than there was
    m_cost = magnitude(rounded) > magnitude(before) ? before : rounded;
    return before - m_cost;
}

} // namespace TradeModule
