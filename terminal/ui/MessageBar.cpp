#include "terminal/ui/MessageBar.h"

#include "terminal/ui/MessageAccessible.h"

#include <QAccessible>
#include <QPainter>
#include <QPixmap>
#include <QTextOption>

#include <algorithm>
#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds shownFor = std::chrono::seconds(8);
constexpr int topMargin = 14;
constexpr int sideMargin = 24;
constexpr int leastWidth = 200;
constexpr int mostLines = 6;

/// A path has no blank to break at, and its end is what matters.
QTextOption wrapping()
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

} // namespace

MessageBar::MessageBar(QWidget *parent) : QLabel(parent)
{
    MessageAccessible::install();
    setObjectName(QStringLiteral("messageBar"));
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::NoFocus);
    setMargin(10);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &QWidget::hide);
    parent->installEventFilter(this);
    hide();
}

void MessageBar::showMessage(const QString &text)
{
    m_lines.clear();
    showText(text);
}

void MessageBar::addLines(const QStringList &lines)
{
    m_lines = isVisible() ? m_lines + lines : lines;
    const QString more = m_lines.size() > mostLines ? QStringLiteral(u"\n…") : QString();
    showText(m_lines.mid(0, mostLines).join(QLatin1Char('\n')) + more);
}

void MessageBar::showText(const QString &text)
{
    const bool takesAnothersPlace = isVisible();
    setText(text);
    setAccessibleName(text);
    fit();
    raise();
    show();
    m_timer.start(shownFor);
    announce(QAccessible::Alert);
    if (takesAnothersPlace) {
        announce(QAccessible::ObjectShow); // what comes up is read out, not what is shown already
    }
}

void MessageBar::fit()
{
    resize(neededSize());
    move((parentWidget()->width() - width()) / 2, topMargin);
}

/// A dock that opens beside the chart makes it narrower.
bool MessageBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Resize && isVisible()) {
        fit();
    }
    return QLabel::eventFilter(watched, event);
}

void MessageBar::announce(QAccessible::Event event)
{
    QAccessibleEvent told(this, event);
    QAccessible::updateAccessibility(&told);
}

/// All of the text, in as many lines as it takes beside the margins of the parent.
QSize MessageBar::neededSize()
{
    ensurePolished();
    const int around = 2 * margin() + 2 * frameWidth();
    const int widest = std::max(leastWidth, parentWidget()->width() - 2 * sideMargin - around);
    QPixmap nothing(1, 1);
    QPainter painter(&nothing);
    painter.setFont(font());
    const QRectF box =
        painter.boundingRect(QRectF(0, 0, widest, parentWidget()->height()), text(), wrapping());
    return box.toAlignedRect().size() + QSize(around + 2, around);
}

void MessageBar::paintEvent(QPaintEvent *event)
{
    // The label would draw the text in one line, and cut it.
    QFrame::paintEvent(event); // NOLINT(bugprone-parent-virtual-call)
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(QRectF(contentsRect().adjusted(margin(), margin(), -margin(), -margin())), text(),
                     wrapping());
}

void MessageBar::mousePressEvent(QMouseEvent * /*event*/)
{
    hide();
}

} // namespace Terminal
