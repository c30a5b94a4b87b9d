#include "terminal/ui/MessageBar.h"

#include <QAccessible>

#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds shownFor = std::chrono::seconds(8);
constexpr int topMargin = 14;

} // namespace

MessageBar::MessageBar(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("messageBar"));
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::NoFocus);
    setMargin(10);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &QWidget::hide);
    hide();
}

void MessageBar::showMessage(const QString &text)
{
    setText(text);
    setAccessibleName(text);
    adjustSize();
    move((parentWidget()->width() - width()) / 2, topMargin);
    raise();
    show();
    m_timer.start(shownFor);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void MessageBar::mousePressEvent(QMouseEvent * /*event*/)
{
    hide();
}

} // namespace Terminal
