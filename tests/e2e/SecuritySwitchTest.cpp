// A user who leafs through securities faster than the trading module answers: whatever a chart shows
// belongs to the security that it shows now.
#include "tests/e2e/PluginOnBus.h"
#include "tests/support/BusThread.h"
#include "tests/support/SentOrder.h"
#include "tests/support/SentTrade.h"

#include <QDate>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <iostream>
#include <random>
#include <string>
#include <utility>

using namespace std::chrono_literals;

using LocalCommunication::EndPoint;
using ::testing::Each;
using ::testing::Gt;

namespace {

constexpr int securityCount = 8;

// Every price of security number n ends in n yuan: 13.00 can only be of security 3.
constexpr int costBase = 10;
constexpr int pastTradeBase = 20;
constexpr int todaysTradeBase = 40;
constexpr int orderBase = 60;

/// From the environment, to have the same run again; else by chance.
unsigned seedOfRun()
{
    bool isGiven = false;
    const unsigned seed = qEnvironmentVariable("TRADE_SWITCH_SEED").toUInt(&isGiven);
    return isGiven ? seed : std::random_device()();
}

QString code(int security)
{
    return QString::number(600500 + security);
}

QString priceText(int yuan)
{
    return QString::number(yuan) + QStringLiteral(".00");
}

QJsonArray oneTrade(int price, const char *day)
{
    return {SentTrade{"B", day, "09301500", priceText(price).toUtf8()}.whole()};
}

QJsonArray oneOrder(int price)
{
    return {QJsonObject(SentOrder{"0B", "8", priceText(price).toUtf8(), "09301500", "20240102"})};
}

QJsonValue dataOf(const QString &cmd, int security)
{
    if (cmd == QLatin1String("HolderCostPrice")) {
        return QJsonObject{{QStringLiteral("stkcode"), code(security)},
                           {QStringLiteral("market"), QStringLiteral("1")},
                           {QStringLiteral("costprice"), priceText(costBase + security)}};
    }
    if (cmd == QLatin1String("HistoryTrade")) {
        return oneTrade(pastTradeBase + security, "20240102");
    }
    if (cmd == QLatin1String("TodayTrade")) {
        return oneTrade(todaysTradeBase + security, "20240103");
    }
    return oneOrder(orderBase + security);
}

/// A module whose answers come late and overtake each other. It tells of trades nobody asked about, too.
class LateModule
{
public:
    LateModule(const QString &address, unsigned seed)
        : m_random(seed),
          m_thread(address, "TradeQuery",
                   [this](EndPoint &own, const QByteArray &question, const QByteArray &replyChannel) {
                       answer(own, QJsonDocument::fromJson(question).object(), replyChannel);
                   })
    {
    }

private:
    static constexpr std::chrono::milliseconds longestDelay = 40ms;

    void answer(EndPoint &own, const QJsonObject &question, const QByteArray &replyChannel)
    {
        const QString screen = question[QStringLiteral("screenId")].toString();
        const QByteArray channel = screen.isEmpty() ? replyChannel : screen.toUtf8();
        const int security = question[QStringLiteral("stkcode")].toString().toInt() - 600500;
        QJsonObject answer{
            {QStringLiteral("cmd"), question[QStringLiteral("cmd")]},
            {QStringLiteral("stkcode"), question[QStringLiteral("stkcode")]},
            {QStringLiteral("costprice"), priceText(costBase + security)},
            {QStringLiteral("data"), dataOf(question[QStringLiteral("cmd")].toString(), security)}};
        const bool isWaitedFor = screen.isEmpty() && replyChannel != "Global";
        sendLater(own, isWaitedFor ? 1ms : longestDelay, channel, "TradeQuery", answer);
        if (roll(10) == 0) {
            sendLater(own, longestDelay, "Global", "TradeNotify",
                      {{QStringLiteral("stkcode"), code(roll(securityCount))}});
        }
    }

    void sendLater(EndPoint &own, std::chrono::milliseconds latest, const QByteArray &channel,
                   const QByteArray &topic, const QJsonObject &message)
    {
        const std::chrono::milliseconds delay(roll(static_cast<int>(latest.count())));
        QTimer::singleShot(delay, Qt::PreciseTimer, &own, [&own, channel, topic, message] {
            own.sendMessage(channel, topic, QJsonDocument(message).toJson(QJsonDocument::Compact));
        });
    }

    /// 0 or more, below `limit`.
    int roll(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }

    std::mt19937 m_random;
    BusThread m_thread;
};

MATCHER_P(IsOf, security, "")
{
    return static_cast<int>(std::lround(arg)) % 10 == security;
}

class SecuritySwitch : public PluginOnBus
{
protected:
    SecuritySwitch()
    {
        axis.mode =
            Korvane::PastDayChart; // a past day's orders: today's would wait a second after each notification
        cost.overlay = create(0);
        points.overlay = create(1);
        orders.overlay = create(2);
        combinedCost.overlay = construct(0);
    }

    struct Shown
    {
        const char *name;
        FakeAxis &axis;
        const std::vector<Korvane::AnalyData> &bars;
        int period;
        Overlay overlay = nullptr;
        int timesSeen = 0; ///< how often it showed anything
    };

    Korvane::tagCodeWithName record(int number) const
    {
        return makeSecurity(1, code(number).toLatin1().constData(), 100 + number, "NAME");
    }

    /// The combined markers hold on to their trades: a terminal makes them anew for another security.
    void switchTo(int number)
    {
        security = number;
        combinedTrades.overlay = construct(1);
        redraw();
    }

    void redraw()
    {
        for (Shown *shown : all) {
            ASSERT_TRUE(calc(*shown->overlay, record(security), shown->bars, shown->period)) << shown->name;
            const std::vector<double> prices = pricesOf(*shown);
            ASSERT_THAT(prices, Each(IsOf(security))) << shown->name;
            shown->timesSeen += prices.empty() ? 0 : 1;
        }
    }

    /// Every price that the overlay draws, and those in the lists behind its markers.
    std::vector<double> pricesOf(Shown &shown)
    {
        std::vector<double> prices;
        shown.axis.popups.clear();
        for (const FakePainter::Call &call : paint(*shown.overlay).calls) {
            if (call.kind == FakePainter::Call::LineSeries) {
                prices.push_back(call.values.front());
            } else if (call.kind == FakePainter::Call::Marker) {
                prices.push_back(call.number);
                shown.overlay->handleMousePress(call.ints[1] * 10.0, shown.axis.yOf(call.number) + 1.0);
            } else if (call.kind == FakePainter::Call::MarkerSeries) {
                clickMarkers(shown, call.values);
            }
        }
        for (const QStringList &list : shown.axis.popups) {
            appendPrices(list.join(QLatin1Char('\n')), prices);
        }
        return prices;
    }

    static void clickMarkers(Shown &shown, const std::vector<double> &flags)
    {
        for (std::size_t bar = 0; bar < flags.size(); ++bar) {
            if (flags[bar] == 1.0) {
                shown.overlay->handleMousePress(static_cast<double>(bar) * 10.0, shown.axis.yOf(15.0));
            }
        }
    }

    static void appendPrices(const QString &text, std::vector<double> &prices)
    {
        static const QRegularExpression price(QStringLiteral("价(?:格)?:([0-9.]+)"));
        for (auto found = price.globalMatch(text); found.hasNext();) {
            prices.push_back(found.next().captured(1).toDouble());
        }
    }

    const std::vector<Korvane::AnalyData> days = {makeDayBar(20240102), makeDayBar(20240103)};
    const std::vector<Korvane::AnalyData> minutes = {makeMinuteBar(
        static_cast<std::uint32_t>(QDate::currentDate().toString(QStringLiteral("yyyyMMdd")).toInt()), 931)};
    int security = 0;
    Shown cost{"cost line", axis, days, Korvane::DayPeriod};
    Shown points{"buy/sell points", axis, days, Korvane::DayPeriod};
    Shown orders{"order points", axis, minutes, Korvane::IntradayPeriod};
    Shown combinedCost{"combined cost line", combinedAxis, days, Korvane::DayPeriod};
    Shown combinedTrades{"combined markers", combinedAxis, days, Korvane::DayPeriod};
    Shown *const all[5] = {&cost, &points, &orders, &combinedCost, &combinedTrades};
};

TEST_F(SecuritySwitch, NeverShowsAnotherSecuritysData)
{
    constexpr int switches = 1000;
    constexpr int longestLook = 10; // in milliseconds
    const unsigned seed = seedOfRun();
    const std::string again = "again with TRADE_SWITCH_SEED=" + std::to_string(seed);
    std::cout << again << '\n';
    SCOPED_TRACE(again);
    std::mt19937 random(seed);
    const LateModule module(broker.address(), seed + 1);
    const auto roll = [&random](int limit) {
        return std::uniform_int_distribution<int>(0, limit - 1)(random);
    };

    // A host repaints inside updateObject() or some time after it.
    bool isUpdateDue = false;
    axis.onUpdate = [&] {
        isUpdateDue = true;
        if (roll(2) == 0) {
            redraw();
        }
    };
    for (int count = 0; count < switches && !HasFatalFailure(); ++count) {
        switchTo(roll(securityCount));
        const QDeadlineTimer look(std::chrono::milliseconds(roll(longestLook)));
        waitUntil([&] {
            if (std::exchange(isUpdateDue, false)) {
                redraw();
            }
            return look.hasExpired() || HasFatalFailure();
        });
        redraw();
    }
    ASSERT_FALSE(HasFatalFailure());
    for (const Shown *shown : all) {
        EXPECT_THAT(shown->timesSeen, Gt(switches / 20)) << shown->name;
        std::cout << shown->name << " showed something " << shown->timesSeen << " times\n";
    }
}

} // namespace
