#include "terminal/chart/theme/ChartTheme.h"
#include "tests/terminal/support/Contrast.h"

#include <gtest/gtest.h>

namespace Terminal {
namespace {

struct ThemeColours
{
    ThemeKind kind;
    RiseColour rise;
};

class ChartThemeIn : public ::testing::TestWithParam<ThemeColours>
{
protected:
    const ChartTheme m_theme = makeTheme(GetParam().kind, GetParam().rise);
};

TEST_P(ChartThemeIn, HasReadableTextOnEveryGround)
{
    constexpr double readable = 4.5;
    for (const QColor &ground : {m_theme.background, m_theme.surface, m_theme.grid}) {
        for (const QColor &text :
             {m_theme.text, m_theme.mutedText, m_theme.rise, m_theme.fall, m_theme.line}) {
            EXPECT_GE(contrast(text, ground), readable)
                << text.name().toStdString() << " on " << ground.name().toStdString();
        }
    }
    EXPECT_GE(contrast(m_theme.tagText, m_theme.tag), readable);
    EXPECT_GE(contrast(m_theme.lineText, m_theme.line), readable);
    for (const QColor &fill : {m_theme.rise, m_theme.fall, m_theme.both, m_theme.accent}) {
        EXPECT_GE(contrast(m_theme.fillText, fill), readable) << fill.name().toStdString();
    }
}

TEST_P(ChartThemeIn, HasMarksThatStandOut)
{
    constexpr double seen = 3;
    for (const QColor &mark : {m_theme.rise, m_theme.fall, m_theme.both, m_theme.line, m_theme.crosshair}) {
        EXPECT_GE(contrast(mark, m_theme.background), seen) << mark.name().toStdString();
    }
    for (const QColor &ground : {m_theme.background, m_theme.surface}) {
        EXPECT_GE(contrast(m_theme.accent, ground), seen) << "what has the focus";
    }
}

TEST_P(ChartThemeIn, HasAPaletteForWidgetsThatCanBeRead)
{
    const QPalette palette = widgetPalette(m_theme);
    const struct
    {
        QPalette::ColorRole text;
        QPalette::ColorRole ground;
    } pairs[] = {{QPalette::WindowText, QPalette::Window},
                 {QPalette::Text, QPalette::Base},
                 {QPalette::ButtonText, QPalette::Button},
                 {QPalette::HighlightedText, QPalette::Highlight},
                 {QPalette::ToolTipText, QPalette::ToolTipBase}};
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto &pair : pairs) {
            EXPECT_GE(contrast(palette.color(group, pair.text), palette.color(group, pair.ground)), 4.5)
                << "group " << group << " role " << pair.text;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Looks, ChartThemeIn,
                         ::testing::Values(ThemeColours{ThemeKind::Dark, RiseColour::Red},
                                           ThemeColours{ThemeKind::Dark, RiseColour::Green},
                                           ThemeColours{ThemeKind::Light, RiseColour::Red},
                                           ThemeColours{ThemeKind::Light, RiseColour::Green}));

} // namespace
} // namespace Terminal
