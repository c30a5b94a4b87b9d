#include "terminal/ui/HelpMenu.h"

#include "terminal/ui/KeysDialog.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>

namespace Terminal {

HelpMenu::HelpMenu(QWidget *parent)
    : QMenu(parent),
      m_keys(addAction(QString())),
      m_about(addAction(QString()))
{
    m_keys->setShortcut(QKeySequence(QStringLiteral("?")));
    connect(m_keys, &QAction::triggered, this, [this] { KeysDialog(window()).exec(); });
    connect(m_about, &QAction::triggered, this, &HelpMenu::showAbout);
    showTexts();
}

void HelpMenu::showAbout()
{
    const QString text =
        tr("%1 %2\n\nCharts with your own trades, orders and costs on them, and a trading module that "
           "keeps your account. Orders of its paper exchange move no real money.\n\n"
           "The guides are in the folder docs of the program's documentation.")
            .arg(QApplication::applicationName(), QApplication::applicationVersion());
    QMessageBox box(QMessageBox::NoIcon, tr("About"), text, QMessageBox::Close, window());
    box.setTextFormat(Qt::PlainText);
    box.setIconPixmap(QApplication::windowIcon().pixmap(64));
    box.exec();
}

void HelpMenu::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    QMenu::changeEvent(event);
}

void HelpMenu::showTexts()
{
    setTitle(tr("Help"));
    m_keys->setText(tr("Keys"));
    m_about->setText(tr("About"));
}

} // namespace Terminal
