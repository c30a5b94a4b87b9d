#include "terminal/chart/view/ChartForeground.h"

#include "terminal/chart/text/FigureText.h"
#include "terminal/chart/view/ChartView.h"

#include <QPaintEvent>
#include <QPainter>

#include <qwt_scale_div.h>

#include <algorithm>
#include <cstdlib>

namespace Terminal {

namespace {

constexpr int tagHeight = 20;
constexpr int tagPadding = 8;
constexpr int tagRadius = 3;
constexpr int tagFontPixels = 12;
constexpr double ringGap = 3; ///< between a mark and its ring
constexpr double ringWidth = 2;
constexpr double ringRadius = 5;

void paintTag(QPainter *painter, const QRect &box, const QString &text, const QColor &colour,
              const QColor &textColour)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRoundedRect(box, tagRadius, tagRadius);
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(textColour);
    painter->drawText(box, Qt::AlignCenter, text);
}

} // namespace

ChartForeground::ChartForeground(ChartView *chart) : QWidget(chart), m_chart(chart)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    QFont tagFont = font();
    tagFont.setPixelSize(tagFontPixels);
    setFont(tagFont);
}

void ChartForeground::setCrosshair(std::optional<QPoint> position)
{
    const QRegion before = crosshairRegion();
    m_position = position;
    update(before.united(crosshairRegion()));
}

void ChartForeground::setRing(std::function<std::optional<QRectF>()> ring)
{
    m_ring = std::move(ring);
    update();
}

QRegion ChartForeground::crosshairRegion() const
{
    if (!m_position) {
        return {};
    }
    const QRect area = m_chart->canvas()->geometry();
    const QPoint centre = area.topLeft() + *m_position;
    QRegion region(centre.x() - 1, area.top(), 3, area.height());
    region += QRect(area.left(), centre.y() - 1, area.width(), 3);
    region += QRect(area.right(), centre.y() - tagHeight, width() - area.right(), 2 * tagHeight);
    region += timeTagBox(centre.x()).adjusted(-1, 0, 1, 0); // the line may stand a pixel beside the pointer
    return region;
}

void ChartForeground::paintEvent(QPaintEvent *event)
{
    if (!m_chart->chartGeometry().hasScale() || m_chart->data().bars.empty()) {
        return;
    }
    QPainter painter(this);
    painter.setClipRegion(event->region());
    paintLastPrice(&painter);
    paintPriceView(&painter);
    if (m_position) {
        paintCrosshair(&painter);
    }
    if (const std::optional<QRectF> ring = m_ring ? m_ring() : std::nullopt) {
        paintRing(&painter, *ring);
    }
}

void ChartForeground::paintRing(QPainter *painter, const QRectF &box) const
{
    const QRectF placed = box.translated(m_chart->canvas()->geometry().topLeft());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(m_chart->theme().accent, ringWidth));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(placed.adjusted(-ringGap, -ringGap, ringGap, ringGap), ringRadius, ringRadius);
}

void ChartForeground::paintLastPrice(QPainter *painter) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    const ChartTheme &theme = m_chart->theme();
    const Bar &last = m_chart->data().bars.back();
    if (last.close < geometry.lowPrice || last.close > geometry.highPrice) {
        return;
    }
    const QColor colour = last.rises() ? theme.rise : theme.fall;
    const QRect area = m_chart->canvas()->geometry();
    const int y = area.top() + static_cast<int>(geometry.priceToY(last.close));
    painter->setPen(QPen(colour, 1, Qt::DotLine));
    painter->drawLine(area.left(), y, area.right(), y);
    coverTicks(painter, y);
    paintPriceTag(painter, last.close, colour, theme.fillText);
}

/// A label of the axis that the tag would cover in part is hidden whole.
void ChartForeground::coverTicks(QPainter *painter, int y) const
{
    const QRect area = m_chart->canvas()->geometry();
    const int labelHeight = QFontMetrics(m_chart->axisFont(QwtPlot::yRight)).height();
    for (const double price : m_chart->axisScaleDiv(QwtPlot::yRight).ticks(QwtScaleDiv::MajorTick)) {
        const int middle = area.top() + static_cast<int>(m_chart->chartGeometry().priceToY(price));
        if (std::abs(middle - y) < (tagHeight + labelHeight) / 2) {
            painter->fillRect(
                QRect(area.right() + 2, middle - labelHeight / 2, width() - area.right() - 3, labelHeight),
                m_chart->theme().background);
        }
    }
}

void ChartForeground::paintCrosshair(QPainter *painter) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    const ChartTheme &theme = m_chart->theme();
    const QRect area = m_chart->canvas()->geometry();
    const std::optional<int> bar = m_chart->barUnder(m_position->x());
    const double snapped = bar ? geometry.barToX(*bar) : m_position->x();
    const int x =
        area.left() + std::clamp(static_cast<int>(snapped), m_position->x() - 1, m_position->x() + 1);
    const int y = area.top() + m_position->y();
    painter->setPen(QPen(theme.crosshair, 1, Qt::DashLine));
    painter->drawLine(x, area.top(), x, area.bottom());
    painter->drawLine(area.left(), y, area.right(), y);
    if (m_position->y() <= geometry.bottom) {
        paintPriceTag(painter, geometry.yToPrice(m_position->y()), theme.tag, theme.tagText);
    }
    paintTimeTag(painter, x);
}

void ChartForeground::paintPriceTag(QPainter *painter, double price, const QColor &colour,
                                    const QColor &textColour) const
{
    const QRect area = m_chart->canvas()->geometry();
    const int y = area.top() + static_cast<int>(m_chart->chartGeometry().priceToY(price));
    const QRect box(area.right() + 2, y - tagHeight / 2, width() - area.right() - 3, tagHeight);
    paintTag(painter, box, priceText(price, m_chart->data().priceDecimals), colour, textColour);
}

/// Around the line at `x`; empty where there is no bar.
QRect ChartForeground::timeTagBox(int x) const
{
    const QString text = m_chart->timeAt(m_position->x());
    if (text.isEmpty()) {
        return {};
    }
    const int tagWidth = fontMetrics().horizontalAdvance(text) + 2 * tagPadding;
    const int left = std::clamp(x - tagWidth / 2, 0, std::max(0, width() - tagWidth));
    return {left, m_chart->canvas()->geometry().bottom() + 3, tagWidth, tagHeight};
}

void ChartForeground::paintTimeTag(QPainter *painter, int x) const
{
    const QRect box = timeTagBox(x);
    if (!box.isEmpty()) {
        paintTag(painter, box, m_chart->timeAt(m_position->x()), m_chart->theme().tag,
                 m_chart->theme().tagText);
    }
}

/// In the corner of both axes, below the prices that it speaks of.
void ChartForeground::paintPriceView(QPainter *painter) const
{
    const QRect area = m_chart->canvas()->geometry();
    const QRect corner(0, area.bottom() + 3, width() - tagPadding / 2, tagHeight);
    painter->setPen(m_chart->theme().accent);
    painter->drawText(corner, Qt::AlignRight | Qt::AlignVCenter, viewTitle(m_chart->data().view));
}

} // namespace Terminal
