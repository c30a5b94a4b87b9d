#include "terminal/chart/view/ReadoutBar.h"

#include "terminal/chart/axes/TimeTicks.h"
#include "terminal/chart/text/FigureText.h"
#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ChartView.h"

#include <QPainter>

#include <algorithm>
#include <numeric>
#include <vector>

namespace Terminal {

namespace {

constexpr int barHeight = 26;
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

/// A figure of the read-out.
struct Field
{
    QString caption;
    QString value;
    QColor colour;
    int worth; ///< where there is no room for all, those that are worth less are left out
};

int widthOf(const QFontMetrics &metrics, const Field &field)
{
    const int caption = field.caption.isEmpty() ? 0 : metrics.horizontalAdvance(field.caption) + gap;
    return caption + metrics.horizontalAdvance(field.value) + fieldGap;
}

/// No figure is cut: half a price would be another one.
void leaveOut(std::vector<Field> *fields, const QFontMetrics &metrics, int room)
{
    const auto needed = [&metrics](int sum, const Field &field) { return sum + widthOf(metrics, field); };
    const auto isWorthLess = [](const Field &one, const Field &other) { return one.worth < other.worth; };
    while (!fields->empty() && std::accumulate(fields->begin(), fields->end(), -fieldGap, needed) > room) {
        fields->erase(std::min_element(fields->begin(), fields->end(), isWorthLess));
    }
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
        .arg(shown.security.name, shown.security.code, spanTitle(shown), timeText(shown.told(bar)),
             shownPrice(bar.open), shownPrice(bar.high), shownPrice(bar.low), shownPrice(bar.close),
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
    std::vector<Field> fields{
        {QString(), timeText(m_chart->data().told(bar)), theme.text, 6},
        {tr("Open"), shownPrice(bar.open), colour, 3},
        {tr("High"), shownPrice(bar.high), colour, 2},
        {tr("Low"), shownPrice(bar.low), colour, 1},
        {tr("Close"), shownPrice(bar.close), colour, 5},
        {tr("Change"), changeText(change), colour, 4},
        {tr("Volume"), volumeText(bar.volume, m_language), theme.text, 0},
    };
    leaveOut(&fields, painter->fontMetrics(), width() - x - margin);
    for (const auto &field : fields) {
        if (!field.caption.isEmpty()) {
            x = write(painter, x, field.caption, theme.mutedText) + gap;
        }
        x = write(painter, x, field.value, field.colour) + fieldGap;
    }
}

} // namespace Terminal
