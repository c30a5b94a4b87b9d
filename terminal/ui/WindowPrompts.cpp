#include "terminal/ui/WindowPrompts.h"

#include "terminal/trade/OrderQuestion.h"
#include "terminal/ui/MessageBar.h"
#include "terminal/ui/PopupRow.h"

#include <QCoreApplication>
#include <QMenu>
#include <QWidgetAction>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("WindowPrompts", source);
}

/// No key chooses a row because its text has an ampersand.
QString withoutMnemonic(QString row)
{
    return row.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

void addRow(QMenu *menu, const QString &row, const QVector<int> &widths, int number)
{
    auto *const action = new QWidgetAction(menu);
    auto *const widget = new PopupRow(row, widths, menu);
    action->setText(withoutMnemonic(row));
    action->setData(number);
    action->setDefaultWidget(widget);
    menu->addAction(action);
    QObject::connect(menu, &QMenu::hovered, widget,
                     [widget, action](const QAction *hovered) { widget->setChosen(hovered == action); });
}

} // namespace

WindowPrompts::WindowPrompts(QWidget *messageArea)
    : m_area(messageArea),
      m_messages(new MessageBar(messageArea))
{
}

int WindowPrompts::choose(const QStringList &rows, const QPoint &place)
{
    QMenu menu(m_area);
    const QVector<int> widths = columnWidths(rows, menu.fontMetrics());
    for (int i = 0; i < rows.size(); ++i) {
        addRow(&menu, rows.at(i), widths, i);
    }
    const QAction *const chosen = menu.exec(place);
    return chosen == nullptr ? -1 : chosen->data().toInt();
}

void WindowPrompts::show(const QString &text)
{
    m_messages->showMessage(text);
}

void WindowPrompts::add(const QStringList &lines)
{
    m_messages->addLines(lines);
}

void WindowPrompts::clear()
{
    m_messages->hide();
}

bool WindowPrompts::confirm(const QString &question)
{
    OrderQuestion box({text("Cancel an order"), question, text("Cancel the order"), text("Keep the order")},
                      m_area->window());
    return box.isConfirmed();
}

} // namespace Terminal
