#pragma once

#include <QStringList>
#include <QVector>
#include <QWidget>

namespace Terminal {

/// The widths of the columns that a list of rows needs; columns are parted by tabs.
QVector<int> columnWidths(const QStringList &rows, const QFontMetrics &metrics);

/// One row of a pop-up list, painted in aligned columns. A row may have several lines.
class PopupRow : public QWidget
{
    Q_OBJECT

public:
    PopupRow(const QString &text, const QVector<int> &widths, QWidget *parent);

    void setChosen(bool chosen);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QStringList m_lines;
    QVector<int> m_widths;
    bool m_chosen = false;
};

} // namespace Terminal
