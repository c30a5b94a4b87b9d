#pragma once

#include "tests/support/TimeZone.h"
#include "tests/trademodule/support/TestLedger.h"
#include "trademodule/ledger/Ledger.h"

#include <gmock/gmock.h>

#include <optional>

namespace TradeModule {

inline const SecurityId &bank()
{
    static const SecurityId security{QStringLiteral("000001"), Market::Shenzhen};
    return security;
}

inline const SecurityId &liquor()
{
    static const SecurityId security{QStringLiteral("600519"), Market::Shanghai};
    return security;
}

/// All days.
inline constexpr DateRange always;

/// The day of yyyymmdd.
constexpr TradingDate day(int yyyymmdd)
{
    return TradingDate::ofNumber(yyyymmdd).value();
}

/// The time of hhmm.
constexpr ClockTime at(int hhmm)
{
    return ClockTime::of(hhmm / 100, hhmm % 100).value();
}

/// An execution of `quantity` shares at `price` yuan for a fee of 5 yuan.
inline Execution fill(Side side, const SecurityId &security, TradingDate date, double price, qint64 quantity,
                      const QString &dealNo = {})
{
    Execution execution{security, side, date, at(1000), Money::ofYuan(price).value(), quantity};
    execution.amount = Money::ofSteps(execution.price.steps() * quantity);
    execution.fee = Money::ofYuan(side == Side::Bonus ? 0 : 5).value();
    execution.dealNo = dealNo;
    return execution;
}

inline Execution fill(Side side, const SecurityId &security, int date, double price, qint64 quantity,
                      const QString &dealNo = {})
{
    return fill(side, security, day(date), price, quantity, dealNo);
}

inline Statement statementOf(const Executions &executions)
{
    return {QStringLiteral("statement.csv"), executions, {}};
}

/// A test on an empty ledger in a real database, whose "today" is that of the programs that it starts.
class LedgerFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (const QString reason = TestLedger::unavailable(); !reason.isEmpty()) {
            GTEST_SKIP() << reason.toStdString();
        }
        m_home.emplace();
        m_ledger.emplace(location());
    }

    QString location() const { return m_home->location(); }
    const TestLedger &home() const { return *m_home; }
    Ledger &ledger() { return *m_ledger; }

    Booked book(const Executions &executions, Ledger::Mode mode = Ledger::Mode::Keep)
    {
        return ledger().book(statementOf(executions), mode);
    }

    double costPrice(const SecurityId &security)
    {
        return ledger().holding(security).costPrice().value_or(std::nan(""));
    }

private:
    const TimeZone m_exchangeTime{"Asia/Shanghai"};
    std::optional<TestLedger> m_home;
    std::optional<Ledger> m_ledger;
};

} // namespace TradeModule
