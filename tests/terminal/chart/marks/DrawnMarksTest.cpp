#include "terminal/chart/marks/DrawnMarks.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const GlyphNumber trade = seriesGlyph(Korvane::BuyAbove);
const GlyphNumber order = orderGlyph(Korvane::BuyWaiting, EdgeClamp::None);

DrawnMark markAt(const QPointF &middle, GlyphNumber number)
{
    QRectF box(QPointF(), glyph(number).size(1));
    box.moveCenter(middle);
    return {number, 1, box, {}};
}

/// One that stands for marks at these places.
const DrawnMark &add(DrawnMarks *marks, DrawnMark mark, const std::vector<QPointF> &places)
{
    for (const QPointF &place : places) {
        marks->addPlace(&mark, place);
    }
    marks->add(mark);
    return marks->all().back();
}

TEST(DrawnMarks, FindTheUppermostOfTwo)
{
    DrawnMarks marks;
    marks.add(markAt({100, 100}, order));
    marks.add(markAt({102, 100}, order));

    ASSERT_NE(marks.markAt({101, 100}), nullptr);
    EXPECT_EQ(marks.markAt({101, 100}), &marks.all().back());
}

TEST(DrawnMarks, FindNothingBesideTheOutlineOfAGlyph)
{
    DrawnMarks marks;
    marks.add(markAt({100, 100}, order));
    const QRectF box = marks.all().front().box;

    EXPECT_EQ(marks.markAt(box.bottomLeft() + QPointF(0.5, -0.5)), nullptr) << "a corner of its box";
    EXPECT_EQ(marks.markAt({300, 100}), nullptr);
    EXPECT_FALSE(marks.targetAt({300, 100}));
}

TEST(DrawnMarks, TellTheOverlayThePlaceOfTheNearestMarkBehindAGlyph)
{
    DrawnMarks marks;
    add(&marks, markAt({100, 100}, trade), {{96, 100}, {104, 100}});

    EXPECT_EQ(marks.targetAt({99, 100}), QPointF(96, 100));
    EXPECT_EQ(marks.targetAt({101, 100}), QPointF(104, 100));
}

TEST(DrawnMarks, LookAlongTheBarsBeforeTheyLookAtPrices)
{
    DrawnMarks marks;
    const DrawnMark merged = add(&marks, markAt({100, 100}, trade), {{99, 300}, {103, 100}});

    EXPECT_EQ(marks.targetNear(merged, {100, 100}), QPointF(99, 300));
}

TEST(DrawnMarks, TellThePlaceOfAnOrderWhereNoEarlierBarIsCaught)
{
    DrawnMarks marks;
    const DrawnMark alone = add(&marks, markAt({100, 100}, order), {{100, 100}});

    const QPointF target = marks.targetNear(alone, {93, 100});

    EXPECT_GT(target.x(), 100) << "an overlay takes the first bar within half a glyph, from the left";
    EXPECT_LT(target.x(), 100 + orderGlyphSize / 2);
    EXPECT_DOUBLE_EQ(target.y(), 100);
}

TEST(DrawnMarks, AreGoneWhenCleared)
{
    DrawnMarks marks;
    marks.add(markAt({100, 100}, order));
    marks.clear();

    EXPECT_EQ(marks.markAt({100, 100}), nullptr);
}

} // namespace
} // namespace Terminal
