#pragma once

#include <QAccessible>
#include <QLabel>
#include <QStringList>
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

    /// Adds lines below those that were added just before and still show; the first few, for the others are
    /// told elsewhere.
    void addLines(const QStringList &lines);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    QSize neededSize();
    void fit();
    void showText(const QString &text);
    void announce(QAccessible::Event event);

    QStringList m_lines; ///< what was added, while nothing else was shown
    QTimer m_timer;
};

} // namespace Terminal
