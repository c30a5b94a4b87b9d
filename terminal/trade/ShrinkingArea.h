#pragma once

#include <QScrollArea>

namespace Terminal {

/// As high as its content where there is room, and where there is less, its content scrolls. What gets the
/// keyboard comes into sight.
class ShrinkingArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit ShrinkingArea(QWidget *content, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Scrolls to a part of the content.
    void bringIntoSight(const QWidget *part);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void keepFocusInSight();
};

} // namespace Terminal
