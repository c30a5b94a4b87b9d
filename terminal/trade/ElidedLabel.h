#pragma once

#include <QLabel>

namespace Terminal {

/// A line of plain text that ends with an ellipsis where there is no room for all of it: it never makes its
/// window wider. Its tool tip has the whole text then, unless it was given one of its own.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect room() const;
    bool isCut() const;
};

} // namespace Terminal
