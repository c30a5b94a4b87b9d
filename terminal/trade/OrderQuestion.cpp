#include "terminal/trade/OrderQuestion.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace Terminal {

namespace {

/// A caption's ampersand is no key.
QString withoutMnemonic(QString caption)
{
    return caption.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

OrderQuestion::OrderQuestion(const Words &words, QWidget *parent)
    : QMessageBox(Question, words.title, words.text.section(QLatin1Char('\n'), 0, 0), NoButton, parent),
      m_yes(addButton(withoutMnemonic(words.yes), AcceptRole))
{
    QPushButton *const no = addButton(withoutMnemonic(words.no), RejectRole);
    setDefaultButton(no);
    setEscapeButton(no);
    setInformativeText(words.text.section(QLatin1Char('\n'), 1));
    for (QLabel *const label : findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText); // the box hands its own format to the first line alone
    }
    m_yes->installEventFilter(this);
    no->installEventFilter(this);
    installEventFilter(this);
}

bool OrderQuestion::isConfirmed()
{
    exec();
    return clickedButton() == m_yes;
}

bool OrderQuestion::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return static_cast<QKeyEvent *>(event)->isAutoRepeat();
    case QEvent::MouseButtonDblClick:
        return watched != this;
    default:
        return QMessageBox::eventFilter(watched, event);
    }
}

} // namespace Terminal
