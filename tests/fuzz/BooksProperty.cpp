#include "tests/fuzz/FastClock.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Properties.h"

#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"
#include "tradechartobject/ChartObjectFactory.h"
#include "tradechartobject/CombinedOverlay.h"
#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/CChartTradeObject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <vector>

using namespace TradeChart;
using namespace TradeChart::TradeKeyFields;
using Call = FakePainter::Call;

namespace {

const char *const days[] = {"20240102", "20240103", "20240104", "20240105"}; // no bar has the last one
const char *const prices[] = {"10", "11", "12", "13"};
const char *const quantities[] = {"100", "300", "1500"};

/// An overlay on a chart, the trading module that answers it, and a naive account of what was answered, held
/// against each other after every answer.
class Book
{
public:
    Book(FuzzInput *input, Korvane::Period period, std::vector<Korvane::AnalyData> bars)
        : in(input),
          m_period(period),
          m_bars(std::move(bars))
    {
        bus().reset();
        axis.bars = m_bars;
        axis.pixelsPerUnit = 100; // the markers of two prices do not touch
        axis.onPopup = [] { return -1; };
        painter.barCount = m_bars.size();
    }
    virtual ~Book()
    {
        overlay.reset();
        bus().reset();
    }
    Q_DISABLE_COPY_MOVE(Book)

    void run()
    {
        constexpr int mostAnswers = 24;
        calc();
        for (int answers = 0; answers < mostAnswers && !in->isEmpty(); ++answers) {
            if (in->below(8) == 7) {
                m_identity = 7001 + in->below(2);
                forgetIfAnother();
            } else {
                hear();
            }
            calc();
            painter.calls.clear();
            overlay->paintIt(painter);
            compare();
        }
    }

protected:
    virtual void hear() = 0;
    virtual void forget() = 0;
    virtual void compare() = 0;

    static RecordedBus &bus() { return RecordedBus::instance(); }

    /// An answer with rows; seldom one that is for another security. True when it is for this one.
    bool answer(const char *command, const QJsonValue &data)
    {
        const bool isOurs = in->below(8) > 0;
        bus().deliver(Topic::TRADEQUERY, text(command, data, isOurs));
        return isOurs;
    }

    static QByteArray text(const char *command, const QJsonValue &data, bool isOurs = true)
    {
        return QJsonDocument(
                   QJsonObject{{QLatin1String(CMD), QLatin1String(command)},
                               {QLatin1String(STKCODE), QLatin1String(isOurs ? "600536" : "000001")},
                               {QLatin1String(DATA), data}})
            .toJson(QJsonDocument::Compact);
    }

    /// The lines of the list that a click shows; empty when it shows none.
    QStringList listAt(int bar, double y)
    {
        axis.popups.clear();
        overlay->handleMousePress(axis.barToX(bar), y);
        return axis.popups.empty() ? QStringList() : axis.popups.front();
    }

    int barCount() const { return static_cast<int>(m_bars.size()); }

    FuzzInput *const in;
    FakeAxis axis;
    FakePainter painter;
    std::unique_ptr<Korvane::IChartObject> overlay;

private:
    void calc()
    {
        overlay->calcIt(makeSecurity(1, "600536", m_identity, "江山科技"), m_bars.data(), barCount(),
                        m_period, 0, 0);
    }

    void forgetIfAnother()
    {
        if (std::exchange(m_shownIdentity, m_identity) != m_identity) {
            forget();
        }
    }

    const Korvane::Period m_period;
    const std::vector<Korvane::AnalyData> m_bars;
    int m_identity = 7001;
    int m_shownIdentity = 7001;
};

std::vector<Korvane::AnalyData> threeDays()
{
    return {makeDayBar(20240102), makeDayBar(20240103), makeDayBar(20240104)};
}

/// Marked bars of the calls of one series, by style.
std::map<int, std::vector<bool>> marksIn(const std::vector<Call> &calls)
{
    std::map<int, std::vector<bool>> marks;
    for (const Call &call : calls) {
        if (call.kind == Call::MarkerSeries) {
            std::vector<bool> &bars = marks[call.ints.at(1)];
            std::transform(call.values.begin(), call.values.end(), std::back_inserter(bars),
                           [](double flag) { return flag == 1.0; });
        }
    }
    return marks;
}

// Cost

class CostBook final : public Book
{
public:
    explicit CostBook(FuzzInput *input) : Book(input, Korvane::DayPeriod, threeDays())
    {
        overlay.reset(CreateChartObject(axis, R"({"type":0})"));
    }

private:
    void hear() override
    {
        const bool isOurs = in->below(8) > 0;
        QJsonObject holding{{QLatin1String(STKCODE), QLatin1String(isOurs ? "600536" : "000001")},
                            {QLatin1String(MARKET), QLatin1String(isOurs ? "1" : "2")}};
        const std::optional<QByteArray> cost =
            in->flag() ? std::optional<QByteArray>(in->oneOf(prices)) : std::nullopt;
        if (cost) {
            holding.insert(QLatin1String(COSTPRICE), QString::fromLatin1(*cost));
        }
        answer(CmdType::HOLDERCOSTPRICE, holding); // it is the holding that names the security
        if (isOurs) {
            m_cost = cost ? std::optional(cost->toDouble()) : std::nullopt;
        }
    }

    void forget() override { m_cost.reset(); }

    void compare() override
    {
        const auto line = std::find_if(painter.calls.begin(), painter.calls.end(),
                                       [](const Call &call) { return call.kind == Call::LineSeries; });
        demand((line != painter.calls.end()) == m_cost.has_value(),
               "a cost line without a cost, or none with one");
        demand(!m_cost || line->values == std::vector<double>(3, *m_cost),
               "the cost line stands at another price");
    }

    std::optional<double> m_cost;
};

// Trades by day

struct ToldTrade
{
    QByteArray day;
    bool isBuy;
    QByteArray price;
    QByteArray quantity;

    QString line() const
    {
        return QStringLiteral("\t09:30:15\t成交价:%1\t成交量:%2")
            .arg(QString::number(price.toDouble(), 'f', 2), QString::number(quantity.toDouble(), 'f', 0));
    }
};

class TradeBook final : public Book
{
public:
    explicit TradeBook(FuzzInput *input) : Book(input, Korvane::DayPeriod, threeDays())
    {
        overlay.reset(CreateChartObject(axis, R"({"type":1})"));
    }

private:
    void hear() override
    {
        const bool isOfToday = in->flag();
        std::vector<ToldTrade> told;
        QJsonArray rows;
        for (int count = in->below(5); count > 0; --count) {
            told.push_back({in->oneOf(days), in->flag(), in->oneOf(prices), in->oneOf(quantities)});
            rows.append(row(told.back(), isOfToday));
        }
        if (!answer(isOfToday ? CmdType::TODAYTRADE : CmdType::HISTORYTRADE, rows)) {
            return;
        }
        if (isOfToday && !told.empty()) {
            m_trades[told.back().day] = told; // all under the day of the last one
        } else if (!isOfToday) {
            for (const ToldTrade &trade : told) {
                m_trades[trade.day].push_back(trade);
            }
        }
    }

    static QJsonObject row(const ToldTrade &trade, bool isOfToday)
    {
        return {{QLatin1String(isOfToday ? RTSORDERDATE : RTSDATE), QLatin1String(trade.day)},
                {QLatin1String(isOfToday ? RTSENTRUSTTIME : RTSMATCHTIME), QStringLiteral("09301500")},
                {QLatin1String(RTSBSFLAG), QLatin1String(trade.isBuy ? "B" : "S")},
                {QLatin1String(RTSMATCHPRICE), QLatin1String(trade.price)},
                {QLatin1String(RTSMATCHQTY), QLatin1String(trade.quantity)}};
    }

    void forget() override { m_trades.clear(); }

    void compare() override
    {
        auto marks = marksIn(painter.calls);
        for (int bar = 0; bar < barCount(); ++bar) {
            const std::vector<ToldTrade> &trades = m_trades[days[bar]];
            const auto isBuy = [](const ToldTrade &trade) { return trade.isBuy; };
            const bool hasBuys = std::any_of(trades.begin(), trades.end(), isBuy);
            const bool hasSells = !std::all_of(trades.begin(), trades.end(), isBuy);
            const auto place = static_cast<std::size_t>(bar);
            demand(marks[Korvane::BuyAbove].at(place) == (hasBuys && !hasSells) &&
                       marks[Korvane::SellAbove].at(place) == (hasSells && !hasBuys) &&
                       marks[Korvane::BothAbove].at(place) == (hasBuys && hasSells),
                   "a day of trades has another marker");
            compareList(trades, listAt(bar, 0));
        }
    }

    static void compareList(const std::vector<ToldTrade> &trades, const QStringList &lines)
    {
        demand(static_cast<std::size_t>(lines.size()) == trades.size(),
               "a day's list has more or fewer trades");
        for (int i = 0; i < lines.size(); ++i) {
            demand(lines[i].endsWith(trades[static_cast<std::size_t>(i)].line()),
                   "a day's list has another trade: " + lines[i].toStdString());
        }
    }

    std::map<QByteArray, std::vector<ToldTrade>> m_trades;
};

// Orders by minute

struct ToldOrder
{
    int minute; ///< its bar
    bool isBuy;
    QByteArray status;
    QByteArray price;
};

class OrdersBook final : public Book
{
public:
    explicit OrdersBook(FuzzInput *input) : Book(input, Korvane::IntradayPeriod, threeMinutes())
    {
        axis.mode = Korvane::TodayChart;
        overlay.reset(CreateChartObject(axis, R"({"type":2})"));
    }

private:
    static std::vector<Korvane::AnalyData> threeMinutes()
    {
        return {makeMinuteBar(20240102, 931), makeMinuteBar(20240102, 932), makeMinuteBar(20240102, 933)};
    }

    void hear() override
    {
        std::vector<ToldOrder> told;
        QJsonArray rows;
        for (int count = in->below(6); count > 0; --count) {
            rows.append(row(&told));
        }
        const char *const commands[] = {CmdType::ENTRUSTTODAYTRADE, CmdType::ENTRUSTHISTORYTRADE};
        if (answer(in->oneOf(commands), rows) && !told.empty()) {
            m_orders = told; // an answer without a readable order leaves what is shown
        }
    }

    /// A row, and its order where it is readable.
    QJsonObject row(std::vector<ToldOrder> *told)
    {
        const char *const sides[] = {"0B", "0S", "0B", "0S", "?"};
        const char *const statuses[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "A", "B", "C", ""};
        const char *const times[] = {"9310000", "9320000", "9330000", "9250000"};
        const QByteArray side = in->oneOf(sides);
        const bool isOfMarket = in->below(8) > 0;
        const bool isOfToday = in->below(4) > 0;
        const int time = in->below(4);
        const ToldOrder order{isOfToday && time < 3 ? time : 0, side == "0B", in->oneOf(statuses),
                              in->oneOf(prices)};
        if (isOfMarket && side != "?" && !order.status.isEmpty()) {
            told->push_back(order);
        }
        return {{QLatin1String(MARKET), QLatin1String(isOfMarket ? "1" : "2")},
                {QLatin1String(RTSBSFLAG), QLatin1String(side)},
                {QLatin1String(RTSORDERSTATUS), QLatin1String(order.status)},
                {QLatin1String(RTSENTRUSTDATE), QLatin1String(isOfToday ? "20240102" : "20240101")},
                {QLatin1String(RTSENTRUSTTIME), QLatin1String(times[time])},
                {QLatin1String(RTSENTRUSTPRICE), QLatin1String(order.price)},
                {QLatin1String(RTSENTRUSTQTY), QStringLiteral("100")}};
    }

    void forget() override { m_orders.clear(); }

    void compare() override
    {
        for (int bar = 0; bar < barCount(); ++bar) {
            for (const QByteArray price : prices) {
                std::vector<ToldOrder> here;
                std::copy_if(
                    m_orders.begin(), m_orders.end(), std::back_inserter(here),
                    [&](const ToldOrder &order) { return order.minute == bar && order.price == price; });
                demand(drawn(bar, price.toDouble()) == marker(here),
                       "the orders of a price have another marker");
                demand(listAt(bar, axis.yOf(price.toDouble()) + 1).size() == static_cast<int>(here.size()),
                       "the list of a price has more or fewer orders");
            }
        }
    }

    /// The marker drawn there; 0 for none.
    int drawn(int bar, double price)
    {
        const auto call = std::find_if(painter.calls.begin(), painter.calls.end(), [&](const Call &one) {
            return one.kind == Call::Marker && one.ints.at(1) == bar && one.number == price;
        });
        return call == painter.calls.end() ? 0 : call->ints.at(2);
    }

    static int marker(const std::vector<ToldOrder> &orders)
    {
        int shown = 0;
        for (const ToldOrder &order : orders) {
            const OrderStatusRow *const row = OrderStatusTable::find(QString::fromLatin1(order.status));
            if (row != nullptr && row->group) {
                shown = markerWith(shown, order.isBuy, *row->group);
            }
        }
        return shown;
    }

    /// Waiting and dealt ones of a side mix to what is half dealt; one that is half dealt itself decides
    /// alone.
    static int markerWith(int shown, bool isBuy, OrderStatusGroup group)
    {
        const int waiting = isBuy ? Korvane::BuyWaiting : Korvane::SellWaiting;
        const int dealt = isBuy ? Korvane::BuyDealed : Korvane::SellDealed;
        switch (group) {
        case OrderStatusGroup::PartDealt:
            return isBuy ? Korvane::BuyPartDeal : Korvane::SellPartDeal;
        case OrderStatusGroup::Waiting:
            return shown == 0 ? waiting : shown == dealt ? Korvane::BuyPartDeal : shown;
        case OrderStatusGroup::Dealt:
            return shown == 0 ? dealt : shown == waiting ? Korvane::BuyPartDeal : shown;
        }
        return shown;
    }

    std::vector<ToldOrder> m_orders; ///< as shown
};

// All trades of the combined overlay, which have no time: they stand on the first bar

struct PlainTrade
{
    bool isBuy;
    double price;
};

class CombinedBook final : public Book
{
public:
    explicit CombinedBook(FuzzInput *input) : Book(input, Korvane::DayPeriod, threeDays())
    {
        axis.popupHasTerminator = false;
        auto combined = std::make_unique<CChartTradeObject>(axis, R"({"type":1})");
        m_combined = combined.get();
        overlay = std::move(combined);
        bus().answerRequest = [this](const RecordedBus::Message &) { return m_reply; };
    }

private:
    void hear() override
    {
        std::vector<PlainTrade> told;
        QJsonArray rows;
        for (int count = in->below(5); count > 0; --count) {
            constexpr double closeAndAround[] = {9.5, 10.0, 10.5};
            told.push_back({in->flag(), in->oneOf(closeAndAround)});
            rows.append(QJsonObject{{QLatin1String(BUY), told.back().isBuy},
                                    {QLatin1String(PRICE), told.back().price},
                                    {QLatin1String(VOL), 100.0}});
        }
        in->flag() ? hearOfToday(told, rows) : hearOfPast(told, rows);
    }

    void hearOfPast(const std::vector<PlainTrade> &told, const QJsonArray &rows)
    {
        if (answer(CmdType::HISTORYTRADE, rows)) {
            m_trades = told; // those without a time count as past ones, which the answer replaces
        }
    }

    void hearOfToday(const std::vector<PlainTrade> &told, const QJsonArray &rows)
    {
        const bool isAnswered = in->below(4) > 0;
        m_reply = isAnswered ? text(CmdType::TODAYTRADE, rows) : QByteArray();
        bus().deliver(Topic::TRADENOTIFY, text("Notify", QJsonValue()));
        if (isAnswered) {
            m_trades.insert(m_trades.end(), told.begin(), told.end());
        }
    }

    void forget() override {} // it keeps what it has until other trades come

    void compare() override
    {
        comparePart(true, Korvane::BuyAbove, Korvane::SellAbove);
        comparePart(false, Korvane::BuyBelow, Korvane::SellBelow);
    }

    /// The part of the first bar at or above its close, or below it.
    void comparePart(bool isAbove, int buyStyle, int sellStyle)
    {
        constexpr double close = 10;
        const auto count = [&](bool isBuy) {
            return std::count_if(m_trades.begin(), m_trades.end(), [&](const PlainTrade &trade) {
                return trade.isBuy == isBuy && (trade.price >= close) == isAbove;
            });
        };
        auto marks = marksIn(painter.calls);
        demand(marks[buyStyle].at(0) == (count(true) > 0) && marks[sellStyle].at(0) == (count(false) > 0),
               "trades have another marker");
        const auto listed =
            static_cast<int>(count(true) > 0 ? count(true) : count(false)); // of the marker in front
        axis.expectLines = listed;
        const QStringList lines = listAt(0, axis.yOf(close) + (isAbove ? -1 : 1));
        const int told = m_combined->property(Korvane::CombinedOverlay::listLength).toInt();
        demand(lines.size() == listed && (listed == 0 || told == listed),
               "the list has more or fewer trades");
    }

    CChartTradeObject *m_combined = nullptr;
    QByteArray m_reply;
    std::vector<PlainTrade> m_trades;
};

std::unique_ptr<Book> bookOf(FuzzInput *input)
{
    switch (input->below(4)) {
    case 0:
        return std::make_unique<CostBook>(input);
    case 1:
        return std::make_unique<TradeBook>(input);
    case 2:
        return std::make_unique<OrdersBook>(input);
    default:
        return std::make_unique<CombinedBook>(input);
    }
}

} // namespace

void checkBooks(const QByteArray &bytes)
{
    const FastClock clock;
    FuzzInput input(bytes);
    bookOf(&input)->run();
}
