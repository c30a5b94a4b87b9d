#include "terminal/ui/WindowPrompts.h"

#include "terminal/ui/MessageBar.h"
#include "terminal/ui/PopupRow.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
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

/// The first line of the question asks, the others tell what about. All of it is shown as it is written: a
/// name that looks like markup must not change or hide what is asked.
void setQuestion(QMessageBox *box, const QString &question)
{
    const int end = question.indexOf(QLatin1Char('\n'));
    box->setText(end < 0 ? question : question.left(end));
    box->setInformativeText(end < 0 ? QString() : question.mid(end + 1));
    for (QLabel *const label : box->findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText); // the box hands its own format to the first line alone
    }
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

void WindowPrompts::clear()
{
    m_messages->hide();
}

bool WindowPrompts::confirm(const QString &question)
{
    QMessageBox box(QMessageBox::Question, text("Cancel an order"), QString(), QMessageBox::NoButton,
                    m_area->window());
    setQuestion(&box, question);
    const QPushButton *const yes = box.addButton(text("Cancel the order"), QMessageBox::AcceptRole);
    QPushButton *const no = box.addButton(text("Keep the order"), QMessageBox::RejectRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

} // namespace Terminal
