#include "terminal/trade/TradeDock.h"

#include <QAbstractButton>
#include <QMainWindow>
#include <QPainter>

namespace Terminal {

namespace {

/// A cross that is sharp on screens of twice the density, too.
QIcon crossIcon(const QColor &colour)
{
    constexpr int side = 12;
    constexpr int margin = 2;
    constexpr int density = 2;
    QPixmap cross(side * density, side * density);
    cross.setDevicePixelRatio(density);
    cross.fill(Qt::transparent);
    QPainter painter(&cross);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5));
    painter.drawLine(margin, margin, side - margin, side - margin);
    painter.drawLine(margin, side - margin, side - margin, margin);
    return QIcon(cross);
}

} // namespace

TradeDock::TradeDock(const char *name, QWidget *content, QMainWindow *window, Qt::DockWidgetArea area)
    : QDockWidget(window)
{
    setObjectName(QLatin1String(name));
    setFeatures(QDockWidget::DockWidgetClosable);
    setContextMenuPolicy(Qt::PreventContextMenu);
    content->setAutoFillBackground(true);
    setWidget(content);
    window->addDockWidget(area, this);
    hide();
    closeButton()->setFocusPolicy(Qt::TabFocus);
    closeButton()->installEventFilter(this);
}

/// The base class gives every dock's button the same name and picture again at times of its own.
bool TradeDock::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && closeButton()->icon().cacheKey() != m_cross.cacheKey()) {
        dressCloseButton();
    }
    return QDockWidget::eventFilter(watched, event);
}

void TradeDock::changeEvent(QEvent *event)
{
    QDockWidget::changeEvent(event);
    dressCloseButton();
}

void TradeDock::dressCloseButton()
{
    closeButton()->setAccessibleName(tr("Close: %1").arg(windowTitle()));
    closeButton()->setIcon(m_cross);
}

QAbstractButton *TradeDock::closeButton() const
{
    return findChild<QAbstractButton *>(QStringLiteral("qt_dockwidget_closebutton"));
}

void TradeDock::setTheme(const ChartTheme &theme)
{
    const QPalette colours = widgetPalette(theme);
    setPalette(colours);
    for (QWidget *const child : findChildren<QWidget *>()) {
        child->setPalette(colours); // a style sheet keeps a window's palette from its children
    }
    m_cross = crossIcon(theme.text); // the style's own cross is black and grey on every theme
    dressCloseButton();
}

} // namespace Terminal
