#include "terminal/ui/PopupRow.h"

#include <QPainter>

#include <algorithm>
#include <numeric>

namespace Terminal {

namespace {

constexpr int columnGap = 18;
constexpr int sideMargin = 14;
constexpr int lineMargin = 5;

QStringList columnsOf(const QString &line)
{
    return line.split(QLatin1Char('\t'));
}

} // namespace

QVector<int> columnWidths(const QStringList &rows, const QFontMetrics &metrics)
{
    QVector<int> widths;
    for (const QString &row : rows) {
        const QStringList lines = row.split(QLatin1Char('\n'));
        for (const QString &line : lines) {
            const QStringList columns = columnsOf(line);
            widths.resize(std::max(widths.size(), columns.size()));
            for (int i = 0; i < columns.size(); ++i) {
                widths[i] = std::max(widths.at(i), metrics.horizontalAdvance(columns.at(i)));
            }
        }
    }
    return widths;
}

PopupRow::PopupRow(const QString &text, const QVector<int> &widths, QWidget *parent)
    : QWidget(parent),
      m_lines(text.split(QLatin1Char('\n'))),
      m_widths(widths)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(text);
}

void PopupRow::setChosen(bool chosen)
{
    m_chosen = chosen;
    update();
}

QSize PopupRow::sizeHint() const
{
    const int columns = std::accumulate(m_widths.begin(), m_widths.end(), 0);
    return {columns + columnGap * (m_widths.size() - 1) + 2 * sideMargin,
            fontMetrics().lineSpacing() * m_lines.size() + 2 * lineMargin};
}

void PopupRow::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    if (m_chosen) {
        painter.fillRect(rect(), palette().color(QPalette::Highlight));
    }
    painter.setPen(palette().color(m_chosen ? QPalette::HighlightedText : QPalette::WindowText));
    int baseline = lineMargin + fontMetrics().ascent();
    for (const QString &line : m_lines) {
        const QStringList columns = columnsOf(line);
        int x = sideMargin;
        for (int i = 0; i < columns.size(); ++i) {
            painter.drawText(x, baseline, columns.at(i));
            x += m_widths.at(i) + columnGap;
        }
        baseline += fontMetrics().lineSpacing();
    }
}

} // namespace Terminal
