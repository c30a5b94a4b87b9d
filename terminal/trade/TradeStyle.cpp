#include "terminal/trade/TradeStyle.h"

namespace Terminal {

QString tradeStyleSheet(const ChartTheme &theme)
{
    return QStringLiteral(
               "QDockWidget { color: %3; }"
               "QDockWidget::title { background: %1; border-bottom: 1px solid %2; padding: 6px 12px; }"
               "QMainWindow::separator { background: %2; width: 1px; height: 1px; }"
               "QSplitter::handle { background: %2; }"
               "QTableView { color: %3; background: %6; border: none; selection-color: %3;"
               "  selection-background-color: %2; }"
               "QTableView:focus { border: 1px solid %4; }"
               "QTableView::item { border: none; padding: 0 8px; }"
               "QHeaderView { background: %1; }"
               "QHeaderView::section { color: %5; background: %1; border: none;"
               "  border-bottom: 1px solid %2; padding: 3px 8px; }"
               "#panelCaption { color: %3; background: %1; padding: 5px 8px; }"
               "#ticketTitle { color: %3; font-weight: bold; }"
               "#ticketCaption, #ticketAccount { color: %5; }"
               "#ticketAmount { color: %3; }"
               "#ticketProblem, #ticketNotice { color: %9; }"
               "#ticketResult { color: %5; } #ticketResult[tone=\"good\"] { color: %3; }"
               "#ticketResult[tone=\"bad\"] { color: %9; }"
               "Terminal--OrderTicket QPushButton { color: %3; background: %6; border: 1px solid %2;"
               "  border-radius: 4px; padding: 5px 8px; }"
               "Terminal--OrderTicket QPushButton:hover { border-color: %5; } Terminal--OrderTicket "
               "QPushButton:focus { border-color: %4; }"
               "Terminal--OrderTicket QPushButton:disabled { color: %5; }"
               "#buySide:checked, #sendOrder[side=\"buy\"]:enabled { color: white; background: %7;"
               "  border-color: %7; font-weight: bold; }"
               "#sellSide:checked, #sendOrder[side=\"sell\"]:enabled { color: white; background: %8;"
               "  border-color: %8; font-weight: bold; }"
               "#sendOrder { padding: 8px; } #sendOrder:focus { border: 2px solid %4; }")
        .arg(theme.surface.name(), theme.border.name(), theme.text.name(), theme.accent.name(),
             theme.mutedText.name(), theme.background.name(), theme.rise.name(), theme.fall.name(),
             theme.line.name());
}

} // namespace Terminal
