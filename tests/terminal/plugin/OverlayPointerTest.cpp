// What the mouse does with overlays.
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QMenu>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class PointerOnOverlays : public OverlayWindow
{
};

TEST_F(PointerOnOverlays, LetsTheCursorPointWithinFivePixelsOfTheCostLine)
{
    show({QStringLiteral("cost")});
    const double y = geometry().priceToY(costPrice());
    for (const double offset : {-4.0, 0.0, 4.0}) {
        moveTo({300, y + offset});
        EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::PointingHandCursor; })) << offset;
    }
    for (const double offset : {-8.0, 8.0}) {
        moveTo({300, y + offset});
        EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::CrossCursor; })) << offset;
    }
}

TEST_F(PointerOnOverlays, ShowsAMarkAsClickable)
{
    show({QStringLiteral("trades")});
    moveTo(onMark(lastMarkedBar()));
    EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::PointingHandCursor; }));
}

TEST_F(PointerOnOverlays, PassesTheRightButtonOn)
{
    show({QStringLiteral("cost")});
    click({300, geometry().priceToY(costPrice())}, Qt::RightButton);
    EXPECT_THAT(overlayLog(), HasSubstr("right press"));
}

} // namespace
} // namespace Terminal
