// Each operation of ChartInterface.h stands in the slot where terminals in the field have it: called
// through its number, it reaches the operation of that name. Likewise the bytes of the records.
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <new>
#include <string>

using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

template <class Function, class Object>
Function slot(Object &object, int number)
{
    void **table = nullptr;
    std::memcpy(&table, static_cast<void *>(&object), sizeof table);
    Function function = nullptr;
    std::memcpy(&function, table + number, sizeof function);
    return function;
}

class AxisSlots : public ::testing::Test
{
protected:
    template <class Result, class... Arguments>
    Result call(int number, Arguments... arguments)
    {
        return slot<Result (*)(Korvane::IChartAxis *, Arguments...)>(interface, number)(&interface,
                                                                                        arguments...);
    }

    FakeAxis axis;
    Korvane::IChartAxis &interface = axis;
};

TEST_F(AxisSlots, TwoIsTheChartMode)
{
    axis.mode = 2;
    EXPECT_EQ(call<int>(2), 2);
}

TEST_F(AxisSlots, ThreeIsTheVisiblePriceRange)
{
    axis.low = 3.5;
    axis.high = 4.5;
    double low = 0;
    double high = 0;
    const bool hasScale = call<bool, double &, double &>(3, low, high);
    EXPECT_TRUE(hasScale);
    EXPECT_EQ(low, 3.5);
    EXPECT_EQ(high, 4.5);
}

TEST_F(AxisSlots, FourIsTheScreenId)
{
    EXPECT_STREQ(call<const char *>(4), "screen-1");
}

TEST_F(AxisSlots, TwelveIsTheMarkerSize)
{
    EXPECT_EQ(call<double>(12), 16.0);
}

TEST_F(AxisSlots, ThirteenAsksForAnUpdate)
{
    auto *object = reinterpret_cast<Korvane::IChartObject *>(this);
    call<void>(13, object);
    EXPECT_THAT(axis.updated, ElementsAre(object));
}

TEST_F(AxisSlots, EighteenIsThePopup)
{
    const char *lines[] = {"one", nullptr};
    axis.onPopup = [] { return 7; };
    EXPECT_EQ((call<int, const char **, void *>(18, lines, nullptr)), 7);
    EXPECT_THAT(axis.popups, SizeIs(1));
}

TEST_F(AxisSlots, TwentyShowsAMessage)
{
    call<void>(20, "text");
    EXPECT_THAT(axis.messages, ElementsAre("text"));
}

TEST_F(AxisSlots, TwentyOneAsksAQuestion)
{
    axis.onConfirm = [] { return true; };
    EXPECT_TRUE(call<bool>(21, "sure?"));
    EXPECT_THAT(axis.questions, ElementsAre("sure?"));
}

TEST_F(AxisSlots, TwentyThreeIsTheXOfABar)
{
    EXPECT_EQ(call<double>(23, 4), 40.0);
}

TEST_F(AxisSlots, TwentyFourIsTheYOfAPrice)
{
    EXPECT_EQ(call<double>(24, 99.0, -1, -1), 10.0);
}

TEST_F(AxisSlots, TwentyFiveIsTheBarUnderAnX)
{
    EXPECT_EQ(call<int>(25, 40.0), 4);
}

TEST_F(AxisSlots, TwentySixCopiesABar)
{
    axis.bars = {makeDayBar(20240102), makeDayBar(20240103)};
    Korvane::AnalyData bar{};
    call<void, int, Korvane::AnalyData &>(26, 1, bar);
    EXPECT_EQ(bar.time, 20240103U);
}

class PainterSlots : public ::testing::Test
{
protected:
    PainterSlots() { painter.barCount = 2; }

    template <class... Arguments>
    FakePainter::Call call(int number, Arguments... arguments)
    {
        slot<void (*)(Korvane::IChartPainter *, Arguments...)>(interface, number)(&interface, arguments...);
        return painter.calls.back();
    }

    const double values[2] = {1.0, 2.0};
    FakePainter painter;
    Korvane::IChartPainter &interface = painter;
};

TEST_F(PainterSlots, FourEndsThePaint)
{
    EXPECT_EQ(call(4).kind, FakePainter::Call::EndPaint);
}

TEST_F(PainterSlots, EightDrawsALabel)
{
    const auto drawn = call<const double *, const char *, int>(8, values, "text", -1);
    EXPECT_EQ(drawn.kind, FakePainter::Call::SeriesLabel);
    EXPECT_EQ(drawn.text, "text");
    EXPECT_THAT(drawn.ints, ElementsAre(-1));
}

TEST_F(PainterSlots, ThirteenDrawsALine)
{
    const auto drawn = call<int, const double *, double>(13, 0, values, 1.5);
    EXPECT_EQ(drawn.kind, FakePainter::Call::LineSeries);
    EXPECT_THAT(drawn.values, ElementsAre(1.0, 2.0));
    EXPECT_EQ(drawn.number, 1.5);
}

TEST_F(PainterSlots, ThirtyFiveDrawsASeriesOfMarkers)
{
    const auto drawn = call<int, const double *, const double *, int, int>(35, 0, values, values, 4, 1);
    EXPECT_EQ(drawn.kind, FakePainter::Call::MarkerSeries);
    EXPECT_THAT(drawn.ints, ElementsAre(0, 4, 1));
}

TEST_F(PainterSlots, ThirtySixDrawsOneMarker)
{
    const auto drawn = call<int, int, int, int, double>(36, 0, 5, 21, 1, 12.5);
    EXPECT_EQ(drawn.kind, FakePainter::Call::Marker);
    EXPECT_THAT(drawn.ints, ElementsAre(0, 5, 21, 1));
    EXPECT_EQ(drawn.number, 12.5);
}

/// An overlay that tells which of its operations was reached.
class NamedObject final : public Korvane::IChartObject
{
public:
    explicit NamedObject(int &destroyed) : m_destroyed(destroyed) {}
    ~NamedObject() override { ++m_destroyed; }

    int type() const override { return 41; }
    bool deleteObject() override { return note("deleteObject"); }
    bool calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *, int count,
                Korvane::Period period, int a, int b) override
    {
        ints = {code.market, count, period, a, b};
        return note("calcIt");
    }
    bool calcRatio(int one, int two) override
    {
        ints = {one, two};
        return note("calcRatio");
    }
    double maximizeValue(int &) override { return 6.0; }
    double minimizeValue(int &) override { return 7.0; }
    bool paintIt(Korvane::IChartPainter &) override { return note("paintIt"); }
    int hitTest(double x, double y) override { return x < y ? 0 : -1; }
    void handleMousePress(double x, double y) override { noteMouse("press", x, y); }
    void handleMousePressR(double x, double y) override { noteMouse("pressR", x, y); }
    void handleMouseRelease(double x, double y) override { noteMouse("release", x, y); }
    void handleMouseReleaseR(double x, double y) override { noteMouse("releaseR", x, y); }
    void handleMouseMove(double x, double y) override { noteMouse("move", x, y); }

    std::string called;
    std::vector<int> ints;

private:
    bool note(const char *name)
    {
        called = name;
        return true;
    }
    void noteMouse(const char *name, double x, double y)
    {
        ints = {static_cast<int>(x), static_cast<int>(y)};
        note(name);
    }

    int &m_destroyed;
};

class ObjectSlots : public ::testing::Test
{
protected:
    template <class Result, class... Arguments>
    Result call(int number, Arguments... arguments)
    {
        return slot<Result (*)(Korvane::IChartObject *, Arguments...)>(interface, number)(&interface,
                                                                                          arguments...);
    }

    int destroyed = 0;
    NamedObject object{destroyed};
    Korvane::IChartObject &interface = object;
};

TEST_F(ObjectSlots, ZeroDestroysTheCompleteObject)
{
    alignas(NamedObject) unsigned char memory[sizeof(NamedObject)];
    Korvane::IChartObject *placed = new (memory) NamedObject(destroyed);
    slot<void (*)(Korvane::IChartObject *)>(*placed, 0)(placed);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ObjectSlots, OneDestroysAndFreesTheObject)
{
    Korvane::IChartObject *made = new NamedObject(destroyed);
    slot<void (*)(Korvane::IChartObject *)>(*made, 1)(made);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ObjectSlots, TwoIsTheType)
{
    EXPECT_EQ(call<int>(2), 41);
}

TEST_F(ObjectSlots, ThreeEndsTheObject)
{
    EXPECT_TRUE(call<bool>(3));
    EXPECT_EQ(object.called, "deleteObject");
}

TEST_F(ObjectSlots, FourHandsBarsOver)
{
    const auto security = makeSecurity(5, "X", 1);
    const bool answer =
        call<bool, const Korvane::tagCodeWithName &, const Korvane::AnalyData *, int, int, int, int>(
            4, security, nullptr, 2, 4, 7, 8);
    EXPECT_TRUE(answer);
    EXPECT_EQ(object.called, "calcIt");
    EXPECT_THAT(object.ints, ElementsAre(5, 2, 4, 7, 8));
}

TEST_F(ObjectSlots, FiveIsTheScalingHook)
{
    EXPECT_TRUE((call<bool, int, int>(5, 1, 2)));
    EXPECT_EQ(object.called, "calcRatio");
    EXPECT_THAT(object.ints, ElementsAre(1, 2));
}

TEST_F(ObjectSlots, SixAndSevenAreTheHighestAndTheLowestValue)
{
    int value = 0;
    EXPECT_EQ((call<double, int &>(6, value)), 6.0);
    EXPECT_EQ((call<double, int &>(7, value)), 7.0);
}

TEST_F(ObjectSlots, EightPaints)
{
    FakePainter painter;
    EXPECT_TRUE((call<bool, Korvane::IChartPainter &>(8, painter)));
    EXPECT_EQ(object.called, "paintIt");
}

TEST_F(ObjectSlots, NineIsTheHitTest)
{
    EXPECT_EQ((call<int, double, double>(9, 1.0, 2.0)), 0);
    EXPECT_EQ((call<int, double, double>(9, 2.0, 1.0)), -1);
}

TEST_F(ObjectSlots, TenToFourteenAreTheMouse)
{
    const char *const operations[] = {"press", "pressR", "release", "releaseR", "move"};
    for (int operation = 0; operation < 5; ++operation) {
        call<void, double, double>(10 + operation, 3.0, 4.0);
        EXPECT_EQ(object.called, operations[operation]);
        EXPECT_THAT(object.ints, ElementsAre(3, 4));
    }
}

/// Reads a record out of bytes that carry `value` at one place and nonsense elsewhere.
template <class Record, class Value>
Record recordWith(std::size_t byte, Value value)
{
    unsigned char bytes[80];
    std::memset(bytes, 0xEE, sizeof bytes);
    std::memcpy(bytes + byte, &value, sizeof value);
    Record record;
    static_assert(sizeof record == sizeof bytes, "records are 80 bytes");
    std::memcpy(&record, bytes, sizeof record);
    return record;
}

TEST(Records, HoldABarAtItsPlaces)
{
    EXPECT_EQ(recordWith<Korvane::AnalyData>(0, std::uint32_t{20240102}).time, 20240102U);
    EXPECT_EQ(recordWith<Korvane::AnalyData>(16, 1.5).high, 1.5);
    EXPECT_EQ(recordWith<Korvane::AnalyData>(24, 2.5).low, 2.5);
    EXPECT_EQ(recordWith<Korvane::AnalyData>(32, 3.5).close, 3.5);
}

TEST(Records, HoldASecurityAtItsPlaces)
{
    EXPECT_EQ(recordWith<Korvane::tagCodeWithName>(0, std::int8_t{-1}).market, -1);
    EXPECT_STREQ(recordWith<Korvane::tagCodeWithName>(1, std::array<char, 3>{'6', '0', '\0'}).code, "60");
    EXPECT_EQ(recordWith<Korvane::tagCodeWithName>(40, std::int64_t{77}).identity, 77);
    EXPECT_STREQ(recordWith<Korvane::tagCodeWithName>(48, std::array<char, 3>{'a', 'b', '\0'}).name, "ab");
}

} // namespace
