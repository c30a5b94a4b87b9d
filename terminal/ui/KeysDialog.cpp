#include "terminal/ui/KeysDialog.h"

#include "terminal/data/ChartPeriod.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

/// A row of the table; without keys the title of a part of it, without an act the periods of charts.
struct KeyRow
{
    const char *keys;
    const char *act;
};

constexpr KeyRow keyRows[] = {
    {"", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "The window")},
    {"0–9, A–Z, Ctrl+L",
     QT_TRANSLATE_NOOP("Terminal::KeysDialog",
                       "look for a security by code, name or the first letters of its syllables")},
    {"Alt+1 … Alt+4", nullptr}, // see periodTitles()
    {"Ctrl+1 … Ctrl+4", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "show or hide an overlay")},
    {"Ctrl+H", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "hide or show amounts")},
    {"Ctrl+D",
     QT_TRANSLATE_NOOP("Terminal::KeysDialog", "put the shown security on the watch list, or take it away")},
    {"Ctrl+T", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "trades and open orders on the chart, or none")},
    {"Ctrl+O", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "take in statements and bars")},
    {"F4, F5", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "results, trades")},
    {"F6", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "watch list")},
    {"Alt+←", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "back to where a list led away from")},
    {"Ctrl+F", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "adjusted prices")},
    {"Ctrl+S", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "export the chart")},
    {"Tab, Shift+Tab", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "to the next control, and back")},
    {"?", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "these keys")},
    {"", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "The chart")},
    {"←, →", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "move the chart")},
    {"Page Up, Page Down", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "move it by its width")},
    {"Home, End", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "first and last bars")},
    {"↑, ↓, +, -", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "zoom")},
    {"N, P", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "next and last mark")},
    {"Enter", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "list what is at the mark")},
    {"Esc", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "leave the marks")},
    {"", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "Orders")},
    {"F1, F2", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "ticket: buy, sell")},
    {"F3", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "orders and positions")},
    {"Enter", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "in the ticket: send the order")},
    {"Esc", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "from the ticket back to the chart")},
    {"Delete",
     QT_TRANSLATE_NOOP("Terminal::KeysDialog", "in a list: cancel the selected orders, close the position")},
    {"Enter", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "in a list: the chart of the row")},
    {"F5", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "on a position: its trades")},
    {"", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "Replay")},
    {"Ctrl+R", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "play the shown day, or end it")},
    {"Space", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "play, pause")},
    {".", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "one minute on")},
    {"[, ]", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "slower, faster")},
    {"Ctrl+Home", QT_TRANSLATE_NOOP("Terminal::KeysDialog", "begin the day again")},
};

/// In the order of their keys.
QString periodTitles()
{
    QStringList titles;
    for (const ChartPeriod period : chartPeriods) {
        titles.append(periodTitle(period));
    }
    return titles.join(QStringLiteral(", "));
}

void fill(QTableWidget *table)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString act = keyRows[row].act == nullptr ? periodTitles() : KeysDialog::tr(keyRows[row].act);
        const QString keys = QString::fromUtf8(keyRows[row].keys);
        const bool isTitle = keys.isEmpty();
        auto *const first = new QTableWidgetItem(isTitle ? act : keys);
        table->setItem(row, 0, first);
        if (isTitle) {
            QFont bold = table->font();
            bold.setBold(true);
            first->setFont(bold);
            table->setSpan(row, 0, 1, 2);
        } else {
            table->setItem(row, 1, new QTableWidgetItem(act));
        }
    }
}

} // namespace

KeysDialog::KeysDialog(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(tr("Keys"));
    auto *const table = new QTableWidget(static_cast<int>(std::size(keyRows)), 2);
    table->setAccessibleName(tr("Keys"));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->setShowGrid(false);
    table->setFrameShape(QFrame::NoFrame);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    fill(table);
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setIcon(QIcon());
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const column = new QVBoxLayout(this);
    column->addWidget(table);
    column->addWidget(buttons);
}

/// Never more than the screen has.
QSize KeysDialog::sizeHint() const
{
    constexpr int height = 760;
    constexpr int width = 620;
    const QSize room = QApplication::primaryScreen()->availableSize() * 9 / 10;
    return QSize(width, height).boundedTo(room);
}

} // namespace Terminal
