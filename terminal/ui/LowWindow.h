#pragma once

#include <QObject>

class QMainWindow;

namespace Terminal {

/// Leaves the chart of a low window more of its height: the docks below the chart have no titles there. Tabs
/// name them, and their keys and the menu close them.
class LowWindow : public QObject
{
    Q_OBJECT

public:
    /// Looks after the docks that `window` has; it owns this object.
    explicit LowWindow(QMainWindow *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();
    void showTitles(bool shown);

    QMainWindow *m_window;
    bool m_isLow = false;
};

} // namespace Terminal
