#include "terminal/chart/theme/ChartTheme.h"

#include <utility>

namespace Terminal {

namespace {

ChartTheme darkTheme()
{
    ChartTheme theme;
    theme.kind = ThemeKind::Dark;
    theme.background = QColor(0x131722);
    theme.surface = QColor(0x1b202d);
    theme.grid = QColor(0x222838);
    theme.border = QColor(0x2c3347);
    theme.text = QColor(0xd7dbe4);
    theme.mutedText = QColor(0x8b93a7);
    theme.rise = QColor(0xf0625a);
    theme.fall = QColor(0x1aa279);
    theme.both = QColor(0xa078f0);
    theme.crosshair = QColor(0x8b93a7);
    theme.tag = QColor(0x3c465f);
    theme.tagText = QColor(0xf2f4f8);
    theme.line = QColor(0xf0a83c);
    theme.lineText = QColor(0x1a1408);
    theme.accent = QColor(0x4c8dff);
    theme.fillText = QColor(0x0b0e14);
    return theme;
}

ChartTheme lightTheme()
{
    ChartTheme theme;
    theme.kind = ThemeKind::Light;
    theme.background = QColor(0xffffff);
    theme.surface = QColor(0xf5f6f9);
    theme.grid = QColor(0xeceff4);
    theme.border = QColor(0xd9dde6);
    theme.text = QColor(0x1d2433);
    theme.mutedText = QColor(0x5f697b);
    theme.rise = QColor(0xcb2d24);
    theme.fall = QColor(0x0b7a57);
    theme.both = QColor(0x7447d1);
    theme.crosshair = QColor(0x5f697b);
    theme.tag = QColor(0x3d475c);
    theme.tagText = QColor(0xffffff);
    theme.line = QColor(0x9c5d00);
    theme.lineText = QColor(0xffffff);
    theme.accent = QColor(0x1b66dd);
    theme.fillText = QColor(0xffffff);
    return theme;
}

} // namespace

ChartTheme makeTheme(ThemeKind kind, RiseColour rise)
{
    ChartTheme theme = kind == ThemeKind::Dark ? darkTheme() : lightTheme();
    if (rise == RiseColour::Green) {
        std::swap(theme.rise, theme.fall);
    }
    return theme;
}

QPalette widgetPalette(const ChartTheme &theme)
{
    QPalette palette(theme.text, theme.surface);
    palette.setColor(QPalette::Window, theme.surface);
    palette.setColor(QPalette::Base, theme.background);
    palette.setColor(QPalette::Button, theme.surface);
    palette.setColor(QPalette::WindowText, theme.text);
    palette.setColor(QPalette::Text, theme.text);
    palette.setColor(QPalette::ButtonText, theme.text);
    palette.setColor(QPalette::Highlight, theme.accent);
    palette.setColor(QPalette::HighlightedText, theme.fillText);
    palette.setColor(QPalette::ToolTipBase, theme.surface);
    palette.setColor(QPalette::ToolTipText, theme.text);
    palette.setColor(QPalette::PlaceholderText, theme.mutedText);
    palette.setColor(QPalette::Mid, theme.border);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, theme.mutedText);
    }
    return palette;
}

QPalette checkBoxPalette(const ChartTheme &theme)
{
    constexpr int frameDarker = 140; // percent: the style makes the frame so much darker than the window
    QPalette palette = widgetPalette(theme);
    palette.setColor(QPalette::Window, theme.mutedText.lighter(frameDarker));
    return palette;
}

QString windowStyleSheet(const ChartTheme &theme)
{
    return QStringLiteral(
               "QMainWindow { background: %1; }"
               "QToolBar { background: %1; border: none; border-bottom: 1px solid %2; spacing: 4px; padding: "
               "3px; }"
               "QToolBar::separator { background: %2; width: 1px; margin: 5px 6px; }"
               "QToolButton, QComboBox { color: %3; background: transparent; border: 1px solid transparent;"
               "  border-radius: 4px; padding: 3px 7px; }"
               "QComboBox { border-color: %2; min-width: 8em; }"
               "QComboBox#shortChoice { min-width: 3.5em; }"
               "QComboBox QLineEdit { color: %3; background: transparent; border: none; padding: 0; }"
               "QToolBar QLabel { color: %5; padding: 0 8px; }"
               "QToolButton:hover, QComboBox:hover { background: %2; }"
               "QToolButton:checked { color: %6; background: %4; }"
               "QToolButton:focus, QComboBox:focus { border-color: %3; }"
               "QToolBarExtension { background: %4; border-radius: 4px; }"
               "QSlider::groove:horizontal { background: %5; height: 4px; border-radius: 2px; }"
               "QSlider::handle:horizontal { background: %3; width: 10px; margin: -6px 0; border-radius: "
               "5px; }"
               "QSlider::handle:horizontal:disabled { background: %5; }"
               "QSlider::handle:horizontal:focus { border: 2px solid %4; }"
               "QToolButton:disabled { color: %5; } QToolButton:checked:disabled { background: %2; }"
               "QMenu { color: %3; background: %1; border: 1px solid %2; padding: 4px; }"
               "QMenu::item { padding: 5px 18px; border-radius: 3px; }"
               "QMenu::item:selected { color: %6; background: %4; } QMenu::item:disabled { color: %5; }"
               "QDialog QPushButton { color: %3; background: %2; border: 1px solid %2; border-radius: 4px;"
               "  padding: 5px 14px; min-width: 4em; }"
               "QDialog QPushButton:hover { border-color: %5; }"
               "QDialog QPushButton:focus { border: 2px solid %4; padding: 4px 13px; outline: none; }"
               "QDialog QPushButton:disabled { color: %5; background: %1; }"
               "#practiceStrip { color: %3; background: %1; border: 2px solid %3; padding: 3px 8px; "
               "font-weight: bold; }"
               "#stateStrip { background: %1; border-top: 1px solid %2; }"
               "#stateStrip::item { border: none; }"
               "#stateStrip QLabel { color: %5; padding: 1px 8px; }"
               "#stateStrip QLabel[trouble=\"true\"] { color: %3; font-weight: bold; }"
               "#messageBar { color: %3; background: %1; border: 1px solid %4; border-radius: 4px; }")
        .arg(theme.surface.name(), theme.border.name(), theme.text.name(), theme.accent.name(),
             theme.mutedText.name(), theme.fillText.name());
}

} // namespace Terminal
