#include "terminal/chart/view/ReadoutBar.h"

#include "terminal/chart/axes/TimeTicks.h"
#include "terminal/chart/text/FigureText.h"
#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ChartView.h"

#include <QPainter>

namespace Terminal {

namespace {

constexpr int barHeight = 44;
constexpr int titlePixels = 18;
constexpr int textPixels = 13;
constexpr int margin = 14;
constexpr int gap = 7;
constexpr int fieldGap = 18;

QFont sized(QFont font, int pixels, bool bold)
{
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

/// Writes `text` at x on the middle line; returns where it ends.
int write(QPainter *painter, int x, const QString &text, const QColor &colour)
{
    painter->setPen(colour);
    const QRect line(x, 0, painter->fontMetrics().horizontalAdvance(text), barHeight);
    painter->drawText(line, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextDontClip, text);
    return line.right() + 1;
}

} // namespace

ReadoutBar::ReadoutBar(ChartView *chart, QWidget *parent) : QWidget(parent), m_chart(chart)
{
    setFixedHeight(barHeight);
    connect(chart, &ChartView::pointedBarChanged, this, &ReadoutBar::showBar);
    connect(chart, &ChartView::dataChanged, this, [this] { showBar(-1); });
    connect(chart, &ChartView::barsGrew, this, [this] { showBar(m_bar); });
    connect(chart, &ChartView::pricesChanged, this, [this] { showBar(m_bar); });
}

QSize ReadoutBar::sizeHint() const
{
    return {600, barHeight};
}

void ReadoutBar::setLanguage(QLocale::Language language)
{
    m_language = language;
    update();
}

void ReadoutBar::showBar(int bar)
{
    m_bar = bar;
    setAccessibleName(summary());
    update();
}

size_t ReadoutBar::shownBar() const
{
    return m_bar >= 0 ? static_cast<size_t>(m_bar) : m_chart->data().bars.size() - 1;
}

QString ReadoutBar::shownPrice(double price) const
{
    return priceText(price, m_chart->data().priceDecimals);
}

QString ReadoutBar::summary() const
{
    const ChartData &shown = m_chart->data();
    if (shown.bars.empty()) {
        return {};
    }
    const size_t number = shownBar();
    const Bar &bar = shown.bars[number];
    return tr("%1 %2, %3, %4: open %5, high %6, low %7, close %8, change %9")
        .arg(shown.security.name, shown.security.code, spanTitle(shown), timeText(bar), shownPrice(bar.open),
             shownPrice(bar.high), shownPrice(bar.low), shownPrice(bar.close),
             changeText(changeAt(number, shown)));
}

void ReadoutBar::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_chart->theme().background);
    if (!m_chart->data().bars.empty()) {
        paintNumbers(&painter, paintTitle(&painter, margin) + fieldGap);
    }
}

int ReadoutBar::paintTitle(QPainter *painter, int x) const
{
    const ChartData &shown = m_chart->data();
    const ChartTheme &theme = m_chart->theme();
    painter->setFont(sized(font(), titlePixels, true));
    x = write(painter, x, shown.security.name, theme.text) + gap;
    painter->setFont(sized(font(), textPixels, false));
    x = write(painter, x,
              shown.security.code + QLatin1Char('.') + Trading::marketLetters(shown.security.market),
              theme.mutedText) +
        gap;
    return write(painter, x, QStringLiteral(u"· ") + spanTitle(shown), theme.mutedText);
}

void ReadoutBar::paintNumbers(QPainter *painter, int x) const
{
    const ChartTheme &theme = m_chart->theme();
    const size_t number = shownBar();
    const Bar &bar = m_chart->data().bars[number];
    const double change = changeAt(number, m_chart->data());
    const QColor colour = change >= 0 ? theme.rise : theme.fall;
    const struct
    {
        QString caption;
        QString value;
        QColor colour;
    } fields[] = {
        {QString(), timeText(bar), theme.text},
        {tr("Open"), shownPrice(bar.open), colour},
        {tr("High"), shownPrice(bar.high), colour},
        {tr("Low"), shownPrice(bar.low), colour},
        {tr("Close"), shownPrice(bar.close), colour},
        {tr("Change"), changeText(change), colour},
        {tr("Volume"), volumeText(bar.volume, m_language), theme.text},
    };
    for (const auto &field : fields) {
        if (!field.caption.isEmpty()) {
            x = write(painter, x, field.caption, theme.mutedText) + gap;
        }
        x = write(painter, x, field.value, field.colour) + fieldGap;
    }
}

} // namespace Terminal
