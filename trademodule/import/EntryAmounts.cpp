#include "trademodule/import/EntryAmounts.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trading/TradingUnits.h"

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

/// A bond's amount may hold the interest since the last coupon.
bool isNearly(double a, double b)
{
    constexpr double most = 0.06;
    return std::fabs(a - b) <= most * b;
}

/// Money that is not worth a word: cents that were rounded.
bool isRounding(Money difference)
{
    constexpr Money most = Money::ofCents(5);
    return !(magnitude(difference) > most);
}

/// True of fees that a broker may take.
bool isBelievable(Money fee, const Execution &execution)
{
    return !(fee > Money::ofSteps(execution.amount.steps() / 20 + 100 * Money::stepsPerYuan));
}

} // namespace

double EntryAmounts::number(Column column, const char *what) const
{
    const QString text = m_row.cell(column);
    const std::optional<double> value = CellValue::number(text);
    if (!value) {
        throw m_row.errorIn(
            column, translated("the %1 \"%2\" is no number").arg(translated(what), CellValue::cleaned(text)));
    }
    return *value * static_cast<double>(m_row.columns().unit(column, m_kind));
}

Money EntryAmounts::money(Column column, const char *what) const
{
    const std::optional<Money> value = Money::ofYuan(number(column, what));
    if (!value) {
        throw m_row.errorIn(column, translated("the %1 \"%2\" is too large")
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
            throw m_row.errorIn(
                column,
                translated("the %1 \"%2\" is no number").arg(translated(what), CellValue::cleaned(text)));
        }
        total = total + *value;
    }
    return total;
}

qint64 EntryAmounts::quantity() const
{
    const double quantity = number(Column::Quantity, QT_TR_NOOP("quantity"));
    constexpr double mostShares = 1e12;
    if (quantity != std::floor(quantity) || std::fabs(quantity) > mostShares) {
        throw m_row.errorIn(
            Column::Quantity,
            translated("the quantity \"%1\" is no number of whole shares; parts of a share are not kept")
                .arg(CellValue::cleaned(m_row.cell(Column::Quantity))));
    }
    return static_cast<qint64>(quantity);
}

Money EntryAmounts::price() const
{
    const Money price = money(Column::Price, QT_TR_NOOP("price"));
    if (price.isNegative()) {
        throw m_row.errorIn(Column::Price, translated("the price is negative"));
    }
    return price;
}

Money EntryAmounts::statedAmount() const
{
    return magnitude(money(Column::Amount, QT_TR_NOOP("amount")));
}

std::optional<Money> EntryAmounts::net() const
{
    if (!m_row.has(Column::Net)) {
        return incomeLessExpense();
    }
    const QString cell = m_row.cell(Column::Net);
    if (cell.isEmpty() || CellValue::isEmpty(cell)) {
        return std::nullopt;
    }
    return money(Column::Net, QT_TR_NOOP("net amount"));
}

/// Of a statement that has columns of their own for what came and what went.
std::optional<Money> EntryAmounts::incomeLessExpense() const
{
    const bool isTold =
        !CellValue::isEmpty(m_row.cell(Column::Income)) || !CellValue::isEmpty(m_row.cell(Column::Expense));
    return isTold ? std::optional(money(Column::Income, QT_TR_NOOP("income")) -
                                  magnitude(money(Column::Expense, QT_TR_NOOP("expense"))))
                  : std::nullopt;
}

bool EntryAmounts::isInLots(const Execution &execution) const
{
    if (m_kind != SecurityClass::Bond) {
        return false;
    }
    const double lots =
        execution.price.yuan() * static_cast<double>(execution.quantity) * Trading::bondsOfLot;
    const Money stated = statedAmount();
    const Money told = stated.isZero() ? magnitude(net().value_or(Money())) : stated;
    return lots > 0 && isNearly(told.yuan(), lots);
}

Money EntryAmounts::amount(const Execution &execution) const
{
    const Money computed = computedAmount(execution);
    const Money stated = statedAmount();
    if (execution.security.market == Market::HongKong) { // prices in Hong Kong dollars, the account pays yuan
        const Money net = this->net().value_or(Money());
        const Money ofAccount =
            execution.side == Side::Sell ? net + listedFees() : magnitude(net) - listedFees();
        return !net.isZero() ? ofAccount : stated.isZero() ? computed : stated;
    }
    if (stated.isZero()) {
        refuseOtherSize(execution, computed);
        return computed;
    }
    const int decimals = std::clamp(CellValue::decimals(m_row.cell(Column::Price)), 2, 3);
    const double unit = static_cast<double>(m_row.columns().unit(Column::Amount, m_kind));
    const double slack =
        0.02 * unit + 0.51 * std::pow(10.0, -decimals) * static_cast<double>(execution.quantity);
    const bool isBondNearby = m_kind == SecurityClass::Bond && isNearly(stated.yuan(), computed.yuan());
    if (std::fabs((computed - stated).yuan()) > slack && !isBondNearby) {
        throw m_row.errorIn(Column::Amount, translated("the amount %1 is not price × quantity, %2 × %3")
                                                .arg(stated.text(), execution.price.text())
                                                .arg(execution.quantity));
    }
    return stated;
}

/// Where nothing but the account's own money tells the amount, a quantity in lots shows there.
void EntryAmounts::refuseOtherSize(const Execution &execution, Money computed) const
{
    const Money net = magnitude(this->net().value_or(Money()));
    if (net > computed + computed && !isBelievable(net - computed, execution)) {
        throw m_row.errorIn(Column::Net,
                            translated("%1 yuan were moved, but price × quantity is %2 × %3: is the quantity "
                                       "in lots?")
                                .arg(net.text(), execution.price.text())
                                .arg(execution.quantity));
    }
}

void EntryAmounts::refuseWrongSign(const Execution &execution, Money net) const
{
    const bool isWorthAWord = magnitude(net) > Money::ofSteps(execution.amount.steps() / 2);
    if (execution.side == Side::Sell && net.isNegative() && isWorthAWord) {
        throw m_row.errorIn(
            Column::Net,
            translated("the entry says sell, but its net amount %1 is that of a buy").arg(net.text()));
    }
    if (execution.side == Side::Buy && !net.isNegative() && isWorthAWord) {
        const QString reason =
            translated("the entry says buy, but its net amount %1 is that of a sell").arg(net.text());
        if (net > execution.amount && isBelievable(net - execution.amount, execution)) {
            throw UnsignedBuy(reason, m_row.columns().nameOf(Column::Net));
        }
        throw m_row.errorIn(Column::Net, reason);
    }
}

/// Without a sign the size must fit: a buy pays the amount and fees, a sell receives the amount without them.
void EntryAmounts::refuseWrongSize(const Execution &execution, Money net) const
{
    const Money beyond = execution.side == Side::Buy ? -net - execution.amount : net - execution.amount;
    if (execution.side == Side::Buy && beyond.isNegative() && !isRounding(beyond)) {
        throw m_row.errorIn(
            Column::Net,
            translated("the entry says buy, but its net amount %1 is that of a sell").arg((-net).text()));
    }
    if (execution.side == Side::Sell && !beyond.isNegative() && !isRounding(beyond)) {
        throw m_row.errorIn(
            Column::Net,
            translated("the entry says sell, but its net amount %1 is that of a buy").arg(net.text()));
    }
}

/// Negative for a buy, also where the statement has no signs.
Money EntryAmounts::signedNet(const Execution &execution) const
{
    const Money stated = net().value_or(Money());
    if (!m_row.areAmountsUnsigned()) {
        refuseWrongSign(execution, stated);
        return stated;
    }
    const Money signedOne = execution.side == Side::Buy ? -magnitude(stated) : magnitude(stated);
    if (!stated.isZero()) {
        refuseWrongSize(execution, signedOne);
    }
    return signedOne;
}

EntryAmounts::Fee EntryAmounts::fee(const Execution &execution) const
{
    const Money listed = listedFees();
    const Money net = signedNet(execution);
    if (net.isZero()) {
        return {listed};
    }
    const Money paid =
        execution.side == Side::Buy ? magnitude(net) - execution.amount : execution.amount - net;
    if (paid.isNegative() || !isBelievable(paid, execution)) {
        return {listed, true};
    }
    const bool isInDoubt = !listed.isZero() && !isRounding(paid - listed);
    const bool isTotalKnown = !CellValue::isEmpty(m_row.cell(Column::TotalFee));
    return {isTotalKnown || paid.isZero() ? listed : paid, isInDoubt};
}

/// Where the commission's column holds the sum of the others, it is the total.
Money EntryAmounts::listedFees() const
{
    if (m_row.has(Column::TotalFee) && !CellValue::isEmpty(m_row.cell(Column::TotalFee))) {
        return magnitude(money(Column::TotalFee, QT_TR_NOOP("fee")));
    }
    const Money commission = magnitude(money(Column::Commission, QT_TR_NOOP("commission")));
    const Money twin = magnitude(money(Column::CommissionTwin, QT_TR_NOOP("commission")));
    const Money others = magnitude(sum(Column::OtherFee, QT_TR_NOOP("fee")) +
                                   sum(Column::StampDuty, QT_TR_NOOP("stamp duty")));
    const bool isTotal = !commission.isZero() && !others.isZero() && commission == twin + others;
    if (isTotal) {
        return commission;
    }
    return (commission == twin ? commission : commission + twin) + others;
}

Money EntryAmounts::stampDuty(Money fee) const
{
    const Money listed = magnitude(sum(Column::StampDuty, QT_TR_NOOP("stamp duty")));
    return listed > fee ? Money() : listed;
}

std::optional<qint64> EntryAmounts::sharesAfter() const
{
    const QString cell = m_row.cell(Column::SharesAfter);
    if (cell.isEmpty() || CellValue::isEmpty(cell)) {
        return std::nullopt;
    }
    const std::optional<double> value = CellValue::number(cell);
    constexpr auto most = static_cast<double>(Trading::mostHeldShares);
    return value && *value == std::floor(*value) && std::fabs(*value) <= most
               ? std::optional(static_cast<qint64>(*value) *
                               m_row.columns().unit(Column::SharesAfter, m_kind))
               : std::nullopt;
}

std::optional<Money> EntryAmounts::cashAfter() const
{
    const QString cell = m_row.cell(Column::CashAfter);
    const auto value = CellValue::isEmpty(cell) ? std::nullopt : CellValue::number(cell);
    return value
               ? Money::ofYuan(*value * static_cast<double>(m_row.columns().unit(Column::CashAfter, m_kind)))
               : std::nullopt;
}

} // namespace TradeModule
