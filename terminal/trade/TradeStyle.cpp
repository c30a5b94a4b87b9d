#include "terminal/trade/TradeStyle.h"

namespace Terminal {

namespace {

/// Of the buttons in the colour of a side, whose focus is a frame in the colour of text.
QString sideStyleSheet(const ChartTheme &theme)
{
    return QStringLiteral("#buySide:checked, #sendOrder[side=\"buy\"]:enabled { color: %3; background: %1;"
                          "  border-color: %1; font-weight: bold; }"
                          "#sellSide:checked, #sendOrder[side=\"sell\"]:enabled { color: %3; background: %2;"
                          "  border-color: %2; font-weight: bold; }"
                          "#buySide:focus, #sellSide:focus, #sendOrder:focus { border: 2px solid %4; }"
                          "#sendOrder:focus { padding: 7px; }")
        .arg(theme.rise.name(), theme.fall.name(), theme.fillText.name(), theme.text.name());
}

} // namespace

QString tradeStyleSheet(const ChartTheme &theme)
{
    return QStringLiteral(
               "QDockWidget { color: %3; }"
               "QDockWidget::title { background: %1; border-bottom: 1px solid %2; padding: 3px 12px; }"
               "QMainWindow::separator { background: %2; width: 1px; height: 1px; }"
               "QSplitter::handle { background: %2; }"
               "QTableView { color: %3; background: %6; border: none; selection-color: %3;"
               "  selection-background-color: %8; }"
               "QTableView:focus { border: 1px solid %4; }"
               "QTableView::item { border: none; padding: 0 8px; }"
               "QTableView::item:selected { border-top: 1px solid %4; border-bottom: 1px solid %4; }"
               "QHeaderView { background: %1; }"
               "QHeaderView::section { color: %5; background: %1; border: none;"
               "  border-bottom: 1px solid %2; padding: 3px 8px; }"
               "#panelCaption { color: %3; background: %1; padding: 5px 8px; }"
               "Terminal--OrdersBar#panelCaption { padding: 0; } #ordersCaption { color: %3; }"
               "QTabBar::tab { color: %5; background: %1; border: none; padding: 4px 12px; }"
               "QTabBar::tab:selected { color: %3; border-bottom: 2px solid %4; }"
               "QTabBar::tab:focus { color: %3; background: %2; }"
               "QPushButton[small=\"true\"], QComboBox[small=\"true\"] { color: %3; background: %6;"
               "  border: 1px solid %2; border-radius: 4px; padding: 2px 8px; }"
               "QComboBox[small=\"true\"] { background: transparent; }" // or the style shades its arrow
               "QPushButton[small=\"true\"]:focus, QComboBox[small=\"true\"]:focus { border-color: %3; }"
               "QPushButton[small=\"true\"]:disabled, QComboBox[small=\"true\"]:disabled { color: %5; }"
               "#ticketTitle { color: %3; font-weight: bold; }"
               "#ticketCaption, #ticketAccount { color: %5; }"
               "#ticketAmount { color: %3; }"
               "#ticketProblem, #ticketNotice { color: %7; }"
               "#ticketResult { color: %5; } #ticketResult[tone=\"good\"] { color: %3; }"
               "#ticketResult[tone=\"bad\"] { color: %7; }"
               "Terminal--OrderTicket QPushButton { color: %3; background: %6; border: 1px solid %2;"
               "  border-radius: 4px; padding: 5px 8px; }"
               "Terminal--OrderTicket QPushButton:hover { border-color: %5; } Terminal--OrderTicket "
               "QPushButton:focus { border: 2px solid %3; padding: 4px 7px; }"
               "Terminal--OrderTicket QPushButton:disabled { color: %5; }"
               "#sendOrder { padding: 8px; }")
               .arg(theme.surface.name(), theme.border.name(), theme.text.name(), theme.accent.name(),
                    theme.mutedText.name(), theme.background.name(), theme.line.name(), theme.grid.name()) +
           sideStyleSheet(theme);
}

} // namespace Terminal
