#pragma once

#include "terminal/chart/theme/ChartTheme.h"

#include <QDockWidget>
#include <QIcon>

class QAbstractButton;

namespace Terminal {

/// A part of the window beside the chart that can be closed, but not moved; hidden at first.
class TradeDock : public QDockWidget
{
    Q_OBJECT

public:
    /// Takes over `content`. `window` owns the dock.
    TradeDock(const char *name, QWidget *content, QMainWindow *window, Qt::DockWidgetArea area);

    void setTheme(const ChartTheme &theme);

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAbstractButton *closeButton() const;
    void dressCloseButton();

    QIcon m_cross;
};

} // namespace Terminal
