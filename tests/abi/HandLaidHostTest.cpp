// A terminal that knows the plug-in only as a file: it loads the library, finds the factory by name and
// speaks through virtual tables and records laid by hand. No header of the plug-in is used here, so a
// slot or a byte that moves breaks these tests although everything still compiles.
#include "tests/support/LogCapture.h"
#include "tests/support/RecordedBus.h"

#include <gmock/gmock.h>

#include <QDate>
#include <QJsonObject>
#include <QLibrary>
#include <QObject>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <array>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// Any object with virtual operations: a pointer to its table, whose slots follow two words of type
/// information.
struct Virtual
{
    void *const *table;
};

template <class Function>
void *address(Function *function)
{
    void *raw = nullptr;
    std::memcpy(&raw, &function, sizeof raw);
    return raw;
}

template <class Result, class... Arguments>
Result call(void *object, int slot, Arguments... arguments)
{
    using Function = Result (*)(void *, Arguments...);
    Function function = nullptr;
    std::memcpy(&function, static_cast<Virtual *>(object)->table + slot, sizeof function);
    return function(object, arguments...);
}

[[noreturn]] void unexpectedSlot()
{
    ADD_FAILURE() << "the plug-in called a slot that no overlay uses";
    std::abort();
}

template <std::size_t Slots>
struct Table
{
    Table() { words.fill(address(&unexpectedSlot)); }

    template <class Function>
    void set(std::size_t slot, Function *function)
    {
        words[2 + slot] = address(function);
    }
    void *const *slots() const { return words.data() + 2; }

    std::array<void *, 2 + Slots> words;
};

struct Axis : Virtual
{
    std::vector<std::string> calls;
    std::vector<void *> updated;
    std::vector<std::string> popupLines;
    int linesWithoutEnd = 0; ///< more than 0: so many lines, and no null pointer behind them
    int chosenLine = -1;
};

struct Painter : Virtual
{
    std::vector<std::string> calls;
};

Axis &log(void *self, const std::string &name)
{
    auto &axis = *static_cast<Axis *>(static_cast<Virtual *>(self));
    axis.calls.push_back(name);
    return axis;
}

int chartMode(void *self)
{
    log(self, "chartMode");
    return 1;
}

bool visiblePriceRange(void *self, double *low, double *high)
{
    log(self, "visiblePriceRange");
    *low = 10.0;
    *high = 20.0;
    return true;
}

const char *screenId(void *)
{
    return "by-hand";
}

double markerSize(void *self)
{
    log(self, "markerSize");
    return 16.0;
}

void updateObject(void *self, void *object)
{
    log(self, "updateObject").updated.push_back(object);
}

int popupMenu(void *self, const char **lines, void *)
{
    Axis &axis = log(self, "popupMenu");
    for (int line = 0; axis.linesWithoutEnd > 0 ? line < axis.linesWithoutEnd : lines[line] != nullptr;
         ++line) {
        axis.popupLines.emplace_back(lines[line]);
    }
    return axis.chosenLine;
}

void showMessage(void *self, const char *text)
{
    log(self, "showMessage " + std::string(text));
}

bool confirmBox(void *self, const char *text)
{
    log(self, "confirmBox " + std::string(text));
    return true;
}

double barToX(void *self, int bar)
{
    log(self, "barToX " + std::to_string(bar));
    return bar * 100.0;
}

double priceToY(void *self, double price, int one, int two)
{
    log(self, one == -1 && two == -1 ? "priceToY" : "priceToY with other ints");
    return 1000.0 - price;
}

int xToBar(void *self, double x)
{
    log(self, "xToBar");
    return static_cast<int>(x);
}

void barAt(void *self, int bar, void *out)
{
    log(self, "barAt " + std::to_string(bar));
    const double close = 15.0;
    std::memcpy(static_cast<unsigned char *>(out) + 32, &close, sizeof close);
}

const Table<27> &axisTable()
{
    static const Table<27> table = [] {
        Table<27> made;
        made.set(2, &chartMode);
        made.set(3, &visiblePriceRange);
        made.set(4, &screenId);
        made.set(12, &markerSize);
        made.set(13, &updateObject);
        made.set(18, &popupMenu);
        made.set(20, &showMessage);
        made.set(21, &confirmBox);
        made.set(23, &barToX);
        made.set(24, &priceToY);
        made.set(25, &xToBar);
        made.set(26, &barAt);
        return made;
    }();
    return table;
}

void draw(void *self, const std::string &call)
{
    static_cast<Painter *>(static_cast<Virtual *>(self))->calls.push_back(call);
}

void endPaint(void *self)
{
    draw(self, "endPaint");
}

void drawSeriesLabel(void *self, const double *values, const char *text, int index)
{
    draw(self,
         "label " + std::string(text) + " at " + std::to_string(values[0]) + " " + std::to_string(index));
}

void drawLineSeries(void *self, int reserved, const double *values, double width)
{
    draw(self,
         "line " + std::to_string(reserved) + " " + std::to_string(values[1]) + " " + std::to_string(width));
}

void drawMarkerSeries(void *self, int reserved, const double *flags, const double *prices, int style,
                      int variant)
{
    draw(self, "markers " + std::to_string(reserved) + " " + (flags[1] == 1.0 ? "on" : "off") + " " +
                   std::to_string(prices[1]) + " " + std::to_string(style) + " " + std::to_string(variant));
}

void drawMarker(void *self, int reserved, int bar, int kind, int atLow, double price)
{
    draw(self, "marker " + std::to_string(reserved) + " " + std::to_string(bar) + " " + std::to_string(kind) +
                   " " + std::to_string(atLow) + " " + std::to_string(price));
}

const Table<37> &painterTable()
{
    static const Table<37> table = [] {
        Table<37> made;
        made.set(4, &endPaint);
        made.set(8, &drawSeriesLabel);
        made.set(13, &drawLineSeries);
        made.set(35, &drawMarkerSeries);
        made.set(36, &drawMarker);
        return made;
    }();
    return table;
}

/// 80 bytes that are read as a record of the host.
struct alignas(8) Record : std::array<unsigned char, 80>
{
};

template <class Value>
void put(Record &record, std::size_t byte, Value value)
{
    std::memcpy(record.data() + byte, &value, sizeof value);
}

Record dayBar(std::int32_t date, double high)
{
    Record bar;
    bar.fill(0xEE); // what the plug-in must not read
    put(bar, 0, date);
    put(bar, 16, high);
    put(bar, 24, high - 2.0);
    put(bar, 32, high - 1.0);
    return bar;
}

/// A bar of today, `minutes` after midnight.
Record minuteBar(std::uint32_t minutes)
{
    const QDate today = QDate::currentDate();
    const auto year = static_cast<std::uint32_t>(today.year() - 2004);
    const auto monthDay = static_cast<std::uint32_t>(today.month() * 100 + today.day());
    Record bar;
    bar.fill(0xEE);
    put(bar, 0, (year << 27U) | (monthDay << 16U) | minutes);
    return bar;
}

Record security(std::int8_t market, const char *code, std::int64_t identity)
{
    Record record;
    record.fill(0xEE);
    put(record, 0, market);
    std::memcpy(record.data() + 1, code, std::strlen(code) + 1);
    put(record, 40, identity);
    std::memcpy(record.data() + 48, "NAME", 5);
    return record;
}

class HandLaidHost : public ::testing::Test
{
protected:
    HandLaidHost()
    {
        RecordedBus::instance().reset();
        axis.table = axisTable().slots();
        painter.table = painterTable().slots();
        // Linux holds the file loaded for the whole run, as a terminal does.
        library.setFileName(QStringLiteral(PLUGIN_FILE));
        library.setLoadHints(QLibrary::PreventUnloadHint);
    }

    ~HandLaidHost() override
    {
        if (overlay != nullptr) {
            call<bool>(overlay, 3);
            call<void>(overlay, 1);
        }
    }

    QFunctionPointer find(const char *symbol)
    {
        const QFunctionPointer found = library.resolve(symbol);
        EXPECT_NE(found, nullptr) << library.errorString().toStdString();
        return found;
    }

    template <class Function>
    Function *function(const char *symbol)
    {
        return reinterpret_cast<Function *>(find(symbol));
    }

    void *create(const char *json)
    {
        if (const auto factory = function<void *(void *, const char *)>("CreateChartObject")) {
            overlay = factory(static_cast<Virtual *>(&axis), json);
        }
        return overlay;
    }

    bool calcIt(const Record &code, int period)
    {
        const std::vector<Record> bars = {dayBar(20240102, 15.0), dayBar(20240103, 16.0)};
        return call<bool, const void *, const void *, int, int, int, int>(overlay, 4, code.data(),
                                                                          bars.data(), 2, period, 7, 8);
    }

    bool paintIt() { return call<bool, void *>(overlay, 8, static_cast<Virtual *>(&painter)); }

    QLibrary library;
    Axis axis;
    Painter painter;
    void *overlay = nullptr;
};

TEST_F(HandLaidHost, DrivesTheCostLineThroughItsSlots)
{
    ASSERT_NE(create(R"({"type":0,"auto_refresh_time":600})"), nullptr);
    EXPECT_EQ(call<int>(overlay, 2), 3);
    EXPECT_FALSE((call<bool>(overlay, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(overlay, 6, &untouched), DBL_MIN);
    EXPECT_EQ(call<double>(overlay, 7, &untouched), DBL_MAX);
    EXPECT_EQ(untouched, 42);

    EXPECT_TRUE(calcIt(security(1, "600536", 77), 4));
    ASSERT_THAT(RecordedBus::instance().sent, SizeIs(1));
    EXPECT_EQ(RecordedBus::instance().sent[0].payload,
              R"({"cmd":"HolderCostPrice","market":"SH","screenId":"by-hand","stkcode":"600536"})");

    RecordedBus::instance().deliver(
        "TradeQuery",
        R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"12.5"}})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay)) << "the overlay names itself as the host knows it";

    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, ElementsAre("line 0 12.500000 1.000000",
                                           "label 持仓成本:12.500 at 12.500000 -1", "endPaint"));

    EXPECT_EQ((call<int>(overlay, 9, 0.0, 1000.0 - 12.5 + 5.0)), 0);
    EXPECT_EQ((call<int>(overlay, 9, 0.0, 1000.0 - 12.5 + 5.5)), -1);
    for (int mouse = 10; mouse <= 14; ++mouse) {
        call<void>(overlay, mouse, 1.0, 1.0);
    }
    EXPECT_THAT(axis.calls, ElementsAre("updateObject", "visiblePriceRange", "priceToY", "priceToY"));
}

TEST_F(HandLaidHost, DrivesTheBuySellPointsThroughTheirSlots)
{
    ASSERT_NE(create(R"({"type":1,"auto_refresh_time":600})"), nullptr);
    EXPECT_EQ(call<int>(overlay, 2), 3);
    EXPECT_TRUE((call<bool>(overlay, 5, 1, 2)));
    EXPECT_FALSE(calcIt(security(0, "000001", 78), 21));
    EXPECT_TRUE(calcIt(security(0, "000001", 78), 4));
    ASSERT_THAT(RecordedBus::instance().sent, SizeIs(1));
    EXPECT_EQ(
        RecordedBus::instance().sent[0].payload,
        R"({"cmd":"HistoryTrade","end":"20240103","market":"SZ","screenId":"by-hand","start":"20240102","stkcode":"000001"})");

    RecordedBus::instance().deliver(
        "TradeQuery",
        R"({"cmd":"HistoryTrade","stkcode":"000001","data":[{"bsflag2":"S","bizdate":"20240103","matchtime":"9301500","matchprice":"15.5","matchqty":"300"}]})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay));

    int untouched = 42;
    EXPECT_EQ(call<double>(overlay, 6, &untouched), DBL_MIN);
    EXPECT_EQ(call<double>(overlay, 7, &untouched), DBL_MAX);
    EXPECT_EQ(untouched, 42);

    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, ElementsAre("markers 0 off 16.000000 0 1", "markers 0 on 16.000000 2 1",
                                           "markers 0 off 16.000000 4 1"));
    EXPECT_EQ((call<int>(overlay, 9, 1.0, 1000.0 - 16.0)), 0);
    EXPECT_EQ((call<int>(overlay, 9, 0.0, 1000.0 - 16.0)), -1);

    EXPECT_THAT(axis.calls, ElementsAre("updateObject", "xToBar", "priceToY", "markerSize", "xToBar"));

    axis.calls.clear();
    for (int mouse = 11; mouse <= 14; ++mouse) {
        call<void>(overlay, mouse, 1.0, 1.0);
    }
    EXPECT_THAT(axis.calls, SizeIs(0));
    call<void>(overlay, 10, 1.0, 1.0);
    EXPECT_THAT(axis.calls, ElementsAre("xToBar", "barAt 1", "priceToY", "popupMenu"));
    EXPECT_THAT(axis.popupLines, ElementsAre("卖出\t09:30:15\t成交价:15.50\t成交量:300"));
}

/// A terminal that constructs an overlay in memory of its own, by the constructor's name - the combined one
/// cannot be had otherwise - and drives the part of it that follows the QObject.
class HandLaidHostConstructs : public HandLaidHost
{
protected:
    void construct(const char *json)
    {
        constructBy<const char *>("_ZN17CChartTradeObjectC1ERN7Korvane10IChartAxisEPKc", json);
    }

    template <class... Arguments>
    void constructBy(const char *symbol, Arguments... arguments)
    {
        memory.fill(0xEE);
        if (const auto constructor = function<void(void *, void *, Arguments...)>(symbol)) {
            constructor(memory.data(), static_cast<Virtual *>(&axis), arguments...);
            constructed = memory.data() + qobjectSize;
        }
    }

    ~HandLaidHostConstructs() override
    {
        if (constructed != nullptr) {
            call<bool>(constructed, 3);
            call<void>(constructed, 0); // the memory is not the library's to free
            EXPECT_EQ(RecordedBus::instance().endPointCount(), 0);
        }
    }

    bool calcItOnTwoDays()
    {
        const std::vector<Record> bars = {dayBar(20240102, 16.0), dayBar(20240103, 17.0)};
        const Record code = security(1, "600536", 77);
        return call<bool, const void *, const void *, int, int, int, int>(constructed, 4, code.data(),
                                                                          bars.data(), 2, 4, 7, 8);
    }

    bool paintCombined() { return call<bool, void *>(constructed, 8, static_cast<Virtual *>(&painter)); }

    static constexpr std::size_t qobjectSize = 2 * sizeof(void *);
    alignas(std::max_align_t) std::array<unsigned char, 4096> memory;
    void *constructed = nullptr;
};

TEST_F(HandLaidHostConstructs, TheCombinedCostLine)
{
    construct(R"({"type":0})");
    EXPECT_EQ(call<int>(constructed, 2), 3);
    RecordedBus::instance().answerRequest = [](const RecordedBus::Message &) {
        return QByteArray(R"({"costprice":"12.5"})");
    };
    EXPECT_TRUE(calcItOnTwoDays());
    ASSERT_THAT(RecordedBus::instance().requests, SizeIs(1));
    EXPECT_EQ(RecordedBus::instance().requests[0].payload,
              "{\n    \"cmd\": \"HolderCostPrice\",\n    \"market\": \"SH\",\n    \"stkcode\": "
              "\"600536\"\n}\n");

    EXPECT_TRUE((call<bool>(constructed, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(constructed, 6, &untouched), 12.5);
    EXPECT_EQ(call<double>(constructed, 7, &untouched), 12.5);
    EXPECT_EQ(untouched, 42);

    EXPECT_TRUE(paintCombined());
    EXPECT_THAT(painter.calls,
                ElementsAre("line 0 12.500000 1.000000", "label 持仓成本:12.50 at 12.500000 -1", "endPaint"));
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 12.5 + 5.0)), 0);
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 12.5 + 5.5)), -1);
    for (int mouse = 11; mouse <= 14; ++mouse) {
        call<void>(constructed, mouse, 1.0, 1.0);
    }
    EXPECT_THAT(axis.calls, ElementsAre("xToBar", "priceToY", "xToBar", "priceToY"));
}

TEST_F(HandLaidHostConstructs, ACombinedOverlayWithoutAJob)
{
    construct("{}");
    EXPECT_EQ(call<int>(constructed, 2), 3);
    EXPECT_TRUE(calcItOnTwoDays());
    EXPECT_TRUE((call<bool>(constructed, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(constructed, 6, &untouched), DBL_MIN);
    EXPECT_EQ(call<double>(constructed, 7, &untouched), DBL_MAX);
    EXPECT_TRUE(paintCombined());
    EXPECT_THAT(painter.calls, ElementsAre("endPaint"));
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 15.0)), -1);
    EXPECT_THAT(RecordedBus::instance().sent, SizeIs(0));
    EXPECT_THAT(RecordedBus::instance().requests, SizeIs(0));
}

TEST_F(HandLaidHostConstructs, ACombinedOverlayThatGetsNoBars)
{
    construct(R"({"type":1})");
    const Record code = security(1, "600536", 77);
    const bool isTaken = call<bool, const void *, const void *, int, int, int, int>(
        constructed, 4, code.data(), nullptr, 0, 4, 7, 8);
    EXPECT_TRUE(isTaken);
    EXPECT_THAT(RecordedBus::instance().sent, SizeIs(0));
}

TEST_F(HandLaidHostConstructs, ACombinedOverlayThatItEndsInsideTheQuestionForTodaysTrades)
{
    construct(R"({"type":1})");
    EXPECT_TRUE(calcItOnTwoDays());
    RecordedBus::instance().answerRequest = [this](const RecordedBus::Message &) {
        call<void>(std::exchange(constructed, nullptr), 0);
        return QByteArray(R"({"data":[{"buy":true,"price":15.5,"vol":300}]})");
    };
    RecordedBus::instance().deliver("TradeNotify", R"({"stkcode":"600536"})");
    EXPECT_THAT(RecordedBus::instance().requests, SizeIs(1));
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 0);
}

TEST_F(HandLaidHostConstructs, TheCombinedTradeMarkers)
{
    construct(R"({"type":1})");
    EXPECT_TRUE(calcItOnTwoDays());
    ASSERT_THAT(RecordedBus::instance().sent, SizeIs(1));
    RecordedBus::instance().deliver(
        "TradeQuery",
        R"({"cmd":"HistoryTrade","stkcode":"600536","data":[{"buy":true,"price":15.5,"vol":300}]})");
    EXPECT_TRUE(calcItOnTwoDays());

    EXPECT_TRUE((call<bool>(constructed, 5, 1, 2)));
    int untouched = 42;
    EXPECT_EQ(call<double>(constructed, 6, &untouched), 17.0);
    EXPECT_EQ(call<double>(constructed, 7, &untouched), 14.0);

    EXPECT_TRUE(paintCombined());
    EXPECT_THAT(painter.calls,
                ElementsAre("markers 0 off 17.000000 0 1", "markers 0 off 17.000000 2 1",
                            "markers 0 off 17.000000 4 1", "markers 0 off 15.000000 1 0",
                            "markers 0 off 15.000000 3 0", "markers 0 off 15.000000 5 0", "endPaint"))
        << "the trade stands on the bar before";
    EXPECT_EQ((call<int>(constructed, 9, 0.0, 1000.0 - 15.0)), 0);
    EXPECT_EQ((call<int>(constructed, 9, 1.0, 1000.0 - 16.0)), -1);

    axis.calls.clear();
    axis.linesWithoutEnd = 1;
    for (int mouse = 10; mouse <= 14; ++mouse) {
        call<void>(constructed, mouse, 0.0, 1000.0 - 15.5);
    }
    EXPECT_THAT(axis.calls, ElementsAre("xToBar", "barAt 0", "priceToY", "popupMenu"));
    EXPECT_THAT(axis.popupLines, ElementsAre("买入\t00:00:00\t成交价:15.50\t成交量:300"));
    const auto *const object = reinterpret_cast<const QObject *>(memory.data());
    EXPECT_EQ(object->property("popupLineCount"), QVariant(1));
}

/// Terminals that load the file lay aside so much memory.
TEST_F(HandLaidHostConstructs, TheCombinedOverlayInAThousandAndTwentyFourBytes)
{
    construct(R"({"type":1})");
    EXPECT_TRUE(calcItOnTwoDays());
    const unsigned char *const end = memory.data() + memory.size();
    const unsigned char *const rest = end - memory.size() + 1024;
    EXPECT_EQ(std::find_if(rest, end, [](unsigned char byte) { return byte != 0xEE; }), end);
}

TEST_F(HandLaidHost, DrivesTheOrderPointsThroughTheirSlots)
{
    RecordedBus &bus = RecordedBus::instance();
    ASSERT_NE(create(R"({"type":2,"auto_refresh_time":600})"), nullptr);
    EXPECT_EQ(call<int>(overlay, 2), 3);
    EXPECT_TRUE((call<bool>(overlay, 5, 1, 2)));
    EXPECT_FALSE(calcIt(security(1, "600536", 79), 4));
    const Record code = security(1, "600536", 79);
    const std::vector<Record> bars = {minuteBar(571), minuteBar(572)};
    EXPECT_TRUE((call<bool, const void *, const void *, int, int, int, int>(overlay, 4, code.data(),
                                                                            bars.data(), 2, 21, 7, 8)));
    ASSERT_THAT(bus.sent, SizeIs(1));
    EXPECT_EQ(bus.sent[0].payload,
              R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"by-hand","stkcode":"600536"})");

    const QByteArray today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd")).toLatin1();
    bus.deliver(
        "TradeQuery",
        R"({"cmd":"EntrustTodayTrade","stkcode":"600536","data":[{"market":"1","bsflag2":"0B","orderstatus":"2","ordersno":"5","operdate":")" +
            today +
            R"(","opertime":"9320500","orderprice":"9.5","orderqty":"300"},{"market":"1","bsflag2":"0B","orderstatus":"2","operdate":")" +
            today + R"(","opertime":"9310000","orderprice":"15"}]})");
    EXPECT_THAT(axis.updated, ElementsAre(overlay));

    EXPECT_TRUE(paintIt());
    EXPECT_THAT(painter.calls, ElementsAre("marker 0 0 20 0 15.000000", "marker 0 1 20 1 10.000000"))
        << "the second is held at the bottom edge";
    EXPECT_EQ((call<int>(overlay, 9, 107.9, 1000.0 - 10.0 - 16.0)), 0);
    EXPECT_EQ((call<int>(overlay, 9, 108.0, 1000.0 - 10.0)), -1);

    axis.calls.clear();
    axis.chosenLine = 0;
    call<void>(overlay, 10, 100.0, 1000.0 - 10.0);
    const std::string text =
        "买入[NAME]\n状态:未成交\n编号:5\n委托时间:09:32:05\n委托价格:9.500\n委托数量:300\n委托日期:" +
        today.toStdString();
    EXPECT_THAT(axis.popupLines, ElementsAre(text));
    EXPECT_THAT(axis.calls, ElementsAre("barToX 0", "barToX 1", "visiblePriceRange", "priceToY", "popupMenu",
                                        "confirmBox 撤单?\n" + text));

    axis.calls.clear();
    for (int mouse = 11; mouse <= 14; ++mouse) {
        call<void>(overlay, mouse, 100.0, 1000.0 - 10.0);
    }
    EXPECT_THAT(axis.calls, IsEmpty());

    ASSERT_THAT(bus.sent, SizeIs(2));
    QByteArray answer = bus.sent[1].payload;
    EXPECT_TRUE(answer.startsWith(R"({"cmd":"EntrustCancel","market":"SH","objectId":"{)"));
    axis.calls.clear();
    bus.deliver("TradeQuery", answer.replace("{\"cmd\"", R"({"msg":"too late","cmd")"));
    EXPECT_THAT(axis.calls, ElementsAre("showMessage too late"));
}

class HandLaidHostEnds : public HandLaidHost, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(HandLaidHostEnds, AnOverlayThroughSlotsThreeAndOne)
{
    ASSERT_NE(create(GetParam()), nullptr);
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 1);
    EXPECT_TRUE(call<bool>(overlay, 3));
    call<void>(overlay, 1);
    overlay = nullptr;
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 0)
        << "the whole object is gone, its bus client with it";
}

INSTANTIATE_TEST_SUITE_P(Types, HandLaidHostEnds,
                         ::testing::Values(R"({"type":0})", R"({"type":1})", R"({"type":2})"));

TEST_F(HandLaidHost, GetsNullAndOneCriticalLineForAnUnknownType)
{
    const LogCapture log;
    EXPECT_EQ(create(R"({"type":3})"), nullptr);
    EXPECT_THAT(
        log.lines(QtCriticalMsg),
        ElementsAre(QStringLiteral("Unknown algorithmType in CreateChartObject(), algorithmType is : 3")));
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 0);
}

// The names by which a C++ compiler knows what a terminal may use of the library beside the factory. They
// stand here a second time, beside the list that the library is linked by: a name that is lost there would
// be missed by nobody else.

struct Word
{
    const char *symbol;
    const char *text;
};

const Word words[] = {
    {"_ZN10TradeChart5Topic11TRADENOTIFYE", "TradeNotify"},
    {"_ZN10TradeChart5Topic10TRADEQUERYE", "TradeQuery"},
    {"_ZN10TradeChart5Topic12ENTRUSTQUERYE", "EntrustQuery"},
    {"_ZN10TradeChart7CmdType12HISTORYTRADEE", "HistoryTrade"},
    {"_ZN10TradeChart7CmdType10TODAYTRADEE", "TodayTrade"},
    {"_ZN10TradeChart7CmdType15HOLDERCOSTPRICEE", "HolderCostPrice"},
    {"_ZN10TradeChart7CmdType17ENTRUSTTODAYTRADEE", "EntrustTodayTrade"},
    {"_ZN10TradeChart7CmdType19ENTRUSTHISTORYTRADEE", "EntrustHistoryTrade"},
    {"_ZN10TradeChart7CmdType13ENTRUSTCANCELE", "EntrustCancel"},
    {"_ZN10TradeChart14TradeKeyFields13ALGORITHMTYPEE", "type"},
    {"_ZN10TradeChart14TradeKeyFields15AUTOREFRESHTIMEE", "auto_refresh_time"},
    {"_ZN10TradeChart14TradeKeyFields5PARAME", "param"},
    {"_ZN10TradeChart14TradeKeyFields3CMDE", "cmd"},
    {"_ZN10TradeChart14TradeKeyFields8SCREENIDE", "screenId"},
    {"_ZN10TradeChart14TradeKeyFields7STKCODEE", "stkcode"},
    {"_ZN10TradeChart14TradeKeyFields4DATAE", "data"},
    {"_ZN10TradeChart14TradeKeyFields6MARKETE", "market"},
    {"_ZN10TradeChart14TradeKeyFields8OBJECTIDE", "objectId"},
    {"_ZN10TradeChart14TradeKeyFields5STARTE", "start"},
    {"_ZN10TradeChart14TradeKeyFields3ENDE", "end"},
    {"_ZN10TradeChart14TradeKeyFields3BUYE", "buy"},
    {"_ZN10TradeChart14TradeKeyFields4DATEE", "date"},
    {"_ZN10TradeChart14TradeKeyFields5PRICEE", "price"},
    {"_ZN10TradeChart14TradeKeyFields3VOLE", "vol"},
    {"_ZN10TradeChart14TradeKeyFields9COSTPRICEE", "costprice"},
    {"_ZN10TradeChart14TradeKeyFields7STKNAMEE", "stkname"},
    {"_ZN10TradeChart14TradeKeyFields9RTSBSFLAGE", "bsflag2"},
    {"_ZN10TradeChart14TradeKeyFields12RTSMATCHTIMEE", "matchtime"},
    {"_ZN10TradeChart14TradeKeyFields13RTSMATCHPRICEE", "matchprice"},
    {"_ZN10TradeChart14TradeKeyFields11RTSMATCHQTYE", "matchqty"},
    {"_ZN10TradeChart14TradeKeyFields11RTSMATCHAMTE", "matchamt"},
    {"_ZN10TradeChart14TradeKeyFields7RTSDATEE", "bizdate"},
    {"_ZN10TradeChart14TradeKeyFields10RTSORDERNOE", "ordersno"},
    {"_ZN10TradeChart14TradeKeyFields12RTSORDERDATEE", "orderdate"},
    {"_ZN10TradeChart14TradeKeyFields14RTSORDERSTATUSE", "orderstatus"},
    {"_ZN10TradeChart14TradeKeyFields12RTSCANCELQTYE", "cancelqty"},
    {"_ZN10TradeChart14TradeKeyFields13RTSCANCELFLAGE", "cancelflag"},
    {"_ZN10TradeChart14TradeKeyFields15RTSENTRUSTPRICEE", "orderprice"},
    {"_ZN10TradeChart14TradeKeyFields13RTSENTRUSTQTYE", "orderqty"},
    {"_ZN10TradeChart14TradeKeyFields9RTSFUNDIDE", "fundid"},
    {"_ZN10TradeChart14TradeKeyFields14RTSENTRUSTTIMEE", "opertime"},
    {"_ZN10TradeChart14TradeKeyFields14RTSENTRUSTDATEE", "operdate"},
    {"_ZN10TradeChart14TradeKeyFields7ERRCODEE", "errcode"},
    {"_ZN10TradeChart14TradeKeyFields7SUCCESSE", "success"},
    {"_ZN10TradeChart14TradeKeyFields3MSGE", "msg"},
    {"_ZN10TradeChart14TradeKeyFields5MSGOKE", "msgok "},
    {"_ZN10TradeChart6BSFlag3BUYE", "B"},
    {"_ZN10TradeChart6BSFlag4SELLE", "S"},
    {"_ZN10TradeChart11OrderStatus4NoneE", "0"},
    {"_ZN10TradeChart11OrderStatus7QuotingE", "1"},
    {"_ZN10TradeChart11OrderStatus6QuotedE", "2"},
    {"_ZN10TradeChart11OrderStatus20QuotedWaittingCancelE", "3"},
    {"_ZN10TradeChart11OrderStatus22PartDealWaittingCancelE", "4"},
    {"_ZN10TradeChart11OrderStatus12PartCanceledE", "5"},
    {"_ZN10TradeChart11OrderStatus8CanceledE", "6"},
    {"_ZN10TradeChart11OrderStatus8PartDealE", "7"},
    {"_ZN10TradeChart11OrderStatus6DealedE", "8"},
    {"_ZN10TradeChart11OrderStatus14AbolishedOrderE", "9"},
    {"_ZN10TradeChart11OrderStatus13WaittingQuoteE", "A"},
    {"_ZN10TradeChart11OrderStatus8QuotingBE", "B"},
    {"_ZN10TradeChart11OrderStatus9ConformedE", "G"},
};

TEST_F(HandLaidHost, FindsEveryWordOfTheVocabularyAsADataSymbol)
{
    for (const Word &word : words) {
        if (const QFunctionPointer symbol = find(word.symbol)) {
            const char *text = nullptr;
            std::memcpy(&text, reinterpret_cast<const void *>(symbol), sizeof text);
            EXPECT_STREQ(text, word.text) << word.symbol;
        }
    }
}

TEST_F(HandLaidHost, CallsTheHelpersOfTheVocabularyByName)
{
    const auto statusText =
        function<const char *(QString)>("_ZN10TradeChart11OrderStatus17getOrderStatusTxtE7QString");
    const auto marketId = function<QString(short)>("_ZN10TradeChart11getMarketIdEs");
    const auto today = function<std::int64_t()>("_ZN10TradeChart11currentDateEv");
    const auto rounded = function<double(double, unsigned int)>("_ZN10TradeChart5roundIdEET_S1_j");
    const auto side = function<QString(QString)>("_ZN10TradeChart8toBsFlagE7QString");
    ASSERT_TRUE(statusText && marketId && today && rounded && side);
    EXPECT_STREQ(statusText(QStringLiteral("a")), "待报");
    EXPECT_EQ(marketId(24), QStringLiteral("OIL"));
    EXPECT_GE(today(), 20240101);
    EXPECT_EQ(rounded(1.23456, 3), 1.235);
    EXPECT_EQ(side(QStringLiteral("0b")), QStringLiteral("B"));
}

/// A terminal that constructs an overlay of the factory by its constructor's name.
class HandLaidHostConstructsAlone : public HandLaidHostConstructs,
                                    public ::testing::WithParamInterface<const char *>
{
};

TEST_P(HandLaidHostConstructsAlone, AnOverlayOfTheFactory)
{
    constructBy<QJsonObject, QObject *>(GetParam(), {{QStringLiteral("auto_refresh_time"), 600}}, nullptr);
    ASSERT_NE(constructed, nullptr);
    EXPECT_EQ(call<int>(constructed, 2), 3);
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Classes, HandLaidHostConstructsAlone,
    ::testing::Values("_ZN12PositionCostC1ERN7Korvane10IChartAxisE11QJsonObjectP7QObject",
                      "_ZN7BSPointC1ERN7Korvane10IChartAxisE11QJsonObjectP7QObject",
                      "_ZN12EntrustPointC1ERN7Korvane10IChartAxisE11QJsonObjectP7QObject"));

} // namespace
