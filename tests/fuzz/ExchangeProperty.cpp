#include "tests/fuzz/EmptyLedger.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Properties.h"

#include "tests/trademodule/support/LedgerAudit.h"
#include "trademodule/Error.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trading/MarketRules.h"

#include <QJsonDocument>

#include <map>
#include <optional>

using namespace TradeModule;

namespace {

constexpr auto practisedDay = TradingDate::of(2024, 1, 3).value();
constexpr auto dayBefore = TradingDate::of(2024, 1, 2).value();

SecurityId securityNumber(int number)
{
    switch (number) {
    case 0:
        return {QStringLiteral("000001"), Market::Shenzhen};
    case 1:
        return {QStringLiteral("600519"), Market::Shanghai};
    case 2:
        return {QStringLiteral("688981"), Market::Shanghai};
    default:
        return {QStringLiteral("510300"), Market::Shanghai};
    }
}

/// A day of trading, from a few thousand bytes.
class TradingDay
{
public:
    explicit TradingDay(FuzzInput input) : m_input(std::move(input)), m_ledger(m_home.location())
    {
        if (m_input.flag()) {
            practise();
        }
        hold();
        m_openingCash = OrderBook(&m_ledger).cash();
        open();
        if (!m_ledger.practisedDay()) {
            takeIfRead(flatQuote(ClockTime::of(9, 30).value(),
                                 Money::ofCents(1000))); // else the wall clock would decide
        }
    }

    void run()
    {
        constexpr int mostSteps = 60;
        for (int step = 0; step < mostSteps && !m_input.isEmpty(); ++step) {
            act();
        }
        for (const std::string &finding : audit(&m_ledger, m_openingCash)) {
            throw Broken(finding);
        }
        checkOrders();
        checkCover();
    }

private:
    void practise()
    {
        Transaction transaction(m_ledger.database());
        m_ledger.practise(practisedDay);
        transaction.commit();
    }

    /// Shares from before the day.
    void hold()
    {
        Statement statement{QStringLiteral("before.csv"), {}, {}};
        for (int i = 0; i < 4; ++i) {
            const qint64 quantity = m_input.below(65536);
            if (quantity > 0) {
                Execution execution{securityNumber(i),    Side::Buy, dayBefore, ClockTime(),
                                    Money::ofCents(1000), quantity};
                execution.amount = Money::ofCents(1000 * quantity);
                statement.executions.append(execution);
            }
        }
        m_ledger.book(statement, Ledger::Mode::Keep);
    }

    void open()
    {
        m_exchange.emplace(&m_ledger, [this](const Order &order) { note(order); });
    }

    void act()
    {
        try {
            step();
        } catch (const Error &error) { // a refusal changes nothing; the audit sees to it
            demand(!error.reason().isEmpty(), "a refusal without a reason");
        }
    }

    void step()
    {
        switch (m_input.below(8)) {
        case 0:
        case 1:
            place();
            break;
        case 2:
            cancel();
            break;
        case 3:
            replace();
            break;
        case 4:
            m_input.flag() ? m_exchange->settle() : m_exchange->report();
            break;
        case 5:
            m_input.flag() ? open() : hear(m_input.text(400));
            break;
        default:
            take();
            break;
        }
    }

    Money price()
    {
        switch (m_input.below(8)) {
        case 0:
            return Money::ofSteps(m_input.integer() % (Money::limit().steps() * 2));
        case 1:
            return Money::ofSteps(m_input.below(65536));
        default:
            return Money::ofCents(900 + m_input.below(200));
        }
    }

    qint64 quantity()
    {
        switch (m_input.below(8)) {
        case 0:
            return m_input.integer();
        case 1:
            return m_input.below(65536);
        default:
            return 100 * m_input.below(40);
        }
    }

    QString clientNumber()
    {
        const int number = m_input.below(6);
        return number == 0 ? QString() : QString::number(number);
    }

    void place()
    {
        const SecurityId security = securityNumber(m_input.below(4));
        const Direction direction = m_input.flag() ? Direction::Buy : Direction::Sell;
        const Money limit = price();
        const qint64 shares = quantity();
        const Order order = m_input.below(4) == 0
                                ? m_exchange->leave(security, direction, limit, shares)
                                : m_exchange->place(security, direction, limit, shares, clientNumber());
        demand(order.price == limit && order.quantity == shares,
               "another order was placed than was asked for");
    }

    qint64 orderNumber() { return m_input.below(20); }

    void cancel() { m_exchange->cancel(m_ledger.today(), orderNumber()); }

    void replace()
    {
        const qint64 number = orderNumber();
        const Money limit = price();
        m_exchange->replace(m_ledger.today(), number, limit, QStringLiteral("r") + clientNumber());
    }

    Quote flatQuote(ClockTime time, Money price)
    {
        Quote quote{securityNumber(m_input.below(4)), m_ledger.today(), time};
        quote.recorded = m_ledger.practisedDay();
        quote.open = quote.high = quote.low = quote.close = price;
        return quote;
    }

    void take()
    {
        const int hour = 9 + m_input.below(7);
        const int minute = m_input.below(60);
        const Money middle = price();
        Quote quote = flatQuote(ClockTime::of(hour, minute).value(), middle);
        quote.high = middle + Money::ofCents(m_input.below(100));
        quote.low = middle - Money::ofCents(m_input.below(100));
        quote.volume = quantity();
        quote.previousClose = m_input.flag() ? price() : Money();
        takeIfRead(quote);
    }

    /// As the bus would bring it.
    void takeIfRead(const Quote &quote)
    {
        QJsonObject message{{QStringLiteral("stkcode"), quote.security.code},
                            {QStringLiteral("market"), marketLetters(quote.security.market)},
                            {QStringLiteral("date"), quote.date.text()},
                            {QStringLiteral("time"), quote.time.text()},
                            {QStringLiteral("open"), quote.open.text()},
                            {QStringLiteral("high"), quote.high.text()},
                            {QStringLiteral("low"), quote.low.text()},
                            {QStringLiteral("close"), quote.close.text()},
                            {QStringLiteral("volume"), QString::number(quote.volume)}};
        if (!quote.previousClose.isZero()) {
            message.insert(QStringLiteral("preclose"), quote.previousClose.text());
        }
        if (quote.recorded) {
            message.insert(QStringLiteral("recorded"), quote.recorded->text());
        }
        m_exchange->take(readQuote(message));
    }

    void hear(const QByteArray &text) { m_exchange->take(readQuote(QJsonDocument::fromJson(text).object())); }

    /// What charts are told of an order never goes back.
    void note(const Order &order)
    {
        const auto known = m_told.find(order.number);
        if (known != m_told.end() && (order.matchedQuantity < known->second.matchedQuantity ||
                                      order.cancelledQuantity < known->second.cancelledQuantity)) {
            m_goneBack = true; // not thrown here: the exchange is in the middle of its work
        }
        m_told.insert_or_assign(order.number, order);
    }

    void checkOrders()
    {
        demand(!m_goneBack, "an order lost what it had been dealt");
        OrderBook book(&m_ledger);
        for (const Order &order : book.ofDay(m_ledger.today())) {
            demand(order.openQuantity() >= 0 && order.matchedQuantity >= 0 && order.cancelledQuantity >= 0,
                   "an order was dealt beyond its quantity");
            const auto told = m_told.find(order.number);
            demand(told == m_told.end() || (told->second.status == order.status &&
                                            told->second.matchedQuantity == order.matchedQuantity),
                   "the ledger has another order than charts were told of");
        }
    }

    /// Nothing is below zero: cash, what may be spent of it, shares, what may be sold of them.
    void checkCover()
    {
        demand(!OrderBook(&m_ledger).cash().isNegative(), "the cash is below zero");
        demand(!m_exchange->spendable().isNegative(), "more is on offer than there is cash");
        for (int i = 0; i < 4; ++i) {
            const SecurityId security = securityNumber(i);
            demand(m_ledger.holding(security).quantity() >= 0, "fewer shares than none are held");
            demand(m_exchange->sellable(security) >= 0, "more shares are on offer than may be sold");
        }
    }

    FuzzInput m_input;
    const EmptyLedger m_home;
    Ledger m_ledger;
    std::optional<PaperExchange> m_exchange;
    Money m_openingCash;
    std::map<qint64, Order> m_told;
    bool m_goneBack = false;
};

} // namespace

void checkExchange(const QByteArray &bytes)
{
    TradingDay(FuzzInput(bytes)).run();
}
