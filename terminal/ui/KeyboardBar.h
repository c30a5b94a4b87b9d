#pragma once

#include <QToolBar>

namespace Terminal {

/// A tool bar whose buttons Tab reaches, which it does not in Qt's own.
class KeyboardBar : public QToolBar
{
    Q_OBJECT

public:
    using QToolBar::QToolBar;

protected:
    void actionEvent(QActionEvent *event) override;
};

} // namespace Terminal
