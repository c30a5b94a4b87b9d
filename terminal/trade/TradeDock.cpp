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
}

/// The base class gives every dock's button the same name and picture whenever it lays its buttons out.
bool TradeDock::event(QEvent *event)
{
    const bool isTaken = QDockWidget::event(event);
    switch (event->type()) {
    case QEvent::ApplicationLayoutDirectionChange:
    case QEvent::LanguageChange:
    case QEvent::LayoutDirectionChange:
    case QEvent::ParentChange:
    case QEvent::StyleChange:
    case QEvent::WindowTitleChange:
        dressCloseButton();
        return isTaken;
    default:
        return isTaken;
    }
}

void TradeDock::dressCloseButton()
{
    closeButton()->setAccessibleName(tr("Close: %1").arg(windowTitle()));
    closeButton()->setIcon(crossIcon(m_crossColour));
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
    m_crossColour = theme.text; // the style's own cross is black and grey on every theme
    dressCloseButton();
}

} // namespace Terminal
