#include "terminal/trade/OrderPlaces.h"

#include "terminal/chart/view/ChartView.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int firstMinute = 9 * 60 + 31;

/// Five minutes of a day between the prices 9 and 11, with marks as an overlay would have drawn them.
class OrderPlacesTest : public ::testing::Test
{
protected:
    OrderPlacesTest()
    {
        Bars bars;
        for (int i = 0; i < 5; ++i) {
            bars.push_back({20240105, firstMinute + i, 10, 11, 9, 10, 1000});
        }
        m_chart.resize(1000, 600);
        m_chart.setData({{QStringLiteral("600519"), Market::Shanghai, {}}, ChartPeriod::Minute, bars});
        m_chart.show();
        m_chart.grab();
    }

    static OrderRecord order(int minuteOfDay, double price, const char *number = "1")
    {
        OrderRecord record;
        record.number = QLatin1String(number);
        record.time = Trading::ClockTime::of(minuteOfDay / 60, minuteOfDay % 60).value();
        record.price = price;
        return record;
    }

    /// One that hangs from its price, or stands on it.
    void addMark(int bar, double price, bool stands = false)
    {
        const ChartGeometry &geometry = m_chart.chartGeometry();
        const QPointF place(geometry.barToX(bar),
                            geometry.priceToY(price) + (stands ? -orderGlyphSize : orderGlyphSize) / 2);
        QRectF box(0, 0, orderGlyphSize, orderGlyphSize);
        box.moveCenter(place);
        DrawnMark mark{orderGlyph(Korvane::BuyWaiting, EdgeClamp::None), 1, box, {}};
        m_marks.addPlace(&mark, place);
        m_marks.add(mark);
    }

    const DrawnMark *mark(size_t number) const { return &m_marks.all()[number]; }

    ChartView m_chart;
    DrawnMarks m_marks;
    OrderPlaces m_places{m_chart, m_marks};
};

TEST_F(OrderPlacesTest, FindTheMarkAtTheMinuteAndPriceOfAnOrder)
{
    addMark(1, 10);
    addMark(3, 10);
    addMark(3, 9.5);

    EXPECT_EQ(m_places.markOf(order(firstMinute + 1, 10)), mark(0));
    EXPECT_EQ(m_places.markOf(order(firstMinute + 3, 10)), mark(1));
    EXPECT_EQ(m_places.markOf(order(firstMinute + 3, 9.5)), mark(2));
}

TEST_F(OrderPlacesTest, FindNoneForAnOrderThatIsNotMarked)
{
    addMark(1, 10);

    EXPECT_EQ(m_places.markOf(order(firstMinute + 1, 9.5)), nullptr);
    EXPECT_EQ(m_places.markOf(order(firstMinute + 4, 10)), nullptr);
}

TEST_F(OrderPlacesTest, TakeAnOrderOfClosedHoursForOneOfTheNextBar)
{
    addMark(0, 10);
    addMark(4, 10);

    EXPECT_EQ(m_places.markOf(order(9 * 60, 10)), mark(0));
    EXPECT_EQ(m_places.markOf(order(16 * 60, 10)), mark(1)) << "there is no later one";
}

TEST_F(OrderPlacesTest, LookAtTheEdgeForAPriceBelowTheScale)
{
    addMark(2, m_chart.chartGeometry().lowPrice, true);

    EXPECT_EQ(m_places.markOf(order(firstMinute + 2, 1)), mark(0));
}

TEST_F(OrderPlacesTest, ListTheOrdersOfTheMarkAtAPixel)
{
    addMark(1, 10);
    addMark(3, 10);
    const OrderRecords orders{order(firstMinute + 1, 10, "1"), order(firstMinute + 3, 10, "2"),
                              order(firstMinute + 1, 10, "3")};

    std::vector<std::string> numbers;
    for (const OrderRecord &found : m_places.ordersAt(mark(0)->box.center(), orders)) {
        numbers.push_back(found.number.toStdString());
    }

    EXPECT_THAT(numbers, ElementsAre("1", "3"));
    EXPECT_THAT(m_places.ordersAt({-10, -10}, orders), IsEmpty());
}

TEST_F(OrderPlacesTest, FindNothingOnAChartWithoutBars)
{
    ChartView empty;
    addMark(0, 10);

    EXPECT_EQ(OrderPlaces(empty, m_marks).markOf(order(firstMinute, 10)), nullptr);
}

} // namespace
} // namespace Terminal
