#pragma once

#include <QObject>

#include <vector>

class QMainWindow;
class QToolBar;

namespace Terminal {

/// Lays the bars at the top of a window out in as few rows as its width allows, so that no button of them
/// hides: a bar begins a row of its own where it has no room beside the one before.
class ToolBarRows : public QObject
{
    Q_OBJECT

public:
    /// Of the bars at the top of `window`, from the left; it owns them and must outlive this object.
    ToolBarRows(QMainWindow *window, std::vector<QToolBar *> bars);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();

    QMainWindow *m_window;
    std::vector<QToolBar *> m_bars;
};

} // namespace Terminal
