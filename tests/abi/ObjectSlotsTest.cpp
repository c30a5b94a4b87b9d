// Each operation of IChartObject stands in the slot where terminals in the field have it: called through its
// number, it reaches the operation of that name.
#include "tests/abi/Slot.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>

#include <new>
#include <string>

using ::testing::ElementsAre;

namespace {

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

} // namespace
