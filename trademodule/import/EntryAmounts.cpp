#include "trademodule/import/EntryAmounts.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"

#include <algorithm>
#include <cmath>

namespace TradeModule {

namespace {

Money computedAmount(const Execution &execution)
{
    const std::optional<Money> product = execution.price.times(execution.quantity);
    if (!product) {
        throw Error(translated("the amount, price × quantity, is too large: %1 × %2")
                        .arg(execution.price.text())
                        .arg(execution.quantity));
    }
    return *product;
}

} // namespace

double EntryAmounts::number(Column column, const char *what) const
{
    const QString text = m_row.cell(column);
    const std::optional<double> value = CellValue::number(text);
    if (!value) {
        throw Error(translated("the %1 \"%2\" is no number").arg(translated(what), CellValue::cleaned(text)));
    }
    return *value;
}

Money EntryAmounts::money(Column column, const char *what) const
{
    const std::optional<Money> value = Money::ofYuan(number(column, what));
    if (!value) {
        throw Error(translated("the %1 \"%2\" is too large")
                        .arg(translated(what), CellValue::cleaned(m_row.cell(column))));
    }
    return *value;
}

Money EntryAmounts::sum(Column column, const char *what) const
{
    Money total;
    for (const QString &text : m_row.cells(column)) {
        const std::optional<Money> value = CellValue::money(text);
        if (!value) {
            throw Error(
                translated("the %1 \"%2\" is no number").arg(translated(what), CellValue::cleaned(text)));
        }
        total = total + *value;
    }
    return total;
}

qint64 EntryAmounts::quantity(Side side) const
{
    const double quantity = number(Column::Quantity, QT_TR_NOOP("quantity"));
    constexpr double mostShares = 1e12;
    if (quantity != std::floor(quantity) || std::fabs(quantity) > mostShares) {
        throw Error(translated("the quantity \"%1\" is no number of whole shares")
                        .arg(CellValue::cleaned(m_row.cell(Column::Quantity))));
    }
    if (quantity < 0 && side != Side::Sell) {
        throw Error(translated("the quantity of a buy is negative"));
    }
    return static_cast<qint64>(std::fabs(quantity));
}

Money EntryAmounts::price(Side side) const
{
    const Money price = money(Column::Price, QT_TR_NOOP("price"));
    if (price.isNegative()) {
        throw Error(translated("the price is negative"));
    }
    return side == Side::Bonus ? Money() : price;
}

/// The stated amount, which must be price × quantity but for the rounding of an average price: columns
/// that slipped by one show here.
Money EntryAmounts::amount(const Execution &execution) const
{
    const Money computed = computedAmount(execution);
    const Money stated = magnitude(money(Column::Amount, QT_TR_NOOP("amount")));
    if (stated.isZero()) {
        return computed;
    }
    const int decimals = std::clamp(CellValue::decimals(m_row.cell(Column::Price)), 2, 3);
    const double slack = 0.02 + 0.51 * std::pow(10.0, -decimals) * static_cast<double>(execution.quantity);
    if (std::fabs((computed - stated).yuan()) > slack) {
        throw Error(translated("the amount %1 is not price × quantity, %2 × %3")
                        .arg(stated.text(), execution.price.text())
                        .arg(execution.quantity));
    }
    return stated;
}

/// All fees: the column of their total, else what the account paid beyond the amount, else the sum of
/// the columns.
Money EntryAmounts::fee(const Execution &execution) const
{
    const Money listed = listedFees();
    if (m_row.has(Column::TotalFee)) {
        return listed;
    }
    const Money net = money(Column::Net, QT_TR_NOOP("net amount"));
    if (net.isZero()) {
        return listed;
    }
    if (execution.side == Side::Sell && net.isNegative() &&
        magnitude(net) > Money::ofSteps(execution.amount.steps() / 2)) {
        throw Error(
            translated("the entry says sell, but its net amount %1 is that of a buy").arg(net.text()));
    }
    const Money difference =
        execution.side == Side::Buy ? magnitude(net) - execution.amount : execution.amount - net;
    const Money believable = Money::ofSteps(execution.amount.steps() / 20 + 100 * Money::stepsPerYuan);
    return difference.isNegative() || difference > believable ? listed : difference;
}

Money EntryAmounts::listedFees() const
{
    if (m_row.has(Column::TotalFee)) {
        return magnitude(money(Column::TotalFee, QT_TR_NOOP("fee")));
    }
    const Money commission = magnitude(money(Column::Commission, QT_TR_NOOP("commission")));
    const Money twin = magnitude(money(Column::CommissionTwin, QT_TR_NOOP("commission")));
    return (commission == twin ? commission : commission + twin) +
           magnitude(sum(Column::OtherFee, QT_TR_NOOP("fee")));
}

} // namespace TradeModule
