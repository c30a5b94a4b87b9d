#include "terminal/trade/ElidedLabel.h"

#include "terminal/trade/PlainText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int leastWidth = 40;

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize whole = QLabel::minimumSizeHint();
    return {std::min(leastWidth, whole.width()), whole.height()};
}

QRect ElidedLabel::room() const
{
    return contentsRect().adjusted(margin(), margin(), -margin(), -margin());
}

bool ElidedLabel::isCut() const
{
    return fontMetrics().horizontalAdvance(text()) > room().width();
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           isCut() ? plainTip(text()) : QString(), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    // The label would cut a letter in two.
    QFrame::paintEvent(event); // NOLINT(bugprone-parent-virtual-call)
    QPainter painter(this);
    style()->drawItemText(&painter, room(), static_cast<int>(alignment()), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, room().width()), foregroundRole());
}

} // namespace Terminal
