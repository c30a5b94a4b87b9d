// What an entry does to the shares: the part of EntryReader that books trades and moves.
#include "trademodule/import/EntryReader.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trading/TradingUnits.h"

#include <cmath>

namespace TradeModule {

namespace {

/// True of a code under which new shares are paid for, when nothing tells the shares' own.
bool isOnlyForPayment(const NamedSecurity &security)
{
    const auto range = CodeRanges::on(security.security.market, security.security.code);
    return range && (range->kind == SecurityClass::Rights || range->kind == SecurityClass::Application);
}

bool isForPayment(const NamedSecurity &security)
{
    return security.kind == SecurityClass::Rights || security.kind == SecurityClass::Application;
}

[[noreturn]] void refuseDirection(const Entry &entry)
{
    throw Error(translated("\"%1\" says neither that shares came in nor that they left").arg(entry.word));
}

/// Which way shares went that moved without a trade.
Side sideOfMove(const Entry &entry, qint64 quantity, Money net, SecurityClass kind,
                std::optional<qint64> sharesAfter)
{
    switch (entry.kind.effect) {
    case Effect::Split:
        return quantity < 0 ? Side::Merger : Side::Bonus;
    case Effect::SharesIn:
    case Effect::Application:
        return quantity < 0 ? Side::Out : Side::In;
    case Effect::SharesOut:
    case Effect::Redemption:
        return Side::Out;
    case Effect::Payment:
    case Effect::Entry:
        return quantity < 0 ? Side::Out : Side::Allotment;
    case Effect::Conversion:
        return quantity < 0 || kind == SecurityClass::Bond ? Side::Out : Side::In;
    case Effect::Shares:
        if (quantity < 0 || (!net.isZero() && !net.isNegative()) || sharesAfter == qint64(0)) {
            return Side::Out;
        }
        if (net.isNegative() || sharesAfter) {
            return Side::In;
        }
        refuseDirection(entry);
    case Effect::Buy:
    case Effect::Sell:
    case Effect::Nothing:
    case Effect::MoneyIn:
    case Effect::MoneyOut:
    case Effect::Money:
    case Effect::Repo:
    case Effect::ShortSale:
        break;
    }
    Q_UNREACHABLE();
}

/// Price of a piece where the statement has no price.
Money priceOf(Money amount, qint64 quantity)
{
    return Money::ofSteps(amount.steps() / quantity);
}

} // namespace

void EntryReader::readShares(const StatementRow &row, Entry *entry)
{
    const Effect effect = entry->kind.effect;
    if (EntryAmounts(row).quantity() == 0) { // money alone, whatever the words say
        const bool isTradeWord = effect == Effect::Buy || effect == Effect::Sell;
        if (isTradeWord && !row.has(Column::Quantity)) {
            throw Error(
                translated("\"%1\" is a trade, but the statement has no column of quantities (成交数量): "
                           "export the executed trades")
                    .arg(entry->word));
        }
        if (isTradeWord) {
            entry->kind = EntryAmounts(row).net().value_or(Money()).isZero()
                              ? BusinessKind{QT_TR_NOOP("entries without a quantity"), Effect::Nothing}
                              : Business::otherMoney();
        }
        readMoney(row, entry);
        return;
    }
    const NamedSecurity security = securityOf(row, *entry);
    const bool isTradeWord = effect == Effect::Buy || effect == Effect::Sell;
    if (security.kind == SecurityClass::Repo) {
        entry->kind = Business::repo();
        readMoney(row, entry);
        return;
    }
    if (isTradeWord && !isForPayment(security)) {
        readTrade(row, security, effect == Effect::Buy ? Side::Buy : Side::Sell, entry);
        return;
    }
    if (isTradeWord) {
        entry->kind = {QT_TR_NOOP("allotments"), Effect::Payment};
    }
    const bool isFund =
        security.kind == SecurityClass::Fund || security.security.market == Market::OverTheCounter;
    const bool isOfFundShares = !isFund && Business::isOfFundShares(entry->word);
    const bool isForMoneyOnly = entry->kind.effect == Effect::Application && !isFund && !isOfFundShares;
    if (isForMoneyOnly || isOnlyForPayment(security)) {
        readMoney(row, entry);
        return;
    }
    if (isOfFundShares && entry->kind.effect == Effect::Application) { // given for units of a fund
        entry->kind.effect = Effect::SharesOut;
    } else if (isOfFundShares && entry->kind.effect == Effect::Redemption) {
        entry->kind.effect = Effect::SharesIn;
    }
    const EntryAmounts amounts(row, security.kind);
    const Money net = row.areAmountsUnsigned() ? Money() : amounts.net().value_or(Money());
    readMove(row, security, sideOfMove(*entry, amounts.quantity(), net, security.kind, amounts.sharesAfter()),
             entry);
}

/// A fund that is bought from its manager may have the code of a share.
NamedSecurity EntryReader::securityOf(const StatementRow &row, const Entry &entry)
{
    const NamedSecurity security = m_securities.of(row, Business::isOfHongKong(entry.word));
    return security.kind == SecurityClass::Share && Business::isOfFunds(entry.word)
               ? NamedSecurity{{security.security.code, Market::OverTheCounter}, SecurityClass::Fund}
               : security;
}

void EntryReader::readTrade(const StatementRow &row, const NamedSecurity &security, Side side, Entry *entry)
{
    const EntryAmounts amounts(row, security.kind);
    const qint64 quantity = amounts.quantity();
    if (quantity < 0 && side != Side::Sell) {
        throw row.errorIn(Column::Quantity, translated("the quantity of a buy is negative"));
    }
    Execution execution = begin(row, security, side);
    execution.quantity = std::abs(quantity);
    execution.price = amounts.price();
    if (execution.price.isZero()) {
        readWithoutPrice(row, security, side, entry);
        return;
    }
    execution.quantity *= amounts.isInLots(execution) ? Trading::bondsOfLot : 1;
    execution.amount = amounts.amount(execution);
    const EntryAmounts::Fee fee = amounts.fee(execution);
    execution.fee = fee.fee;
    execution.stampDuty = amounts.stampDuty(fee.fee);
    entry->isFeeInDoubt = fee.isInDoubt;
    entry->shares = execution;
}

/// A trade without a price is none: shares for nothing, shares that were moved, or money.
void EntryReader::readWithoutPrice(const StatementRow &row, const NamedSecurity &security, Side side,
                                   Entry *entry)
{
    const EntryAmounts amounts(row, security.kind);
    const Money net = amounts.net().value_or(Money());
    const Money amount = amounts.statedAmount();
    const bool hasMoney = !net.isZero() || !amount.isZero();
    const bool isIncome = side == Side::Buy && !net.isZero() && !net.isNegative() && row.has(Column::Price) &&
                          !row.areAmountsUnsigned();
    if (isIncome) {
        entry->kind = Business::otherMoney();
        readMoney(row, entry);
        return;
    }
    if (hasMoney && amount.isZero()) {
        throw Error(translated("there is no price, but %1 yuan were moved: nobody can tell what it is")
                        .arg(magnitude(net).text()));
    }
    if (hasMoney) {
        Execution execution = begin(row, security, side);
        execution.quantity = std::abs(amounts.quantity());
        execution.price = priceOf(amount, execution.quantity);
        execution.amount = amount;
        execution.fee = amounts.fee(execution).fee;
        execution.stampDuty = amounts.stampDuty(execution.fee);
        entry->shares = execution;
        return;
    }
    entry->kind = side == Side::Buy ? BusinessKind{QT_TR_NOOP("bonus shares"), Effect::Split}
                                    : BusinessKind{QT_TR_NOOP("custody moves"), Effect::SharesOut};
    readMove(row, security, side == Side::Buy ? Side::Bonus : Side::Out, entry);
}

/// Shares that came in or left without a trade. What came for them on top of their price is their cost, too;
/// what they brought is money.
void EntryReader::readMove(const StatementRow &row, const NamedSecurity &security, Side side, Entry *entry)
{
    const EntryAmounts amounts(row, security.kind);
    const bool costs = costsMoney(side);
    const Money stated = amounts.net().value_or(Money());
    const Money net = row.areAmountsUnsigned() && costs ? -magnitude(stated) : stated;
    Execution execution = begin(row, security, side);
    execution.quantity = std::abs(amounts.quantity());
    const bool isForNothing = side == Side::Bonus || side == Side::Merger;
    execution.price = isForNothing ? Money() : amounts.price();
    execution.quantity *= amounts.isInLots(execution) ? Trading::bondsOfLot : 1;
    if (costs) {
        execution.amount = amounts.amount(execution);
        if (execution.amount.isZero() && net.isNegative()) {
            execution.amount = magnitude(net);
        }
        execution.price =
            execution.price.isZero() ? priceOf(execution.amount, execution.quantity) : execution.price;
        const Money paidBeyond = magnitude(net) - execution.amount;
        execution.fee = net.isNegative() && !paidBeyond.isNegative() ? paidBeyond : Money();
    }
    entry->shares = execution;
    const bool isRedeemed = entry->kind.effect == Effect::Redemption && !row.columns().tellNet();
    if (isRedeemed || (!net.isZero() && !(costs && net.isNegative()))) {
        readMoney(row, entry);
    }
}

} // namespace TradeModule
