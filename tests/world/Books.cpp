#include "tests/world/Books.h"

#include "tests/trademodule/support/LedgerAudit.h"
#include "trading/Direction.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace World {

using namespace Trading;
using Terminal::DeskOutcome;
using TradeModule::DateRange;
using TradeModule::Execution;
using TradeModule::Order;
using TradeModule::Replacement;
using TradeModule::ReplacementState;
using TradeModule::Rows;
using TradeModule::Side;

namespace {

constexpr Money openingCash = Money::ofCents(100'000'000);
constexpr double halfACent = 0.005;

/// It holds within one day only; checkDealing() has it for several.
const std::string soldRule = "more was sold than was held when the orders began";

const DeskOutcome *outcomeOf(const Wish &wish, DeskOutcome::Kind kind)
{
    const auto found = std::find_if(wish.outcomes.begin(), wish.outcomes.end(),
                                    [kind](const DeskOutcome &outcome) { return outcome.kind == kind; });
    return found == wish.outcomes.end() ? nullptr : &*found;
}

bool isNear(double one, double other)
{
    return std::fabs(one - other) < halfACent;
}

bool isAsWished(const Order &order, const Wish &wish)
{
    return order.security == wish.security.id() && order.direction == wish.side &&
           isNear(order.price.yuan(), wish.price) && order.quantity == wish.quantity;
}

std::string about(const Wish &wish)
{
    static const char *const words[] = {"the placing ", "the replacement ", "the cancellation "};
    return words[wish.kind] + wish.name().toStdString() + ' ';
}

DateRange always()
{
    return {TradingDate::first(), TradingDate::last()};
}

bool isSame(const Order &order, const Terminal::OrderRecord &shown)
{
    return QString::number(order.number) == shown.number && order.status == shown.status &&
           shown.day == order.date && order.quantity == shown.quantity &&
           order.matchedQuantity == shown.dealt && isNear(order.price.yuan(), shown.price);
}

bool isSame(const Execution &trade, const Terminal::AccountTrade &shown)
{
    return trade.date == shown.day && trade.time == shown.time && trade.quantity == shown.quantity &&
           isNear(trade.price.yuan(), shown.price) && trade.orderNo == shown.orderNumber;
}

template <typename Record, typename Shown>
bool areSame(const QVector<Record> &records, const std::vector<Shown> &shown)
{
    return std::equal(records.begin(), records.end(), shown.begin(), shown.end(),
                      [](const Record &record, const Shown &one) { return isSame(record, one); });
}

} // namespace

Books::Books(const QString &ledger) : m_ledger(ledger), m_orders(&m_ledger) {}

bool Books::haveChanged()
{
    const QString state = m_ledger.database()->state();
    return std::exchange(m_state, state) != state;
}

void Books::add(const TradeModule::Statement &statement)
{
    m_ledger.book(statement, TradeModule::Ledger::Mode::Keep);
}

Books::Findings Books::audit()
{
    Findings findings = TradeModule::audit(&m_ledger, openingCash);
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                                  [](const std::string &finding) { return finding.rfind(soldRule, 0) == 0; }),
                   findings.end());
    return findings;
}

Books::Findings Books::checkDealing(const SimulatedMarket &market)
{
    constexpr qint64 partOfQuote = 4; // all orders together get a quarter of it
    Findings findings;
    for (const Terminal::Security &security : SimulatedMarket::securities()) {
        std::map<std::pair<int, QString>, qint64> dealt;
        qint64 heldBefore = 0;
        qint64 bought = 0;
        int day = 0;
        for (const Execution &trade : m_ledger.trades(security.id(), always())) {
            if (std::exchange(day, trade.date.number()) != trade.date.number()) {
                heldBefore += std::exchange(bought, 0);
            }
            (trade.side == Side::Buy ? bought : heldBefore) +=
                trade.side == Side::Buy ? trade.quantity : -trade.quantity;
            if (heldBefore < 0) {
                findings.push_back("more was sold than was held in the morning: order " +
                                   trade.orderNo.toStdString());
            }
            if (trade.orderNo.isEmpty()) {
                continue; // of a statement
            }
            qint64 &ofMinute = dealt[{day, trade.time.text()}];
            ofMinute += trade.quantity;
            if (ofMinute > market.volume(security.id(), trade.date, trade.time) / partOfQuote) {
                findings.push_back("more was dealt than a quarter of the minute " +
                                   trade.time.text().toStdString() + ": order " +
                                   trade.orderNo.toStdString());
            }
        }
    }
    return findings;
}

Books::Findings Books::checkWishes(const std::vector<Wish> &wishes)
{
    Findings findings;
    for (const Wish &wish : wishes) {
        switch (wish.kind) {
        case Wish::Placing:
            checkPlacing(wish, &findings);
            break;
        case Wish::Replacing:
            checkReplacing(wish, &findings);
            break;
        case Wish::Cancelling:
            checkCancelling(wish, &findings);
            break;
        }
    }
    checkOrigins(wishes, &findings);
    return findings;
}

void Books::checkPlacing(const Wish &wish, Findings *findings)
{
    const std::optional<Order> order = m_orders.find(wish.clientNumber);
    if (order && !isAsWished(*order, wish)) {
        findings->push_back(about(wish) + "stands otherwise in the books");
    }
    const DeskOutcome *const accepted = outcomeOf(wish, DeskOutcome::Kind::Accepted);
    if (accepted != nullptr && (!order || QString::number(order->number) != accepted->text)) {
        findings->push_back(about(wish) + "was confirmed as " + accepted->text.toStdString() +
                            ", which is not in the books");
    }
    const bool isDenied = outcomeOf(wish, DeskOutcome::Kind::Refused) != nullptr ||
                          (outcomeOf(wish, DeskOutcome::Kind::NotSent) != nullptr && wish.timesAsked == 1);
    if (isDenied && accepted == nullptr && order) {
        findings->push_back(about(wish) + "was refused or not sent, and is in the books");
    }
    for (const DeskOutcome &outcome : wish.outcomes) {
        if (accepted != nullptr && outcome.kind == DeskOutcome::Kind::Accepted &&
            outcome.text != accepted->text) {
            findings->push_back(about(wish) + "was confirmed under two numbers");
        }
    }
}

void Books::checkReplacing(const Wish &wish, Findings *findings)
{
    const std::optional<Replacement> replacement = m_orders.replacements().find(wish.clientNumber);
    const DeskOutcome *const accepted = outcomeOf(wish, DeskOutcome::Kind::Accepted);
    if (accepted != nullptr && (!replacement || replacement->state != accepted->replacement)) {
        findings->push_back(about(wish) + "did not end as it was told");
    }
    if (outcomeOf(wish, DeskOutcome::Kind::Refused) != nullptr && accepted == nullptr && replacement) {
        findings->push_back(about(wish) + "was refused, and is in the books");
    }
    if (!replacement || replacement->state != ReplacementState::Placed) {
        return;
    }
    Rows rows = m_ledger.database()->run(
        QStringLiteral(
            "SELECT old.cancelled_quantity, new.quantity, new.price, old.quantity, old.matched_quantity "
            "FROM trade_order old, trade_order new WHERE old.id = ? AND new.id = ?"),
        {replacement->orderNumber, replacement->newOrderNumber});
    const bool areBothThere = rows.next();
    if (!areBothThere || rows.value(0).toLongLong() != rows.value(1).toLongLong() ||
        rows.value(2).toLongLong() != replacement->price.steps() ||
        rows.value(3).toLongLong() != rows.value(4).toLongLong() + rows.value(1).toLongLong()) {
        findings->push_back(about(wish) + "left not what was left of order " +
                            wish.orderNumber.toStdString());
    }
}

/// What is confirmed is that it was asked for: nothing more is dealt from then on.
void Books::checkCancelling(const Wish &wish, Findings *findings)
{
    if (outcomeOf(wish, DeskOutcome::Kind::Accepted) == nullptr) {
        return;
    }
    Rows rows = m_ledger.database()->run(QStringLiteral("SELECT status FROM trade_order WHERE id = ?"),
                                         {wish.orderNumber.toLongLong()});
    static const QStringList cancelled = {QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5"),
                                          QStringLiteral("6")};
    if (!rows.next() || !cancelled.contains(rows.value(0).toString())) {
        findings->push_back(about(wish) + "was confirmed, and the order goes on");
    }
}

void Books::checkOrigins(const std::vector<Wish> &wishes, Findings *findings)
{
    std::set<QString> numbers;
    for (const Wish &wish : wishes) {
        if (wish.kind == Wish::Placing) {
            numbers.insert(wish.clientNumber);
        }
    }
    Rows rows = m_ledger.database()->run(
        QStringLiteral("SELECT o.id, o.client_no, (SELECT COUNT(*) FROM order_replacement r WHERE "
                       "r.new_order_id = o.id) FROM trade_order o ORDER BY o.id"));
    while (rows.next()) {
        const QString number = rows.value(1).toString();
        const bool isReplacement = rows.value(2).toInt() == 1;
        const bool isWished = number.isEmpty() ? isReplacement : numbers.count(number) > 0;
        if (!isWished) {
            findings->push_back("nobody wished order " + rows.value(0).toString().toStdString());
        }
    }
}

/// What is told of an order's cancellation names the order only: those of several are counted together, as
/// they are told in any order when the first is asked again after the second was answered.
Books::Findings Books::checkEnded(const std::vector<Wish> &wishes)
{
    constexpr int mostOutcomes = 2; // that it is not known yet, and what it is
    struct Told
    {
        int asked = 0;
        int outcomes = 0;
    };
    std::map<std::tuple<Process, int, QString>, Told> told;
    Findings findings;
    for (const Wish &wish : wishes) {
        if (!wish.isForgotten && !wish.isAnswered()) {
            findings.push_back(about(wish) + "was never answered");
        }
        Told &one = told[{wish.terminal, wish.kind, wish.name()}];
        one.asked += wish.timesAsked;
        one.outcomes += static_cast<int>(wish.outcomes.size());
        if (one.outcomes > mostOutcomes * one.asked) {
            findings.push_back(about(wish) + "was answered again and again");
        }
    }
    return findings;
}

Books::Findings Books::checkGivenUp(const std::vector<Wish> &wishes, Instant latest)
{
    Findings findings;
    for (const Wish &wish : wishes) {
        if (wish.gaveUpAt && *wish.gaveUpAt > latest) {
            findings.push_back(about(wish) + "was given up though nothing was wrong any more");
        }
    }
    return findings;
}

Books::Findings Books::checkShown(SimulatedTerminal *terminal)
{
    Findings findings;
    checkOrders(terminal, &findings);
    checkAccount(terminal, &findings);
    checkTrades(terminal, &findings);
    return findings;
}

void Books::checkOrders(SimulatedTerminal *terminal, Findings *findings)
{
    const Terminal::OrderDesk &desk = terminal->desk();
    if (!areSame(m_orders.ofDay(TradingDate::today(), terminal->shown().id()), desk.orders())) {
        findings->push_back("the orders that the terminal shows are not those of the ledger");
    }
    if (!desk.workingOrders() || !areSame(m_orders.open(), *desk.workingOrders())) {
        findings->push_back("the working orders that the terminal shows are not those of the ledger");
    }
}

void Books::checkAccount(SimulatedTerminal *terminal, Findings *findings)
{
    const std::optional<Terminal::Account> &shown = terminal->desk().account();
    if (!shown || !isNear(shown->cash, m_orders.cash().yuan())) {
        findings->push_back("the cash that the terminal shows is not that of the ledger");
        return;
    }
    for (const Terminal::Security &security : SimulatedMarket::securities()) {
        const Terminal::Position *const position = shown->find(security);
        if ((position == nullptr ? 0 : position->quantity) != m_ledger.holding(security.id()).quantity()) {
            findings->push_back("the shares that the terminal shows are not those of the ledger");
        }
    }
}

void Books::checkTrades(SimulatedTerminal *terminal, Findings *findings)
{
    if (!areSame(m_ledger.trades(terminal->shown().id(), always()), terminal->trades().trades())) {
        findings->push_back("the trades that the terminal shows are not those of the ledger");
    }
}

} // namespace World
