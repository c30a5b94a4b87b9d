#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

namespace Terminal {

enum class ThemeKind { Light, Dark };

/// Which colour rises and buys; the other one falls and sells.
enum class RiseColour { Red, Green };

/// The colours of the terminal.
struct ChartTheme
{
    ThemeKind kind = ThemeKind::Dark;
    QColor background; ///< of the chart
    QColor surface;    ///< of bars and panels around it
    QColor grid;
    QColor border;
    QColor text;
    QColor mutedText; ///< axes and captions
    QColor rise;      ///< rising bars and buys
    QColor fall;      ///< falling bars and sells
    QColor both;      ///< marks of days with buys and sells
    QColor crosshair;
    QColor tag; ///< read-out tags on the axes
    QColor tagText;
    QColor line; ///< line series of overlays
    QColor lineText;
    QColor accent;   ///< what is chosen or has the focus
    QColor fillText; ///< on what is filled with the colour of a side, of both, or of what is chosen
};

ChartTheme makeTheme(ThemeKind kind, RiseColour rise);

/// The colours of widgets that go with the chart.
QPalette widgetPalette(const ChartTheme &theme);

/// The same for check boxes, which would have hardly a frame on a dark window.
QPalette checkBoxPalette(const ChartTheme &theme);

/// The style sheet of the terminal's window.
QString windowStyleSheet(const ChartTheme &theme);

} // namespace Terminal
