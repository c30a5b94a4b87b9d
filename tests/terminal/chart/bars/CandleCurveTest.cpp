// Candles in both themes.
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

class CandleCurveInTheme : public OverlayWindow, public ::testing::WithParamInterface<ThemeKind>
{
};

TEST_P(CandleCurveInTheme, DrawsCandlesInBothColours)
{
    show({}, ChartPeriod::Day, GetParam());
    const QImage picture = canvasPicture();
    int rising = 0;
    int falling = 0;
    for (int x = 0; x < picture.width(); ++x) {
        rising += rowsOfColour(picture, x, chart()->theme().rise).empty() ? 0 : 1;
        falling += rowsOfColour(picture, x, chart()->theme().fall).empty() ? 0 : 1;
    }
    EXPECT_GT(rising, 100);
    EXPECT_GT(falling, 100);
}

INSTANTIATE_TEST_SUITE_P(Themes, CandleCurveInTheme, ::testing::Values(ThemeKind::Dark, ThemeKind::Light));

} // namespace
} // namespace Terminal
