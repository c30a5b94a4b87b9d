#pragma once

#include <QLabel>
#include <QTimer>

namespace Terminal {

/// A message at the top of its parent widget that goes away by itself or when clicked. It never takes
/// the focus.
class MessageBar : public QLabel
{
    Q_OBJECT

public:
    explicit MessageBar(QWidget *parent);

    void showMessage(const QString &text);

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    QTimer m_timer;
};

} // namespace Terminal
