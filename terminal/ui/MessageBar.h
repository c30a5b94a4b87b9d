#pragma once

#include <QLabel>
#include <QTimer>

namespace Terminal {

/// A message at the top of its parent widget that goes away by itself or when clicked. A long one has several
/// lines. It never takes the focus.
class MessageBar : public QLabel
{
    Q_OBJECT

public:
    explicit MessageBar(QWidget *parent);

    void showMessage(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    QSize neededSize();

    QTimer m_timer;
};

} // namespace Terminal
