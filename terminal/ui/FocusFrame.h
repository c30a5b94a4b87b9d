#pragma once

#include <QWidget>

namespace Terminal {

/// A thin frame around a widget that paints no focus of its own, while that one has the keyboard. It lies
/// over the widget and takes no mouse.
class FocusFrame : public QWidget
{
    Q_OBJECT

public:
    /// `framed` must have its parent already, which owns the frame.
    explicit FocusFrame(QWidget *framed);

    void setColour(const QColor &colour);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();

    QWidget *m_framed;
    QColor m_colour;
};

} // namespace Terminal
